#include "platform/dbus/PortalGlobalShortcuts.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(PortalTriggerTest, ModifiersInFixedOrderThenTheKeysymName) {
    using namespace ShortcutModifier;
    EXPECT_EQ(portalTrigger({'e', control | alt}), "CTRL+ALT+e");
    EXPECT_EQ(portalTrigger({'e', super | shift | alt | control}), "CTRL+ALT+SHIFT+LOGO+e");
    EXPECT_EQ(portalTrigger({0xff0d, super}), "LOGO+Return");
    EXPECT_EQ(portalTrigger({',', control}), "CTRL+comma");
    EXPECT_EQ(portalTrigger({KeySym::f1 + 4, 0}), "F5");
    EXPECT_EQ(portalTrigger({0x6c1, alt}), "ALT+Cyrillic_a");
    EXPECT_EQ(portalTrigger({0, control}), std::nullopt);
    EXPECT_EQ(portalTrigger({0x20000000, control}), std::nullopt) << "beyond the largest keysym";
}

} // namespace
} // namespace tovrin
