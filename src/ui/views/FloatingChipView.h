#pragma once

#include "ui/viewmodels/ChipLayout.h"

#include <QPointF>
#include <QWidget>
#include <functional>
#include <optional>

namespace tovrin {

class AppActionsFooter;
class FloatingChipHeader;
class TrayViewModel;
class SessionListView;

// What the chip's content asks of its host.
struct FloatingChipActions {
    std::function<void()> onOpenSettings, onOpenFeedback, onOpenAbout, onQuit;
    // Told the measured size of the whole content, margin included, whenever it may have changed.
    std::function<void(ChipSize)> onSizeChange;
};

// The chip itself: a rounded, translucent dark body with its own soft shadow in a clear margin, a header
// line over the roll-up's flame and, unfolded, the session list and the application's actions. A tap on
// the header unfolds it; a drag anywhere that is not a button moves its window. Where it has the
// keyboard's focus, Up, Down and Tab walk the rows and then the buttons, as in the tray panel.
class FloatingChipView : public QWidget {
public:
    static constexpr int shadowMargin = 8;
    static constexpr int listWidth = 315;
    static constexpr double cornerRadius = 16;

    FloatingChipView(TrayViewModel& model, FloatingChipActions actions, QWidget* parent = nullptr);

    bool expanded() const { return m_expanded; }
    FloatingChipHeader* header() const { return m_header; }
    SessionListView* sessionList() const { return m_list; }
    AppActionsFooter* footer() const { return m_footer; }
    // The rounded body, inside the shadow margin.
    QRect bodyRect() const;

    void reportSize();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    struct Press {
        QPointF local;
        QPointF global;
        QPoint windowOrigin;
        bool dragging = false;
    };

    void refresh();
    void tapHeader();

    TrayViewModel& m_model;
    FloatingChipActions m_actions;
    bool m_expanded = false;
    FloatingChipHeader* m_header;
    SessionListView* m_list;
    AppActionsFooter* m_footer;
    QList<QWidget*> m_unfolded;
    QWidget* m_finish;
    std::optional<Press> m_press;
};

} // namespace tovrin
