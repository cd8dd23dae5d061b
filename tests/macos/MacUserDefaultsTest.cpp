// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/MacUserDefaults.h"

#include "MacTest.h"
#include "support/ManualClock.h"

#include <limits>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

struct MacUserDefaultsTest : MacTest {
    ManualClock clock;
    MacUserDefaults defaults{"app.test", clock};
    std::string reported;
    Subscription failures = defaults.observeFailures([this](const std::string& text) { reported = text; });
};

TEST_F(MacUserDefaultsTest, GivesEveryValueBackWithItsType)
{
    for (const PropertyValue& each : std::initializer_list<PropertyValue>{
             true, false, 1, std::numeric_limits<std::int64_t>::min(), 3.0, -0.1, "Größe 🖥", "",
             PropertyData(), PropertyData{0, 255},
             PropertyArray{1, "two", PropertyArray(), PropertyDictionary{{"deep", true}}},
             PropertyDictionary{{"z", 1}, {"a", PropertyData{1}}}}) {
        EXPECT_EQ(defaults.value("key"), std::nullopt);
        defaults.set("key", each);
        EXPECT_EQ(defaults.value("key"), each);
        defaults.set("key", std::nullopt);
    }
    defaults.set("name", "good");
    defaults.set("name", PropertyArray{"\xFF"});
    EXPECT_EQ(reported, "The text to be saved is not valid Unicode.");
    EXPECT_EQ(defaults.domain("app.test"), (PropertyDictionary{{"name", "good"}}));
}

TEST_F(MacUserDefaultsTest, BringsChangesToTheDiskTogetherAndTriesAgainWhatFailed)
{
    machine.fail["CFPreferencesSynchronize"] = {0, 1};
    defaults.set("a", 1);
    clock.advance(300ms);
    defaults.set("b", 2);
    clock.advance(200ms);
    EXPECT_EQ(reported, "The system's preferences database did not accept the change.");
    defaults.flush();
    EXPECT_EQ(reported, "") << "the failure is over";
    MacUserDefaults("app.test", clock).set("a", 3);
    EXPECT_EQ(fakesdk::calls("CFPreferencesSynchronize"), 3);
}

} // namespace
} // namespace lumenvale
