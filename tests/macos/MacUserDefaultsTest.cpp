// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/MacUserDefaults.h"

#include "MacTest.h"
#include "platform/macos/foundation/PropertyConversion.h"
#include "support/ManualClock.h"

#include <ColorSync/ColorSync.h>
#include <limits>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

struct MacUserDefaultsTest : MacTest {
    int synchronised() { return fakesdk::calls("CFPreferencesSynchronize"); }

    ManualClock clock;
    MacUserDefaults defaults{"app.test", clock};
    Strings reported;
    Subscription failures =
        defaults.observeFailures([this](const std::string& text) { reported.push_back(text); });
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
    EXPECT_EQ(reported, Strings{"The text to be saved is not valid Unicode."});
    EXPECT_EQ(defaults.value("name"), PropertyValue("good"));
}

TEST_F(MacUserDefaultsTest, LeavesOutKindsThatHaveNoForm)
{
    machine.displays = {{.id = 1, .uuid = "37D8832A-2D66-02CA-B9F7-8F30A301B230"}};
    const CFReference<CFUUIDRef> uuid(CGDisplayCreateUUIDFromDisplayID(1));
    const CFReference<CFMutableDictionaryRef> dictionary(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionaryAddValue(dictionary.get(), kCFBooleanTrue, kCFBooleanTrue); // a key that is no text
    CFDictionaryAddValue(dictionary.get(), toCFString("uuid").get(), uuid.get());
    CFDictionaryAddValue(dictionary.get(), toCFString("flag").get(), kCFBooleanFalse);
    EXPECT_EQ(toPropertyValue(dictionary.get()), PropertyValue(PropertyDictionary{{"flag", false}}));
}

TEST_F(MacUserDefaultsTest, ReadsAnotherDomainWhole)
{
    machine.preferences["com.old"] = {{"appPresentation", "dock"}, {"presets", fakesdk::Bytes{1, 0}}};
    EXPECT_EQ(defaults.domain("com.old"),
              (PropertyDictionary{{"appPresentation", "dock"}, {"presets", PropertyData{1, 0}}}));
    EXPECT_EQ(defaults.domain("com.none"), PropertyDictionary());
    EXPECT_EQ(defaults.value("appPresentation"), std::nullopt);
}

TEST_F(MacUserDefaultsTest, BringsChangesToTheDiskTogetherAndTriesAgainWhatFailed)
{
    machine.fail["CFPreferencesSynchronize"] = {0, 1};
    defaults.set("a", 1);
    clock.advance(300ms);
    defaults.set("b", 2);
    clock.advance(200ms);
    EXPECT_EQ(synchronised(), 1);
    EXPECT_EQ(reported, Strings{"The system's preferences database did not accept the change."});
    defaults.flush();
    EXPECT_EQ(synchronised(), 2);
    EXPECT_EQ(reported.back(), "") << "the failure is over";
    MacUserDefaults("app.test", clock).set("a", 3);
    EXPECT_EQ(synchronised(), 3);
    EXPECT_EQ(clock.pendingCount(), 0U);
}

} // namespace
} // namespace lumenvale
