#include "focus/EditorWindowRaiser.h"

#include "support/FakeWindowSystem.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using Strings = std::vector<std::string>;

struct CandidateCase {
    std::string cwd;
    std::string home;
    Strings expected;
};

TEST(EditorWindowRaiserTest, WorkspaceCandidatesRunFromTheDeepestFolderUpToHome) {
    const std::vector<CandidateCase> cases{
        {"/Users/a/code/proj/sub", "/Users/a", {"sub", "proj", "code"}},
        {"/Users/a", "/Users/a", {}},
        {"/Users/a/", "/Users/a", {}},
        {"/home/u/x", "/home/u/", {"x"}},
        {"/", "/home/u", {}},
        {"/tmp/x", "/home/u", {"x", "tmp"}},
        {"~/proj/", "/home/u", {"proj"}},
        {"~", "/home/u", {}},
        {"/home/u/a/./b/../c//", "/home/u", {"c", "a"}},
        {"/home/uv/x", "/home/u", {"x", "uv", "home"}},
        {"proj/sub", "/home/u", {"sub", "proj"}},
        {"", "/home/u", {}},
    };
    for (const CandidateCase& c : cases)
        EXPECT_EQ(EditorWindowRaiser::workspaceCandidates(c.cwd, c.home), c.expected) << c.cwd;
}

TEST(EditorWindowRaiserTest, TitleSegmentsSplitAtDashesWithBlanksAround) {
    const std::vector<std::pair<std::string, Strings>> cases{
        {"readme.md \u2014 proj", {"readme.md", "proj"}},
        {"a.ts - proj \u2014 Cursor", {"a.ts", "proj", "Cursor"}},
        {"x \u2013 y", {"x", "y"}},
        {"my-project", {"my-project"}},
        {"", {}},
        {"proj  \u2014  x", {"proj", "x"}},
        {"\tproj\t \u2014 x\t", {"proj", "x"}},
        {"a -b- c", {"a -b- c"}},
    };
    for (const auto& [title, expected] : cases)
        EXPECT_EQ(EditorWindowRaiser::titleSegments(title), expected) << title;
}

struct MatchCase {
    std::string name;
    Strings titles;
    std::string cwd;
    std::optional<std::size_t> expected;
};

TEST(EditorWindowRaiserTest, BestMatchPrefersTheDeepestFolderThenTheFirstWindow) {
    const std::string home = "/home/u";
    const std::vector<MatchCase> cases{
        {"folder picks the window", {"readme.md \u2014 alpha", "readme.md \u2014 beta"}, "/home/u/beta", 1},
        {"deeper folder wins", {"x \u2014 sub", "y \u2014 proj"}, "/home/u/proj/sub", 0},
        {"deeper folder wins in any order", {"y \u2014 proj", "x \u2014 sub"}, "/home/u/proj/sub", 1},
        {"parent when no window names the folder", {"a - proj - Code"}, "/home/u/proj/sub", 0},
        {"case ignored, first wins", {"a \u2014 PROJ", "b \u2014 proj"}, "/home/u/proj", 0},
        {"case ignored beyond ASCII", {"x - \u00c4RGER-\u0160ET"}, "/home/u/\u00e4rger-\u0161et", 0},
        {"part of a segment is no match", {"proj-extra \u2014 x"}, "/home/u/proj", std::nullopt},
        {"folder holding a separator can't match", {"main.rs - my - app"}, "/home/u/my - app", std::nullopt},
        {"home itself names nothing", {"a \u2014 u"}, "/home/u", std::nullopt},
        {"no windows", {}, "/home/u/proj", std::nullopt},
    };
    for (const MatchCase& c : cases)
        EXPECT_EQ(EditorWindowRaiser::bestMatch(c.titles, c.cwd, home), c.expected) << c.name;
}

