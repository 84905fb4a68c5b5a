#include "core/AtomicFile.h"
#include "support/LocalHttpServer.h"
#include "support/QtEventLoopTest.h"
#include "support/ShellCommand.h"
#include "support/TempDir.h"

#include <QProcess>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using test::httpReply;
using test::LocalHttpServer;

constexpr const char* release = "tovrin-2.0-linux-x86_64";

// The standard output of a shell command, with the test failed if the command fails.
std::string shell(const std::string& command) {
    const auto result = test::runCommand(command);
    EXPECT_EQ(result.exitCode, 0) << command;
    return result.out;
}

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

std::string contentOf(const fs::path& file) {
    return readWholeFile(file).value();
}

// Every entry below a folder with its kind, permissions and a digest of its bytes: equal snapshots
// mean nothing was changed, added or removed.
std::map<std::string, std::string> snapshot(const fs::path& folder) {
    std::map<std::string, std::string> entries;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const auto status = entry.symlink_status();
        std::string& seen = entries[fs::relative(entry.path(), folder).string()];
        seen = std::to_string(static_cast<int>(status.type())) + " " +
               std::to_string(static_cast<unsigned>(status.permissions())) + " ";
        if (fs::is_regular_file(status))
            seen += std::to_string(std::hash<std::string>()(contentOf(entry.path())));
    }
    return entries;
}

class UpdateCommandTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        shell("openssl genpkey -algorithm ed25519 -out " + quoted(key) + " 2>/dev/null");
        shell("openssl genpkey -algorithm ed25519 -out " + quoted(foreignKey) + " 2>/dev/null");
        publicKey = shell(signRelease + " --public-key " + quoted(key));
    }

    // A folder laid out as an installation, with this program's stand-in as its command.
    fs::path installation(const std::string& name, bool selfContained) const {
        const fs::path root = work.path() / name / "tovrin";
        fs::create_directories(root / "bin");
        fs::create_directories(root / "lib" / "tovrin");
        fs::copy_file(TOVRIN_UPDATE_DRIVER, root / "bin" / "tovrin");
        fs::copy_file(TOVRIN_HTTP_MODULE, root / "lib" / "tovrin" / "libtovrin-http.so");
        work.write(name + "/tovrin/share/tovrin/hooks.txt", "the old payload");
        if (selfContained) work.write(name + "/tovrin/share/tovrin/install-kind", "archive\n");
        return root;
    }

    // A release archive made with tar from files given by their path below the release folder.
    fs::path archive(const std::string& name, const std::map<std::string, std::string>& files,
                     const std::string& tarOptions = {}) const {
        const fs::path folder = work.path() / ("release-" + name);
        for (const auto& [path, content] : files) {
            work.write("release-" + name + "/" + release + "/" + path, content);
            if (path.starts_with("bin/"))
                fs::permissions(folder / release / path, fs::perms::owner_exec, fs::perm_options::add);
        }
        const fs::path packed = work.path() / (name + ".tar.gz");
        shell("tar -czf " + quoted(packed) + " " + tarOptions + " -C " + quoted(folder) + " " + release);
        return packed;
    }

    std::string item(const fs::path& packed, const fs::path& signingKey) const {
        return shell(signRelease + " " + quoted(signingKey) + " " + quoted(packed) + " 60 2.0 " +
                     server.base() + "/tovrin-2.0.tar.gz");
    }

    static QByteArray feed(const std::string& items) {
        return httpReply(
            200, "application/rss+xml",
            QByteArray::fromStdString(
                "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/"
                "sparkle\"><channel><title>Tovrin</title>" +
                items + "</channel></rss>"));
    }

    // The command run from the installation, as version 1.0, build 57, while this loop serves; its
    // output and errors together.
    test::CommandResult update(const fs::path& root, const std::string& argument, bool configured = true) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        QStringList arguments{configured ? QString::fromStdString(server.base() + "/appcast.xml") : QString(),
                              configured ? QString::fromStdString(publicKey) : QString(), "1.0", "57",
                              "update"};
        if (!argument.empty()) arguments << QString::fromStdString(argument);
        process.start(QString::fromStdString((root / "bin" / "tovrin").string()), arguments);
        EXPECT_TRUE(
            pumpUntil([&] { return process.state() == QProcess::NotRunning; }, std::chrono::seconds(30)));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAll().toStdString()};
    }

    const std::string signRelease = quoted(TOVRIN_SIGN_RELEASE);
    test::TempDir work;
    LocalHttpServer server;
    fs::path key = work.path() / "release-key.pem";
    fs::path foreignKey = work.path() / "stranger-key.pem";
    std::string publicKey;
};

