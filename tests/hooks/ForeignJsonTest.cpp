#include "hooks/ForeignJson.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using nlohmann::json;
using Kind = ForeignJson::ReadProblem::Kind;

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(ForeignJson, ReadsOnlyWhatItCanWriteBackValueForValue) {
    struct Case {
        std::string text;
        std::optional<Kind> problem;
        std::string detail;
    };
    const std::vector<Case> cases = {
        {R"({"a": [1, -2, 0.5, 1.0, 1e-07, 18446744073709551615, true, null, "é"]})", {}, ""},
        {"{\"a\": " + nested(63) + "}", {}, ""},
        {"{\"a\": " + nested(64) + "}", Kind::tooDeep, ""},
        {"{\"a\": " + nested(200000) + "}", Kind::tooDeep, ""},
        {R"({"big": 18446744073709551616})", Kind::inexactNumber, "18446744073709551616"},
        {R"({"e": 1e5})", Kind::inexactNumber, "1e5"},
        {R"({"trailing zero": 1.50})", Kind::inexactNumber, "1.50"},
        {R"({"k": 1, "k": 2})", Kind::duplicateKey, "k"},
        {R"({"o": {"k": 1}, "p": {"k": 2}})", {}, ""},
        {"[1]", Kind::notAnObject, "array"},
        {"\"text\"", Kind::notAnObject, "string"},
        {"{} // note", Kind::notJSON, ""},
        {std::string(ForeignJson::maxReadBytes + 1, ' '), Kind::tooLarge, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 80));
        const auto read = ForeignJson::read(c.text);
        ASSERT_EQ(read.ok(), !c.problem);
        if (read.ok()) {
            EXPECT_EQ(read.value(), json::parse(c.text));
        } else {
            EXPECT_EQ(read.error().kind, *c.problem);
            EXPECT_EQ(read.error().detail, c.detail);
        }
    }
}

TEST(ForeignJson, PrintsLikeTheLibraryWithinABound) {
    const auto document = json::parse(R"({"b": {"d": [], "c": [2, {"z": 0.25, "a": "\u0001é"}]}, "a": {}})");
    const auto printed = ForeignJson::pretty(document);
    ASSERT_TRUE(printed.ok());
    EXPECT_EQ(printed.value(), document.dump(2) + "\n");

    EXPECT_EQ(ForeignJson::pretty(document, document.dump(2).size()).error(),
              ForeignJson::PrintProblem::tooLarge);
    EXPECT_EQ(ForeignJson::pretty(json{{"bad", "\xff"}}).error(), ForeignJson::PrintProblem::notUTF8);
}

} // namespace
} // namespace tovrin
