#pragma once

#include "core/SerialQueue.h"
#include "focus/AppActivating.h"
#include "focus/EditorRaising.h"
#include "focus/FolderRevealing.h"
#include "focus/SessionFocusing.h"
#include "focus/ShellRunner.h"
#include "focus/TerminalFocuser.h"
#include "focus/WindowSystem.h"

namespace tovrin {

// Brings a session's window forward: its terminal pane, else its editor window, else its
// application, else its folder in the file manager. All of it runs on a queue of its own, one
// request at a time in order, so a slow tool never holds up the caller. The ports must outlive
// the manager.
class FocusManager final : public SessionFocusing {
public:
    FocusManager(ShellRunner& shell, WindowSystem& windows, AppActivating& activator,
                 EditorRaising& editorRaiser, FolderRevealing& revealer);
    ~FocusManager() override = default;
    FocusManager(const FocusManager&) = delete;
    FocusManager& operator=(const FocusManager&) = delete;

    void focus(const AgentSession& session) override;
    // Also on the focus queue: asking the file manager is a round trip over D-Bus.
    void revealInFileManager(const AgentSession& session) override;
    // Any folder, such as the custom sounds', in the file manager; on the same queue.
    void revealFolder(const std::string& path);

private:
    void focusNow(const AgentSession& session);
    void revealNow(const AgentSession& session);

    AppActivating& m_activator;
    EditorRaising& m_editorRaiser;
    FolderRevealing& m_revealer;
    TerminalFocuser m_terminalFocuser;
    // Last, so it is gone (pending work dropped, running work finished) before anything it uses.
    SerialQueue m_workQueue;
};

} // namespace tovrin