TEST_F(UpdateCommandTest, ChecksAndInstallsOnlyWhatTheKeySignedAndLeavesNoTraceOnFailure) {
    const std::map<std::string, std::string> newRelease = {{"bin/tovrin", "#!/bin/sh\necho 2.0\n"},
                                                           {"share/tovrin/install-kind", "archive\n"},
                                                           {"share/tovrin/hooks.txt", "the new payload"}};
    const fs::path good = archive("good", newRelease);
    const std::string goodItem = item(good, key);
    const QByteArray goodBytes = QByteArray::fromStdString(contentOf(good));
    QByteArray tampered = goodBytes;
    tampered[tampered.size() / 2] = static_cast<char>(tampered[tampered.size() / 2] ^ 0x20);
    std::string longerItem = goodItem;
    const std::string length = "length=\"" + std::to_string(goodBytes.size()) + "\"";
    longerItem.replace(longerItem.find(length), length.size(),
                       "length=\"" + std::to_string(goodBytes.size() + 1) + "\"");
    const fs::path escaping = archive("escaping", newRelease, "-P --transform 's,^,../,'");
    const fs::path markerless = archive("markerless", {{"bin/tovrin", "#!/bin/sh\n"}});
    const fs::path garbage = work.write("garbage.tar.gz", "these bytes are no archive");
    const auto bytesOf = [](const fs::path& file) { return QByteArray::fromStdString(contentOf(file)); };

    const fs::path selfContained = installation("opt", true);
    const fs::path packaged = installation("usr", false);
    const auto before = snapshot(selfContained);
    const auto packagedBefore = snapshot(packaged);

    struct Row {
        const char* name;
        std::string argument;
        QByteArray feed;
        QByteArray archive;
        int exitCode;
        std::string says;
        bool packagedInstallation = false;
        bool configured = true;
    };
    const std::vector<Row> rows = {
        {"not configured", "--check", {}, {}, 1, "Updates are not configured in this build.", false, false},
        {"a newer release",
         "--check",
         feed("<item><sparkle:version>58</sparkle:version></item>" + goodItem),
         {},
         0,
         "Tovrin 2.0 (build 60) is available; this is 1.0 (build 57).\nInstall it with 'tovrin update'."},
        // The newer item lacks its signature, so it is no release to offer.
        {"up to date",
         "",
         feed("<item><sparkle:version>57</sparkle:version></item><item><sparkle:version>61</sparkle:version>"
              "<enclosure url=\"" +
              server.base() + "/tovrin-2.0.tar.gz\" length=\"1\"/></item>"),
         {},
         0,
         "Tovrin is up to date."},
        {"a feed that does not parse",
         "",
         httpReply(200, "text/xml", "<rss><channel>"),
         {},
         1,
         "The update feed could not be read: line 1"},
        {"a foreign signature", "", feed(item(good, foreignKey)), goodBytes, 1, "signature does not match"},
        {"a tampered archive", "", feed(goodItem), tampered, 1, "signature does not match"},
        {"a wrong length", "", feed(longerItem), goodBytes, 1, "not the size the feed announced"},
        {"signed bytes that are no archive", "", feed(item(garbage, key)), bytesOf(garbage), 1,
         "could not be unpacked"},
        {"a member outside the archive's folder", "", feed(item(escaping, key)), bytesOf(escaping), 1,
         "lies outside its folder"},
        {"an archive without an installation", "", feed(item(markerless, key)), bytesOf(markerless), 1,
         "does not hold a Tovrin installation"},
        {"a package manager's installation", "", feed(goodItem), goodBytes, 1,
         "Tovrin 2.0 is available. This installation is managed by your package manager", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        server.route("/appcast.xml", row.feed.isEmpty() ? httpReply(404, "text/plain", "") : row.feed);
        server.route("/tovrin-2.0.tar.gz", row.archive.isEmpty()
                                               ? httpReply(404, "text/plain", "")
                                               : httpReply(200, "application/gzip", row.archive));
        const fs::path root = row.packagedInstallation ? packaged : selfContained;
        const auto run = update(root, row.argument, row.configured);
        EXPECT_EQ(run.exitCode, row.exitCode) << run.out;
        EXPECT_NE(run.out.find(row.says), std::string::npos) << run.out;
        EXPECT_EQ(snapshot(root), row.packagedInstallation ? packagedBefore : before);
        EXPECT_EQ(test::entriesOf(root.parent_path()), std::vector<std::string>{"tovrin"});
    }

    server.route("/appcast.xml", feed(goodItem));
    server.route("/tovrin-2.0.tar.gz", httpReply(200, "application/gzip", goodBytes));
    const auto run = update(selfContained, "");
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_NE(run.out.find("Tovrin 2.0 is installed in " + selfContained.string()), std::string::npos)
        << run.out;
    EXPECT_EQ(snapshot(selfContained), snapshot(work.path() / "release-good" / release));
    EXPECT_EQ(test::entriesOf(selfContained.parent_path()), std::vector<std::string>{"tovrin"});
}

} // namespace
} // namespace tovrin
