// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/PropertyConversion.h"

#include "MacTest.h"

#include <ColorSync/ColorSync.h>
#include <limits>

namespace lumenvale {
namespace {

using PropertyConversionTest = MacTest;

TEST_F(PropertyConversionTest, EveryKindOfValueSurvivesTheRoundTrip)
{
    const PropertyDictionary everything = {
        {"true", true},
        {"false", false},
        {"smallest", std::numeric_limits<std::int64_t>::min()},
        {"whole real", 3.0},
        {"real", -0.1},
        {"text", "Größe \xF0\x9F\x8C\x9E"},
        {"empty text", ""},
        {"data", PropertyData{0, 255, 10}},
        {"empty data", PropertyData{}},
        {"list", PropertyArray{1, "two", PropertyArray{}, PropertyDictionary{{"deep", true}}}},
    };
    const auto object = toCFObject(everything);
    EXPECT_EQ(toPropertyValue(object.get()), std::optional<PropertyValue>(everything));
}

TEST_F(PropertyConversionTest, DictionaryEntriesKeepTheSystemsOrder)
{
    const auto object = toCFObject(PropertyDictionary{{"z", 1}, {"a", 2}, {"m", 3}});
    const auto value = toPropertyValue(object.get());
    ASSERT_TRUE(value && value->as<PropertyDictionary>());
    EXPECT_EQ(value->as<PropertyDictionary>()->front().first, "z");
    EXPECT_EQ(value->as<PropertyDictionary>()->back().first, "m");
}

TEST_F(PropertyConversionTest, KindsWithoutAFormAreLeftOut)
{
    EXPECT_FALSE(toPropertyValue(nullptr));
    machine.displays = {{.id = 1, .uuid = "UUID"}};
    const CFReference<CFUUIDRef> uuid(CGDisplayCreateUUIDFromDisplayID(1));
    EXPECT_FALSE(toPropertyValue(uuid.get()));

    const CFReference<CFMutableArrayRef> array(
        CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
    CFArrayAppendValue(array.get(), uuid.get());
    CFArrayAppendValue(array.get(), kCFBooleanTrue);
    EXPECT_EQ(toPropertyValue(array.get()), std::optional<PropertyValue>(PropertyArray{true}));

    const CFReference<CFMutableDictionaryRef> dictionary(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionaryAddValue(dictionary.get(), kCFBooleanTrue, kCFBooleanTrue); // a key that is no text
    CFDictionaryAddValue(dictionary.get(), toCFString("uuid").get(), uuid.get());
    CFDictionaryAddValue(dictionary.get(), toCFString("flag").get(), kCFBooleanFalse);
    EXPECT_EQ(toPropertyValue(dictionary.get()),
              std::optional<PropertyValue>(PropertyDictionary{{"flag", false}}));
}

TEST_F(PropertyConversionTest, NumbersAndTextsThatDoNotFitGiveNothing)
{
    const auto number = toCFObject(7);
    machine.failures["CFNumberGetValue"] = {}; // beyond 64 bits
    EXPECT_FALSE(toPropertyValue(number.get()));
    const auto text = toCFString("half a surrogate pair");
    machine.failures["CFStringGetCString"] = {};
    EXPECT_FALSE(toPropertyValue(text.get()));
    EXPECT_FALSE(toText(nullptr));
}

TEST_F(PropertyConversionTest, TextThatIsNotUtf8MakesNoObject)
{
    EXPECT_FALSE(toCFString("\xFF"));
    EXPECT_FALSE(toCFObject("\xC3"));
    EXPECT_FALSE(toCFObject(PropertyArray{"good", "\xE2\x82"}));
    EXPECT_FALSE(toCFObject(PropertyDictionary{{"\x80", 1}}));
    EXPECT_FALSE(toCFObject(PropertyDictionary{{"list", PropertyArray{"\xF8"}}}));
}

TEST_F(PropertyConversionTest, OfEqualKeysTheFirstCounts)
{
    const auto object = toCFObject(PropertyDictionary{{"key", 1}, {"key", 2}});
    EXPECT_EQ(toPropertyValue(object.get()), std::optional<PropertyValue>(PropertyDictionary{{"key", 1}}));
}

TEST_F(PropertyConversionTest, AReferenceIsGivenBackOnceHoweverItMoves)
{
    CFReference<CFStringRef> first = toCFString("first");
    CFReference<CFStringRef> second = toCFString("second");
    first = std::move(second);
    EXPECT_EQ(toText(first.get()), "second");
    const CFReference<CFTypeRef> general = std::move(first);
    EXPECT_FALSE(first);
    EXPECT_EQ(standin::leaks().size(), 2U); // "first" waits in `second`
}

} // namespace
} // namespace lumenvale
