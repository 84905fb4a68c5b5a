// The tray application as it starts for a user, with two figures printed for bench/desktop.sh: the
// time from the launch (TOVRIN_BENCH_LAUNCH_NS, the shell's clock at exec) to the end of the first
// refresh pass, and the peak memory a few seconds after the panel has been opened.

#include "app/desktop/DesktopApplication.h"
#include "ui/views/PanelWindow.h"

#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

namespace {

long long nowNanoseconds() {
    timespec ts{};
    clock_gettime(CLOCK_REALTIME, &ts);
    return static_cast<long long>(ts.tv_sec) * 1'000'000'000LL + ts.tv_nsec;
}

long peakKib() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmHWM:", 0) == 0) return std::strtol(line.c_str() + 6, nullptr, 10);
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    const char* launch = std::getenv("TOVRIN_BENCH_LAUNCH_NS");
    tovrin::DesktopApplication application(argc, argv);
    application.launch(); // the first pass runs inside
    const long long firstPass = nowNanoseconds();
    if (launch)
        std::printf("first-pass-ms %.1f\n", static_cast<double>(firstPass - std::atoll(launch)) / 1e6);

    application.shell().openPanel();
    QTimer::singleShot(3000, [] {
        std::printf("peak-kib %ld\n", peakKib());
        std::fflush(stdout);
        QApplication::quit();
    });
    return application.exec();
}
