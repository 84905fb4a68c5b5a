#pragma once

#include "core/Signal.h"
#include "services/hotkey/ShortcutRecorderModel.h"

#include <QAbstractButton>

namespace tovrin {

class SymbolButton;

// The field that records the floating chip's toggle shortcut. Clicking it, or reaching it with Tab,
// starts recording: the next key with a modifier becomes the shortcut. Escape stops, Backspace
// clears, Tab moves on. While it records it holds the keyboard, so that a key another program uses
// reaches it too. A window opening or coming forward with the focus on it doesn't start recording.
class ShortcutRecorder : public QAbstractButton {
public:
    explicit ShortcutRecorder(KeyboardShortcuts& shortcuts, QWidget* parent = nullptr);
    ~ShortcutRecorder() override;

    // A line for beside the field when the shortcut can't work in every application; empty otherwise.
    QString reachNote() const;
    bool isRecording() const { return m_model.isRecording(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    void startRecording();
    void refresh();
    void askToUseHeldShortcut(const Shortcut& shortcut);

    ShortcutRecorderModel m_model;
    SymbolButton* m_clearButton;
    bool m_holdsKeyboard = false;
    Subscription m_changes;
};

} // namespace tovrin
