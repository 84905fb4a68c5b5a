#pragma once

#include "sessions/AgentSession.h"

#include <QWidget>

namespace tovrin {

class ElidedLabel;
class TrayViewModel;
class SymbolButton;

// One session: its tool's badge, its title in the colour of its state and a subtitle. A click, Enter
// or Space raises the session's window; under the pointer the row warms and offers to reveal its
// folder or to hide it. Up and Down step to the neighbouring rows; focus given by the keyboard
// warms it too, with an ember edge.
class SessionRowView : public QWidget {
public:
    SessionRowView(const AgentSession& session, TrayViewModel& model, QWidget* parent = nullptr);

    // Takes a newer record of the same session and redraws its texts.
    void setSession(const AgentSession& session);
    const AgentSession& session() const { return m_session; }

    // What a click, the hover buttons and assistive tools ask of the row.
    void activate();
    void reveal();
    void dismiss();

    bool hovering() const { return m_hovering; }
    bool showsKeyboardFocus() const { return m_keyboardFocus; }
    // Present only while hovering.
    SymbolButton* revealButton() const { return m_reveal; }
    SymbolButton* hideButton() const { return m_hide; }

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setHovering(bool hovering);
    void refreshTexts();

    AgentSession m_session;
    TrayViewModel& m_model;
    ElidedLabel* m_title;
    ElidedLabel* m_subtitle;
    QWidget* m_buttons = nullptr;
    SymbolButton* m_reveal = nullptr;
    SymbolButton* m_hide = nullptr;
    bool m_hovering = false;
    bool m_pressed = false;
    bool m_keyboardFocus = false;
};

} // namespace tovrin
