#include "app/desktop/FocusServices.h"

namespace tovrin {

FocusServices::FocusServices()
    : m_shell(m_processes), m_activator(m_windows, m_shell), m_editorRaiser(m_windows), m_revealer(m_shell),
      m_manager(m_shell, m_windows, m_activator, m_editorRaiser, m_revealer) {}

} // namespace tovrin
