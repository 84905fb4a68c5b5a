#include "hooks/RemoteHookFileStore.h"

#include "hooks/ForeignJson.h"
#include "hooks/HookFileError.h"
#include "hooks/HookFileStore.h"
#include "hooks/HookTemplateRenderer.h"

#include <cstdio>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// Answers start on a line of their own after this, so that whatever the user's shell start-up
// prints before the script runs is passed over.
constexpr std::string_view marker = "tovrin:";
// The version stamp and such: anything larger is not ours.
constexpr std::size_t smallFileLimit = 64 << 10;

std::string quoted(const fs::path& path) {
    return HookTemplateRenderer::shellQuoted(path.string());
}

// $p the file, $dir its folder, $bak and $orig the copies HookFileStore keeps beside it.
std::string variables(const fs::path& path) {
    return "p=" + quoted(path) + "\ndir=" + quoted(path.parent_path()) +
           "\nbak=" + quoted(HookFileStore::backupPath(path)) +
           "\norig=" + quoted(HookFileStore::originalPath(path)) + "\n";
}

// What HookFileStore refuses to replace or remove: a link, anything but a regular file, a file
// read-only for its owner or not writable by us (root passes -w for any file, hence the mode).
constexpr std::string_view refusals = R"(if [ -L "$p" ]; then echo tovrin:link; exit 0; fi
if [ -e "$p" ]; then
  [ -f "$p" ] || { echo tovrin:notregular; exit 0; }
  case $(ls -ld -- "$p") in ??w*) ;; *) echo tovrin:readonly; exit 0 ;; esac
  [ -w "$p" ] || { echo tovrin:readonly; exit 0; }
fi
)";

// A temporary file beside $p, gone however the script ends.
constexpr std::string_view temporary = R"(mkdir -p -- "$dir" || exit 3
tmp="$p.tmp.$$"
trap 'rm -f -- "$tmp"' EXIT
)";

// Fills $tmp with `content` through a here-document, so that it never stands on a command line.
// A here-document ends in a newline: one added for its sake is taken off again by $(...).
Result<std::string> filling(std::string_view content, const fs::path& path) {
    if (content.find('\0') != std::string_view::npos)
        return Result<std::string>::failure(path.filename().string() +
                                            " was not written: it would hold a NUL byte.");
    std::string body(content);
    const bool addsNewline = body.empty() || body.back() != '\n';
    if (addsNewline) body += '\n';
    std::string delimiter = "TOVRIN_END";
    while (("\n" + body).find("\n" + delimiter + "\n") != std::string::npos)
        delimiter += '_';
    const std::string document = "<<'" + delimiter + "'";
    if (addsNewline)
        return "printf %s \"$(cat " + document + "\n" + body + delimiter + "\n)\" >\"$tmp\" || exit 3\n";
    return "cat >\"$tmp\" " + document + " || exit 3\n" + body + delimiter + "\n";
}

std::string octal(mode_t mode) {
    char text[8];
    std::snprintf(text, sizeof text, "%o", static_cast<unsigned>(mode & 07777));
    return text;
}

} // namespace

RemoteHookFileStore::RemoteHookFileStore(std::shared_ptr<RemoteShell> shell) : m_shell(std::move(shell)) {}

Result<RemoteHookFileStore::Answer> RemoteHookFileStore::ask(const std::string& script,
                                                             const std::string& step) const {
    using R = Result<Answer>;
    auto outcome = m_shell->run(script);
    if (!outcome) return R::failure(outcome.error());
    const auto& [status, output, errorLine] = outcome.value();
    const std::string where = step + " on " + m_shell->host() + ": ";
    if (status != 0)
        return R::failure(where + (errorLine.empty()
                                       ? "the remote shell ended with exit status " + std::to_string(status)
                                       : errorLine));
    std::size_t start = output.rfind(marker, 0) == 0 ? 0 : output.find("\n" + std::string(marker));
    if (start == std::string::npos) return R::failure(where + "the remote shell gave no answer");
    if (output[start] == '\n') ++start;
    start += marker.size();
    const auto end = output.find('\n', start);
    if (end == std::string::npos) return Answer{output.substr(start), {}};
    return Answer{output.substr(start, end - start), output.substr(end + 1)};
}

bool RemoteHookFileStore::answersYes(const std::string& script, const fs::path& path) const {
    auto answer = ask(script, "Could not look for " + path.string());
    if (!answer && !m_unanswered) m_unanswered = answer.error();
    return answer && answer.value().word == "yes";
}

Result<fs::path> RemoteHookFileStore::home(bool needsJq) {
    using R = Result<fs::path>;
    const std::string jq = "command -v jq >/dev/null 2>&1 || { echo tovrin:nojq; exit 0; }\n";
    auto answer =
        ask((needsJq ? jq : "") + "printf 'tovrin:home\\n%s' \"$HOME\"\n", "Could not find the home folder");
    if (!answer) return R::failure(answer.error());
    const auto& host = m_shell->host();
    if (answer.value().word == "nojq")
        return R::failure("jq is not installed on " + host +
                          "; the status writer needs it there. Install jq on " + host + " and try again.");
    fs::path home = answer.value().rest;
    if (answer.value().word != "home" || !home.is_absolute())
        return R::failure(host + " did not tell its home folder.");
    return home;
}

bool RemoteHookFileStore::fileExists(const fs::path& path) const {
    return answersYes(
        "p=" + quoted(path) +
            "\nif [ -e \"$p\" ] || [ -L \"$p\" ]; then echo tovrin:yes; else echo tovrin:no; fi\n",
        path);
}

