#include "platform/qt/QtAppcastReader.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

TEST(QtAppcastReaderTest, ReadsTheReleaseFieldsByTheirNamespaceWhateverThePrefix) {
    // The second item binds the namespace to another prefix and names its version on the enclosure,
    // as older feeds do; the third binds "sparkle" to a foreign namespace, whose fields don't count.
    const std::string feed = R"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
  <channel>
    <title>Tovrin</title>
    <item>
      <title>Tovrin 2.0</title>
      <sparkle:version> 60 </sparkle:version>
      <sparkle:shortVersionString>2.0</sparkle:shortVersionString>
      <description><![CDATA[<p>Faster &amp; <b>calmer</b>.</p>]]></description>
      <enclosure url="https://tovrin.app/a?x=1&amp;y=2" length="12345" type="application/gzip"
                 sparkle:edSignature="c2lnbmF0dXJl"/>
    </item>
    <item xmlns:u="http://www.andymatuschak.org/xml-namespaces/sparkle">
      <enclosure url="https://tovrin.app/b" length="many" u:version="59" u:shortVersionString="1.9"
                 u:edSignature="b3RoZXI="/>
    </item>
    <item xmlns:sparkle="urn:elsewhere">
      <sparkle:version>61</sparkle:version>
      <enclosure url="https://tovrin.app/c" length="1" sparkle:edSignature="Zm9yZWlnbg=="/>
    </item>
  </channel>
</rss>)";
    const auto items = QtAppcastReader().read(feed);
    ASSERT_TRUE(items) << items.error();
    ASSERT_EQ(items.value().size(), 3u);
    EXPECT_EQ(items.value()[0], (AppcastItem{.version = "60",
                                             .shortVersion = "2.0",
                                             .notes = "<p>Faster &amp; <b>calmer</b>.</p>",
                                             .url = "https://tovrin.app/a?x=1&y=2",
                                             .length = 12345,
                                             .signature = "c2lnbmF0dXJl"}));
    EXPECT_EQ(items.value()[1], (AppcastItem{.version = "59",
                                             .shortVersion = "1.9",
                                             .notes = "",
                                             .url = "https://tovrin.app/b",
                                             .length = std::nullopt,
                                             .signature = "b3RoZXI="}));
    EXPECT_EQ(items.value()[2].version, "");
    EXPECT_EQ(items.value()[2].signature, "");
}

TEST(QtAppcastReaderTest, AFeedThatDoesNotParseIsAnErrorThatSaysWhere) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", "line 1"},
        {"<rss><channel><item></channel></rss>", "line 1, column "},
        {"<rss version=\"2.0\">\n<channel/>\n</rss>\n<rss/>", "line 4"},
        {"<html><body>Not found</body></html>", "not an RSS feed"},
        {"<rss><channel><item><sparkle:version>1</sparkle:version></item></channel></rss>", "line 1"},
    };
    for (const auto& [feed, says] : rows) {
        const auto items = QtAppcastReader().read(feed);
        ASSERT_FALSE(items) << feed;
        EXPECT_NE(items.error().find(says), std::string::npos) << feed << ": " << items.error();
    }
    const auto empty =
        QtAppcastReader().read("<rss version=\"2.0\"><channel><title>Tovrin</title></channel></rss>");
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty.value().empty());
}

} // namespace
} // namespace tovrin
