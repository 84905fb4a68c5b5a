// The memory floor of a desktop Qt program: one plain window and an event loop, nothing else.
// bench/desktop.sh compares the tray application with it.

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <cstdio>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QLabel window(QStringLiteral("A bare window"));
    window.resize(375, 400);
    window.show();
    QTimer::singleShot(3000, [] {
        std::ifstream status("/proc/self/status");
        std::string line;
        while (std::getline(status, line)) {
            if (line.rfind("VmHWM:", 0) == 0) std::printf("peak-kib %s\n", line.c_str() + 6);
        }
        std::fflush(stdout);
        QApplication::quit();
    });
    return QApplication::exec();
}
