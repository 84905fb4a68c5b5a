#pragma once

#include "core/Signal.h"
#include "services/hotkey/KeyboardShortcuts.h"
#include "services/hotkey/ShortcutName.h"
#include "services/hotkey/ShortcutReach.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tovrin {

// What the recorder does with a key pressed while it records.
enum class RecorderAction {
    // A modifier alone: the field shows what is held and waits for the key.
    ignored,
    // Tab: recording ends and the key goes on, so that the focus moves.
    passOn,
    // Escape: recording ends, nothing changes.
    cancel,
    // Backspace or Delete: the shortcut is cleared; recording goes on.
    cleared,
    // A key without a modifier beyond Shift, other than F1 to F35: a beep; recording goes on.
    refused,
    // Another program holds the shortcut: recording ends, and the user is asked whether to keep it
    // anyway (take()) or not.
    confirmHeldByAnotherProgram,
    // The shortcut is stored; recording ends.
    taken,
};

struct RecorderKeyResult {
    RecorderAction action;
    std::optional<Shortcut> shortcut;
};

// The words of the recorder and its alert.
namespace RecorderText {
inline constexpr const char* recordShortcut = "Record shortcut";
inline constexpr const char* pressShortcut = "Press shortcut";
inline constexpr const char* clearShortcut = "Clear shortcut";
inline constexpr const char* usedByAnotherProgram = "This shortcut is used by another program";
inline constexpr const char* canBeChanged =
    "Another program already reacts to it, so it may not reach Tovrin. You can change that program's "
    "shortcut in its own settings or in your desktop's keyboard settings.";
inline constexpr const char* ok = "OK";
inline constexpr const char* forceUse = "Use anyway";
} // namespace RecorderText

// The recorder of one named shortcut, without its widget: the rules for a key pressed while it
// records, and what the field shows. Main loop only.
class ShortcutRecorderModel {
public:
    ShortcutRecorderModel(KeyboardShortcuts& shortcuts, ShortcutName name);
    // Ends recording, so that shortcuts don't stay paused.
    ~ShortcutRecorderModel();
    ShortcutRecorderModel(const ShortcutRecorderModel&) = delete;
    ShortcutRecorderModel& operator=(const ShortcutRecorderModel&) = delete;

    void beginRecording();
    void endRecording();
    bool isRecording() const { return m_recording; }

    // A key pressed while recording, with the X modifier mask held; lock keys don't count.
    RecorderKeyResult keyDown(std::uint32_t keySym, std::uint32_t modifiers);
    // The modifiers held while recording, as they change.
    void modifiersChanged(std::uint32_t modifiers);

    // Stores the shortcut as it is, also one that another program holds.
    void take(const Shortcut& shortcut);
    void clear();

    std::optional<Shortcut> shortcut() const;
    // The field's text: the shortcut, or while recording the modifiers held so far.
    std::string text() const;
    std::string placeholder() const;
    // Whether the clear button shows.
    bool canClear() const { return shortcut().has_value(); }
    std::optional<std::string> reachNote() const;

    // Called after the shortcut or the recording state changed, also when that happened elsewhere.
    Subscription onChange(std::function<void()> handler);

private:
    KeyboardShortcuts& m_shortcuts;
    ShortcutName m_name;
    bool m_recording = false;
    std::uint32_t m_heldModifiers = 0;
    Signal<> m_changed;
    Subscription m_storeChanges;
};

} // namespace tovrin
