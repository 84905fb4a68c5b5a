#include "app/desktop/DesktopApplication.h"
#include "app/desktop/DesktopEnvironment.h"

#include <cstdio>

int main(int argc, char** argv) {
    using namespace tovrin;
    const auto lock =
        DesktopEnvironment::InstanceLock::acquire(DesktopEnvironment::InstanceLock::defaultFile());
    if (!lock) {
        std::fputs("Tovrin is already running.\n", stderr);
        return 0;
    }
    DesktopApplication application(argc, argv);
    application.launch();
    return application.exec();
}
