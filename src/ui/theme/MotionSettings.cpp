#include "ui/theme/MotionSettings.h"

#include "core/UserPaths.h"
#include "ui/viewmodels/MotionPreference.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <cstdlib>
#include <optional>

namespace tovrin {

namespace {

std::optional<bool> kdeSetting() {
    QFile file(QString::fromStdString((UserPaths::configHome() / "kdeglobals").string()));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return MotionPreference::fromKdeGlobals(file.readAll().toStdString());
}

std::optional<bool> gnomeSetting() {
    const QString gsettings = QStandardPaths::findExecutable(QStringLiteral("gsettings"));
    if (gsettings.isEmpty()) return std::nullopt;
    QProcess process;
    process.start(gsettings, {QStringLiteral("get"), QStringLiteral("org.gnome.desktop.interface"),
                              QStringLiteral("enable-animations")});
    // A desktop that can't answer quickly is taken as having no opinion.
    if (!process.waitForFinished(800) || process.exitCode() != 0) {
        process.kill();
        process.waitForFinished(100);
        return std::nullopt;
    }
    return MotionPreference::fromGnomeAnimations(process.readAllStandardOutput().toStdString());
}

bool desktopReducesMotion() {
    static const bool reduces = [] {
        const std::optional<bool> kde = kdeSetting();
        return MotionPreference::decide(std::nullopt, kde, kde ? std::nullopt : gnomeSetting());
    }();
    return reduces;
}

} // namespace

bool reduceMotion() {
    if (const char* override = std::getenv("TOVRIN_REDUCE_MOTION")) {
        if (const auto chosen = MotionPreference::fromOverride(override)) return *chosen;
    }
    return desktopReducesMotion();
}

} // namespace tovrin
