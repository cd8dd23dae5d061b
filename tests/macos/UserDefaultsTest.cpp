// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/MacUserDefaults.h"

#include "MacTest.h"
#include "support/ManualClock.h"

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

struct MacUserDefaultsTest : MacTest {
    int synchronised() { return standin::calls("CFPreferencesSynchronize"); }

    ManualClock clock;
    std::vector<std::string> reported;
};

TEST_F(MacUserDefaultsTest, EveryKindOfValueIsStoredAsItIs)
{
    const std::map<std::string, PropertyValue> values = {
        {"flag", true},
        {"number", 42},
        {"real", 0.25},
        {"text", "both"},
        {"presets", PropertyData{'[', ']'}},
        {"displayOrder", PropertyArray{"A", "B"}},
        {"dictionary", PropertyDictionary{{"key", PropertyArray{1.5, false}}}},
    };
    MacUserDefaults defaults("app.test", clock);
    for (const auto& [key, value] : values) {
        EXPECT_FALSE(defaults.value(key));
        defaults.set(key, value);
        EXPECT_EQ(defaults.value(key), std::optional(value));
    }
    EXPECT_EQ(machine.preferences["app.test"], values);
    defaults.set("flag", std::nullopt);
    EXPECT_FALSE(defaults.value("flag"));
    EXPECT_EQ(machine.preferences["app.test"].size(), values.size() - 1);
}

TEST_F(MacUserDefaultsTest, AnotherDomainIsReadWholeAndNotTouched)
{
    machine.preferences["com.old"] = {{"appPresentation", "dock"}, {"presets", PropertyData{1, 0, 2}}};
    const MacUserDefaults defaults("app.test", clock);
    EXPECT_EQ(defaults.domain("com.old"),
              (PropertyDictionary{{"appPresentation", "dock"}, {"presets", PropertyData{1, 0, 2}}}));
    EXPECT_TRUE(defaults.domain("com.none").empty());
    EXPECT_TRUE(defaults.domain("\xFF").empty());
    EXPECT_FALSE(defaults.value("appPresentation"));
    EXPECT_EQ(standin::calls("CFPreferencesSetValue"), 0);
}

TEST_F(MacUserDefaultsTest, ChangesReachTheDiskTogetherAfterHalfASecond)
{
    MacUserDefaults defaults("app.test", clock);
    defaults.set("a", 1);
    clock.advance(300ms);
    defaults.set("b", 2);
    EXPECT_EQ(synchronised(), 0);
    clock.advance(200ms);
    EXPECT_EQ(synchronised(), 1);
    clock.advance(10s);
    EXPECT_EQ(synchronised(), 1);
    defaults.set("a", 3);
    defaults.flush();
    EXPECT_EQ(synchronised(), 2);
    EXPECT_EQ(clock.pendingCount(), 0U);
}

TEST_F(MacUserDefaultsTest, TheEndWritesWhatIsNotYetWritten)
{
    MacUserDefaults("app.test", clock).set("a", 1);
    EXPECT_EQ(synchronised(), 1);
    EXPECT_EQ(clock.pendingCount(), 0U);
    MacUserDefaults("app.test", clock).flush(); // nothing to do
    EXPECT_EQ(synchronised(), 1);
}

TEST_F(MacUserDefaultsTest, AWriteThatFailedIsReportedAndTriedAgain)
{
    MacUserDefaults defaults("app.test", clock);
    const Subscription subscription =
        defaults.observeFailures([this](const std::string& text) { reported.push_back(text); });
    machine.failures["CFPreferencesSynchronize"] = {0, 1};
    defaults.set("a", 1);
    clock.advance(500ms);
    EXPECT_EQ(reported, std::vector<std::string>{"The system's preferences database did not accept the change."});
    defaults.flush();
    EXPECT_EQ(synchronised(), 2);
    EXPECT_EQ(reported.size(), 2U);
    EXPECT_EQ(reported.back(), "") << "the failure is over";
}

TEST_F(MacUserDefaultsTest, TextThatIsNotUnicodeIsReportedAndKeepsTheOldValue)
{
    MacUserDefaults defaults("app.test", clock);
    const Subscription subscription =
        defaults.observeFailures([this](const std::string& text) { reported.push_back(text); });
    defaults.set("name", "good");
    defaults.set("name", "\xFF");
    defaults.set("\xFF", 1);
    EXPECT_EQ(defaults.value("name"), std::optional<PropertyValue>("good"));
    EXPECT_FALSE(defaults.value("\xFF"));
    EXPECT_EQ(reported.size(), 2U);
}

} // namespace
} // namespace lumenvale
