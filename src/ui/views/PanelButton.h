#pragma once

#include <QAbstractButton>
#include <QString>
#include <string>

namespace tovrin {

// A plain panel action: symbol and text in ash, left-aligned, warming to bronze and ember under the
// pointer or the keyboard's focus; Enter presses it as Space does. Its contents margins are its padding.
class PanelButton : public QAbstractButton {
public:
    PanelButton(const QString& text, std::string symbol, QWidget* parent = nullptr);

    void setLabel(const QString& text, std::string symbol);
    const std::string& symbol() const { return m_symbol; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    std::string m_symbol;
    bool m_keyboardFocus = false;
};

} // namespace tovrin
