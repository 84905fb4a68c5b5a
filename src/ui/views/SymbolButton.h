#pragma once

#include <QAbstractButton>
#include <QColor>
#include <string>

namespace tovrin {

// A borderless button that is only its symbol, brightening under the pointer.
class SymbolButton : public QAbstractButton {
public:
    SymbolButton(std::string symbol, double symbolSide, const QColor& color, QWidget* parent = nullptr);

    const std::string& symbol() const { return m_symbol; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    std::string m_symbol;
    double m_symbolSide;
    QColor m_color;
};

} // namespace tovrin
