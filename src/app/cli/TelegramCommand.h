#pragma once

namespace tovrin {

// `tovrin telegram setup`: the Telegram section of the settings window for terminal users,
// walking through verify, link and test with the same words, save where those name the window's
// buttons. Returns the process exit code.
int runTelegramCommand(int argc, char** argv);

} // namespace tovrin
