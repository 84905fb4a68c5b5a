// tovrin-play <sound file>: plays one alert sound and exits, so that the programs that alert never
// map the sound server's libraries themselves. Exit status: 0 played to the end, 1 could not be
// played, 2 bad usage, 3 cut short by a newer sound.
#include "platform/audio/PlaybackTurn.h"
#include "platform/audio/SoundPlayback.h"

#include <atomic>
#include <csignal>

namespace {

std::atomic<bool> stopRequested{false};

extern "C" void requestStop(int) {
    stopRequested.store(true);
}

} // namespace

int main(int argc, char** argv) {
    using tovrin::SoundPlayback::Outcome;
    if (argc != 2 || !*argv[1]) return 2;

    struct sigaction action {};
    action.sa_handler = requestStop;
    sigemptyset(&action.sa_mask);
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);

    const tovrin::PlaybackTurn turn(tovrin::PlaybackTurn::defaultLockFile());
    switch (tovrin::SoundPlayback::play(argv[1], [] { return stopRequested.load(); })) {
    case Outcome::finished:
        return 0;
    case Outcome::interrupted:
        return 3;
    case Outcome::failed:
        break;
    }
    return 1;
}