Result<RemoteHookFileStore::Answer> RemoteHookFileStore::readFile(const fs::path& path,
                                                                  std::size_t limit) const {
    return ask("p=" + quoted(path) + R"(
if [ -L "$p" ]; then echo tovrin:link
elif [ ! -e "$p" ]; then echo tovrin:missing
elif [ ! -f "$p" ]; then echo tovrin:notregular
else
  size=$(wc -c <"$p") || exit 3
  if [ $size -gt )" +
                   std::to_string(limit) +
                   R"( ]; then echo tovrin:toolarge; else echo tovrin:ok; exec cat -- "$p"; fi
fi
)",
               "Could not open " + path.string());
}

Result<json> RemoteHookFileStore::readObject(const fs::path& path) const {
    using R = Result<json>;
    auto answer = readFile(path, ForeignJson::maxReadBytes);
    if (!answer) return R::failure(answer.error());
    const auto& [word, content] = answer.value();
    if (word == "missing") return json::object();
    if (word == "link") return R::failure(HookFileError::symbolicLink(path));
    if (word == "notregular") return R::failure(HookFileError::notRegularFile(path));
    if (word == "toolarge")
        return R::failure(HookFileError::unreadable(path, {ForeignJson::ReadProblem::Kind::tooLarge, {}}));
    if (content.empty()) return json::object();
    auto parsed = ForeignJson::read(content);
    if (!parsed) return R::failure(HookFileError::unreadable(path, parsed.error()));
    return std::move(parsed).value();
}

Result<void> RemoteHookFileStore::refusalOrDone(const Result<Answer>& answer, const fs::path& path) const {
    if (!answer) return Result<void>::failure(answer.error());
    const auto& word = answer.value().word;
    if (word == "ok") return {};
    if (word == "link") return Result<void>::failure(HookFileError::symbolicLink(path));
    if (word == "notregular") return Result<void>::failure(HookFileError::notRegularFile(path));
    return Result<void>::failure(HookFileError::readOnly(path));
}

Result<void> RemoteHookFileStore::write(const json& object, const fs::path& path, bool isUsersOwn) {
    // Printed before anything is touched, so that a document we can't write changes nothing.
    auto text = HookFileStore::contentFor(object, path);
    if (!text) return Result<void>::failure(text.error());
    auto fill = filling(text.value(), path);
    if (!fill) return Result<void>::failure(fill.error());
    // A copy of the file made with cp -p carries its mode (a private file stays private) to the
    // original, the backup and the replacement.
    const std::string script = variables(path) + std::string(refusals) + std::string(temporary) +
                               "if [ -e \"$p\" ]; then\n  if [ " + (isUsersOwn ? "1" : "0") +
                               R"( = 1 ] && [ ! -e "$orig" ] && [ ! -L "$orig" ]; then
    cp -p -- "$p" "$tmp" || exit 3
    ln -- "$tmp" "$orig" 2>/dev/null || [ -e "$orig" ] || [ -L "$orig" ] ||
      { echo "Could not keep the original of $p" >&2; exit 3; }
    rm -f -- "$tmp"
  fi
  rm -f -- "$bak"
  cp -p -- "$p" "$tmp" && mv -f -- "$tmp" "$bak"
  cp -p -- "$p" "$tmp" || exit 3
else
  : >"$tmp" && chmod 644 "$tmp" || exit 3
fi
)" + fill.value() + "mv -f -- \"$tmp\" \"$p\" || exit 3\necho tovrin:ok\n";
    return refusalOrDone(ask(script, "Could not write " + path.string()), path);
}

Result<void> RemoteHookFileStore::remove(const fs::path& path) {
    const std::string script = variables(path) + std::string(refusals) + R"(rm -f -- "$bak"
if [ -e "$p" ]; then rm -f -- "$p" || exit 3; fi
echo tovrin:ok
)";
    return refusalOrDone(ask(script, "Could not remove " + path.string()), path);
}

bool RemoteHookFileStore::exists(const fs::path& path) const {
    return answersYes("if [ -e " + quoted(path) + " ]; then echo tovrin:yes; else echo tovrin:no; fi\n",
                      path);
}

std::optional<std::string> RemoteHookFileStore::read(const fs::path& path) const {
    auto answer = readFile(path, smallFileLimit);
    if (!answer || answer.value().word != "ok") return std::nullopt;
    return std::move(answer).value().rest;
}

Result<void> RemoteHookFileStore::replace(const fs::path& path, std::string_view content, mode_t mode) {
    auto fill = filling(content, path);
    if (!fill) return Result<void>::failure(fill.error());
    const std::string script = variables(path) + std::string(temporary) + ": >\"$tmp\" || exit 3\n" +
                               fill.value() + "chmod " + octal(mode) +
                               " \"$tmp\" && mv -f -- \"$tmp\" \"$p\" || exit 3\necho tovrin:ok\n";
    auto answer = ask(script, "Could not write " + path.string());
    if (!answer) return Result<void>::failure(answer.error());
    return {};
}

Result<void> RemoteHookFileStore::erase(const fs::path& path) {
    auto answer =
        ask("rm -f -- " + quoted(path) + " || exit 3\necho tovrin:ok\n", "Could not remove " + path.string());
    if (!answer) return Result<void>::failure(answer.error());
    return {};
}

} // namespace tovrin
