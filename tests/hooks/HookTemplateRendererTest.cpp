#include "hooks/HookTemplateRenderer.h"

#include "support/ShellCommand.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using nlohmann::json;

TEST(HookTemplateRenderer, ShellQuotedLeavesSafeWordsAndQuotesTheRest) {
    const std::pair<std::string, std::string> cases[] = {
        {"/home/dev/.tovrin/agent-status.sh", "/home/dev/.tovrin/agent-status.sh"},
        {"AZaz09/._-", "AZaz09/._-"},
        {"", ""},
        {"/home/my dev/x", "'/home/my dev/x'"},
        {" ", "' '"},
        {"/home/o'neil/x", "'/home/o'\\''neil/x'"},
        {"~/x", "'~/x'"},
        {"/home/Zoë", "'/home/Zoë'"},
        {"a$b`c\"d", "'a$b`c\"d'"},
    };
    for (const auto& [input, expected] : cases) {
        SCOPED_TRACE(input);
        const auto quoted = HookTemplateRenderer::shellQuoted(input);
        EXPECT_EQ(quoted, expected);
        if (!input.empty()) {
            EXPECT_EQ(test::runCommandVerbatim("printf %s " + quoted).out, input) << "as the shell reads it";
        }
    }
}

TEST(HookTemplateRenderer, SubstituteReplacesEveryOccurrenceInValuesOnly) {
    const json value = json::parse(R"({
        "{{AGENT_STATUS_SH}}": "{{AGENT_STATUS_SH}} a {{AGENT_STATUS_SH}}",
        "deep": [[{"cmd": "x {{AGENT_STATUS_SH}}"}], 7, null, true, "{{AGENT_STATUS_SH"]
    })");
    const json expected = json::parse(R"({
        "{{AGENT_STATUS_SH}}": "W a W",
        "deep": [[{"cmd": "x W"}], 7, null, true, "{{AGENT_STATUS_SH"]
    })");
    EXPECT_EQ(HookTemplateRenderer::substitute(value, "W"), expected);
    // A replacement that contains the placeholder is not expanded again.
    EXPECT_EQ(HookTemplateRenderer::substitute("{{AGENT_STATUS_SH}}!", "<{{AGENT_STATUS_SH}}>"),
              "<{{AGENT_STATUS_SH}}>!");
}

class HookTemplateRendererFiles : public ::testing::Test {
protected:
    Result<json> render(const std::string& content,
                        const std::string& writer = "/h/.tovrin/agent-status.sh") {
        dir.write("configs/t.json", content);
        return HookTemplateRenderer{AdapterResources{dir.path()}}.render("t", writer);
    }
    test::TempDir dir;
};

TEST_F(HookTemplateRendererFiles, FailuresCarryText) {
    const auto missing = HookTemplateRenderer{AdapterResources{dir.path()}}.render("absent", "/w");
    ASSERT_FALSE(missing);
    EXPECT_NE(missing.error().find("absent.json"), std::string::npos) << missing.error();

    for (const char* notJson : {"{\"a\": 1, // note\n}", "{\"a\": 1,}", "", "{"}) {
        SCOPED_TRACE(notJson);
        const auto broken = render(notJson);
        ASSERT_FALSE(broken);
        EXPECT_FALSE(broken.error().empty());
        EXPECT_NE(broken.error(), AdapterResources::payloadMissingMessage());
    }
    for (const char* notObject : {"[]", "\"{{AGENT_STATUS_SH}}\"", "3"}) {
        SCOPED_TRACE(notObject);
        const auto wrong = render(notObject);
        ASSERT_FALSE(wrong);
        EXPECT_EQ(wrong.error(), AdapterResources::payloadMissingMessage());
    }
}

} // namespace
} // namespace tovrin
