#pragma once

#include <QScrollArea>

namespace tovrin {

// Holds a column as tall as it asks to be, up to a limit, and scrolls it past that, so a long list of
// sessions never pushes a panel off the screen.
class SessionScroller : public QScrollArea {
public:
    SessionScroller(QWidget* content, QWidget* parent = nullptr);

    void setHeightLimit(int limit);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int m_heightLimit = QWIDGETSIZE_MAX;
};

} // namespace tovrin
