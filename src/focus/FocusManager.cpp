#include "focus/FocusManager.h"

namespace tovrin {

FocusManager::FocusManager(ShellRunner& shell, WindowSystem& windows, AppActivating& activator,
                           EditorRaising& editorRaiser, FolderRevealing& revealer)
    : m_activator(activator), m_editorRaiser(editorRaiser), m_revealer(revealer),
      m_terminalFocuser(shell, windows, activator) {}

void FocusManager::focus(const AgentSession& session) {
    m_workQueue.post([this, session] { focusNow(session); });
}

void FocusManager::revealInFileManager(const AgentSession& session) {
    m_workQueue.post([this, session] { revealNow(session); });
}

void FocusManager::revealFolder(const std::string& path) {
    m_workQueue.post([this, path] { m_revealer.reveal(path); });
}

void FocusManager::focusNow(const AgentSession& session) {
    if (m_terminalFocuser.focus(session)) return;

    if (const std::optional<Editor> editor = m_editorRaiser.editor(session)) {
        if (!m_editorRaiser.raiseWindow(*editor, session.cwd)) m_activator.activate(editor->activationName);
        return;
    }
    if (session.locator && session.locator->app && !session.locator->app->empty()) {
        m_activator.activate(*session.locator->app);
        return;
    }
    revealNow(session);
}

void FocusManager::revealNow(const AgentSession& session) {
    // A remote session's folder is on its host, not here.
    if (session.host) return;
    const std::string& path = session.projectPath();
    if (!path.empty()) m_revealer.reveal(path);
}

} // namespace tovrin
