#include "app/desktop/DesktopApplication.h"

#include "app/desktop/DesktopEnvironment.h"
#include "ui/theme/AppBrandIcon.h"
#include "ui/views/AboutView.h"

#include <QIcon>

namespace tovrin {
namespace {

bool prepareQt() {
    DesktopEnvironment::prepareQt();
    return true;
}

} // namespace

DesktopApplication::DesktopApplication(int& argc, char** argv)
    : m_prepared(prepareQt()), m_app(argc, argv), m_coordinator(m_loop, m_clock),
      m_shell(m_coordinator, [this] { return new AboutView(m_coordinator.updater()); }) {
    QApplication::setApplicationName(QStringLiteral("tovrin"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tovrin"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tovrin"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(AppBrandIcon::image()));
}

} // namespace tovrin
