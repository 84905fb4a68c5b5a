#pragma once

#include "ui/views/AppActionsFooter.h"

#include <QWidget>
#include <vector>

namespace tovrin {

class FloatingWindowToggle;
class TrayViewModel;
class PanelHeader;
class PreferencesStore;
class SessionListView;
class SessionScroller;
class ElidedLabel;

// What the tray panel shows: the burning brand line, the sessions or a word that none are about,
// the floating window toggle and the application's actions, on iron. From the keyboard, Up, Down and
// Tab walk through the rows and then the buttons, top to bottom.
class MenuContentView : public QWidget {
public:
    static constexpr int panelWidth = 375;

    MenuContentView(TrayViewModel& model, PreferencesStore& preferences, AppActions actions,
                    QWidget* parent = nullptr);

    // The most the session list may take before it scrolls.
    void setListHeightLimit(int limit);

    PanelHeader* header() const { return m_header; }
    SessionListView* sessionList() const { return m_list; }
    ElidedLabel* emptyState() const { return m_empty; }
    // One line per remote host out of reach.
    const std::vector<ElidedLabel*>& hostNotices() const { return m_hostNotices; }
    FloatingWindowToggle* floatingWindowToggle() const { return m_toggle; }
    AppActionsFooter* footer() const { return m_footer; }
    // Without the session list: what is left when the list is given no room.
    int chromeHeight() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void refresh();

    TrayViewModel& m_model;
    PanelHeader* m_header;
    SessionListView* m_list;
    SessionScroller* m_scroller;
    ElidedLabel* m_empty;
    QWidget* m_hostNoticeBox;
    std::vector<ElidedLabel*> m_hostNotices;
    FloatingWindowToggle* m_toggle;
    AppActionsFooter* m_footer;
};

} // namespace tovrin
