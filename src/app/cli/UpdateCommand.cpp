#include "app/cli/UpdateCommand.h"

#include "platform/linux/InstallationPaths.h"
#include "platform/qt/LoadableHttpClient.h"
#include "platform/qt/QtAppcastReader.h"
#include "platform/qt/QtMainLoop.h"
#include "services/update/UpdateFeed.h"
#include "services/update/UpdateInstaller.h"

#include <QCoreApplication>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tovrin {
namespace {

void complain(const std::string& text) {
    std::fprintf(stderr, "tovrin: %s\n", text.c_str());
}

void printOffer(const AppcastItem& release, const UpdateConfiguration& configuration, bool installable) {
    std::printf("Tovrin %s (build %s) is available; this is %s (build %s).\n", releaseName(release).c_str(),
                release.version.c_str(), configuration.version.c_str(), configuration.build.c_str());
    if (installable)
        std::printf("Install it with 'tovrin update'.\n");
    else
        std::printf("%s\n", std::string(packageManagerAdvice).c_str());
}

} // namespace

int runUpdateCommand(int argc, char** argv, const UpdateConfiguration& configuration) {
    const bool checkOnly = argc == 3 && std::string_view(argv[2]) == "--check";
    if (argc != 2 && !checkOnly) {
        std::fputs("Usage: tovrin update [--check]\n", stderr);
        return 2;
    }
    const auto key = configuration.validate();
    if (!key) {
        complain(key.error().description());
        return 1;
    }
    const auto installation = InstallationPaths::prefixDir();
    if (!installation) {
        complain("cannot tell where Tovrin is installed.");
        return 1;
    }

    QCoreApplication app(argc, argv);
    QtMainLoop loop;
    LoadableHttpClient http(loop);
    UpdateFeed feed(http, std::make_shared<QtAppcastReader>(), configuration.feed);
    UpdateInstaller installer(http, *installation, key.value());
    const bool installable = installer.replacesItself();
    int exitCode = 1;
    const auto finish = [&](int code) {
        exitCode = code;
        QCoreApplication::quit();
    };

    // The command line offers a version the tray application was told to skip: nothing is skipped.
    feed.check(configuration.build, {}, [&](Result<std::optional<AppcastItem>, UpdateError> found) {
        if (!found) {
            complain(found.error().description());
            return finish(1);
        }
        if (!found.value()) {
            std::printf("%s\n", std::string(upToDateText).c_str());
            return finish(0);
        }
        const AppcastItem& release = *found.value();
        if (checkOnly) {
            printOffer(release, configuration, installable);
            return finish(0);
        }
        if (!installable) {
            complain(UpdateError{UpdateError::Kind::packageManaged, releaseName(release)}.description());
            return finish(1);
        }
        std::printf("Downloading Tovrin %s…\n", releaseName(release).c_str());
        std::fflush(stdout);
        installer.install(release, [&, name = releaseName(release)](Result<void, UpdateError> done) {
            if (!done) {
                complain(done.error().description());
                return finish(1);
            }
            std::printf("Tovrin %s is installed in %s.\n", name.c_str(), installation->c_str());
            std::printf("A running tray application keeps the old version until it restarts.\n");
            finish(0);
        });
    });
    QCoreApplication::exec();
    return exitCode;
}

} // namespace tovrin
