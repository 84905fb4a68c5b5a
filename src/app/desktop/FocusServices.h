#pragma once

#include "focus/AppActivator.h"
#include "focus/EditorWindowRaiser.h"
#include "focus/FocusManager.h"
#include "focus/ShellRunner.h"
#include "platform/dbus/DBusFolderRevealer.h"
#include "platform/linux/PosixProcessRunner.h"
#include "platform/x11/XcbWindowSystem.h"

namespace tovrin {

// The focus manager with the Linux services it works through: child processes, the X server's
// windows and the file manager. One instance, shared by auto-focus and the session rows.
class FocusServices {
public:
    FocusServices();
    FocusServices(const FocusServices&) = delete;
    FocusServices& operator=(const FocusServices&) = delete;

    SessionFocusing& focuser() { return m_manager; }
    FocusManager& manager() { return m_manager; }

private:
    PosixProcessRunner m_processes;
    ShellRunner m_shell;
    XcbWindowSystem m_windows;
    AppActivator m_activator;
    EditorWindowRaiser m_editorRaiser;
    DBusFolderRevealer m_revealer;
    FocusManager m_manager; // last: its queue finishes before the services it calls go
};

} // namespace tovrin
