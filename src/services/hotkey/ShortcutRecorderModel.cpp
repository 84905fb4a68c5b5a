#include "services/hotkey/ShortcutRecorderModel.h"

#include <utility>

namespace tovrin {
namespace {

bool isTab(std::uint32_t keySym) {
    return keySym == KeySym::tab || keySym == KeySym::leftTab;
}

bool isErase(std::uint32_t keySym) {
    return keySym == KeySym::backSpace || keySym == KeySym::deleteKey || keySym == KeySym::keypadDelete;
}

} // namespace

ShortcutRecorderModel::ShortcutRecorderModel(KeyboardShortcuts& shortcuts, ShortcutName name)
    : m_shortcuts(shortcuts), m_name(std::move(name)),
      m_storeChanges(m_shortcuts.shortcutByNameDidChange.connect([this](const std::string& rawValue) {
          if (rawValue == m_name.rawValue) m_changed.emit();
      })) {}

ShortcutRecorderModel::~ShortcutRecorderModel() {
    if (m_recording) m_shortcuts.setPaused(false);
}

void ShortcutRecorderModel::beginRecording() {
    if (m_recording) return;
    m_recording = true;
    m_heldModifiers = 0;
    m_shortcuts.setPaused(true);
    m_changed.emit();
}

void ShortcutRecorderModel::endRecording() {
    if (!m_recording) return;
    m_recording = false;
    m_heldModifiers = 0;
    m_shortcuts.setPaused(false);
    m_changed.emit();
}

void ShortcutRecorderModel::modifiersChanged(std::uint32_t modifiers) {
    modifiers &= ShortcutModifier::all;
    if (!m_recording || modifiers == m_heldModifiers) return;
    m_heldModifiers = modifiers;
    m_changed.emit();
}

RecorderKeyResult ShortcutRecorderModel::keyDown(std::uint32_t keySym, std::uint32_t modifiers) {
    modifiers &= ShortcutModifier::all;
    if (isModifierKey(keySym)) {
        modifiersChanged(modifiers);
        return {RecorderAction::ignored, std::nullopt};
    }
    // Shift+Tab moves the focus back rather than being refused, so the field never traps the keyboard.
    if (isTab(keySym) && (modifiers & ~ShortcutModifier::shift) == 0) {
        endRecording();
        return {RecorderAction::passOn, std::nullopt};
    }
    if (modifiers == 0 && keySym == KeySym::escape) {
        endRecording();
        return {RecorderAction::cancel, std::nullopt};
    }
    if (modifiers == 0 && isErase(keySym)) {
        clear();
        return {RecorderAction::cleared, std::nullopt};
    }
    if ((modifiers & ~ShortcutModifier::shift) == 0 && !isFunctionKey(keySym))
        return {RecorderAction::refused, std::nullopt};

    const Shortcut candidate = normalisedShortcut(keySym, modifiers);
    endRecording();
    if (candidate != shortcut() && m_shortcuts.probe(candidate) == ShortcutRegistration::heldByAnotherProgram)
        return {RecorderAction::confirmHeldByAnotherProgram, candidate};
    take(candidate);
    return {RecorderAction::taken, candidate};
}

void ShortcutRecorderModel::take(const Shortcut& shortcut) {
    m_shortcuts.setShortcut(shortcut, m_name);
}

void ShortcutRecorderModel::clear() {
    m_shortcuts.setShortcut(std::nullopt, m_name);
}

std::optional<Shortcut> ShortcutRecorderModel::shortcut() const {
    return m_shortcuts.getShortcut(m_name);
}

std::string ShortcutRecorderModel::text() const {
    if (m_recording) return presentableModifiers(m_heldModifiers);
    const auto current = shortcut();
    return current ? presentableDescription(*current) : std::string();
}

std::string ShortcutRecorderModel::placeholder() const {
    return m_recording ? RecorderText::pressShortcut : RecorderText::recordShortcut;
}

std::optional<std::string> ShortcutRecorderModel::reachNote() const {
    return tovrin::reachNote(
        shortcutReach(m_shortcuts.available(), isWaylandSession(), m_shortcuts.throughPortal()));
}

Subscription ShortcutRecorderModel::onChange(std::function<void()> handler) {
    return m_changed.connect(std::move(handler));
}

} // namespace tovrin
