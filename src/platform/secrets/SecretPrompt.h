#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <chrono>

namespace tovrin {

// Shows a Secret Service prompt (the keyring's password dialog, say) and waits for the user to
// answer it. The wait runs on a thread of its own with its own event loop, so the caller's event
// loop never runs re-entrantly under it; needs a QCoreApplication.
// Returns true when the prompt completed, false when it was dismissed, failed or timed out.
bool completeSecretPrompt(const QDBusConnection& connection, const QDBusObjectPath& prompt,
                          std::chrono::milliseconds timeout);

} // namespace tovrin
