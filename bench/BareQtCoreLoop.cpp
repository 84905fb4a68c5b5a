// The floor for the memory of a headless Qt program: an event loop that does nothing until it
// is told to quit. bench/watch-memory.sh compares `tovrin watch` with it.

#include <QCoreApplication>
#include <csignal>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::signal(SIGTERM, [](int) { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}