TEST(EditorWindowRaiserTest, EditorComesFromTheToolFirstThenTheHostApp) {
    test::FakeWindowSystem windows;
    const EditorWindowRaiser raiser(windows, "/home/u");
    const auto editorId = [&](std::string tool,
                              std::optional<std::string> app) -> std::optional<std::string> {
        AgentSession session;
        session.tool = std::move(tool);
        if (app) {
            session.locator = Locator{};
            session.locator->app = std::move(app);
        }
        const auto editor = raiser.editor(session);
        return editor ? std::optional(editor->id) : std::nullopt;
    };
    EXPECT_EQ(editorId("cursor-ide", "VS Code"), "cursor");
    EXPECT_EQ(editorId("copilot-vscode", std::nullopt), "vscode");
    EXPECT_EQ(editorId("antigravity-ide", "Cursor"), "antigravity");
    EXPECT_EQ(editorId("claude-code", "VS Code"), "vscode");
    EXPECT_EQ(editorId("claude-code", "Cursor"), "cursor");
    EXPECT_EQ(editorId("codex-cli", "Antigravity"), "antigravity");
    EXPECT_EQ(editorId("claude-code", "vs code"), std::nullopt);
    EXPECT_EQ(editorId("claude-code", "Konsole"), std::nullopt);
    EXPECT_EQ(editorId("antigravity-cli", std::nullopt), std::nullopt);
    EXPECT_EQ(editorId("Cursor-IDE", std::nullopt), std::nullopt);

    AgentSession vscode;
    vscode.tool = "copilot-vscode";
    EXPECT_EQ(raiser.editor(vscode)->activationName, "Visual Studio Code");
}

WindowInfo window(std::uint64_t id, std::string instance, std::string className, std::string title) {
    return {id, std::move(title), std::move(instance), std::move(className), std::nullopt};
}

class EditorWindowRaiserRaiseTest : public ::testing::Test {
protected:
    test::FakeWindowSystem m_windows;
    EditorWindowRaiser m_raiser{m_windows, "/home/u"};
    const Editor m_vscode{"vscode", "Visual Studio Code"};
    const Editor m_cursor{"cursor", "Cursor"};
};

TEST_F(EditorWindowRaiserRaiseTest, RaisesTheMatchingWindowOfAnyVariantAndNoOtherApp) {
    m_windows.windows = {
        window(1, "code", "Code", "a.ts - alpha - Visual Studio Code"),
        window(2, "Navigator", "firefox", "beta \u2014 Mozilla Firefox"),
        window(3, "vscodium", "VSCodium", "b.ts - beta - VSCodium"),
        window(4, "code-insiders", "Code - Insiders", "beta - Visual Studio Code - Insiders")};
    EXPECT_TRUE(m_raiser.raiseWindow(m_vscode, "/home/u/beta/src"));
    EXPECT_EQ(m_windows.activated, std::vector<std::uint64_t>{3});
}

TEST_F(EditorWindowRaiserRaiseTest, FallsBackToTheInstanceNameOnlyWhenNoClassMatches) {
    m_windows.windows = {window(1, "cursor", "cursor-nightly", "x - proj - Cursor")};
    EXPECT_TRUE(m_raiser.raiseWindow(m_cursor, "/home/u/proj"));
    EXPECT_EQ(m_windows.activated, std::vector<std::uint64_t>{1});

    // A window of the proper class shuts out the instance match, as its title names nothing.
    m_windows.activated.clear();
    m_windows.windows.insert(m_windows.windows.begin(), window(2, "cursor", "Cursor", "other - Cursor"));
    EXPECT_FALSE(m_raiser.raiseWindow(m_cursor, "/home/u/proj"));
    EXPECT_TRUE(m_windows.activated.empty());
}

TEST_F(EditorWindowRaiserRaiseTest, AnswersFalseWithoutAWindowToRaise) {
    m_windows.windows = {window(1, "code", "Code", "a.ts - alpha - Visual Studio Code")};
    EXPECT_FALSE(m_raiser.raiseWindow(m_vscode, "/home/u/beta"));  // no title names the folder
    EXPECT_FALSE(m_raiser.raiseWindow(m_vscode, "/home/u"));       // home names no folder
    EXPECT_FALSE(m_raiser.raiseWindow(m_cursor, "/home/u/alpha")); // editor not running
    m_windows.isAvailable = false;                                 // no X server
    EXPECT_FALSE(m_raiser.raiseWindow(m_vscode, "/home/u/alpha"));
    EXPECT_TRUE(m_windows.activated.empty());
}

} // namespace
} // namespace tovrin
