// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

Edid parsed(const std::string& name) { return parseEdid(edidFile(name)).value_or(Edid{}); }

TEST(Edid, FieldsAreReadFromTheirPlaces)
{
    const Edid edid = parsed("studio-27-displayport");
    EXPECT_EQ(edid.manufacturer, "LMV");
    EXPECT_EQ(edid.product, 0x2701);
    EXPECT_EQ(edid.serial, 305419896U);
    EXPECT_EQ(std::pair(edid.week, edid.year), std::pair(std::uint8_t{12}, 2021));
    EXPECT_EQ(edid.revision, 4);
    EXPECT_EQ(edid.videoInput, 0xB5);
    EXPECT_EQ(edid.productName, "Studio 27");
    EXPECT_EQ(edid.serialText, "QX7200143");
    EXPECT_EQ(edid.preferred, (Resolution{2560, 1440}));
    EXPECT_EQ(parsed("television-interlaced").preferred, (Resolution{1920, 1080})) << "two fields make a frame";
    EXPECT_EQ(parsed("panel-nameless").productName, "");
    EXPECT_FALSE(hasSerial(parsed("studio-27-without-serial")) || hasSerial(parsed("office-24-hdmi")))
        << "placeholders are no serials";
    EXPECT_TRUE(hasSerial(*parseEdid(EdidBuilder{.serial = 7}.build())));
    EXPECT_TRUE(hasSerial(*parseEdid(EdidBuilder{.serialText = "A1"}.build())));
    const EdidBlock unprintable = EdidBuilder{.name = " \x1B[B\xC3\xA4\x7Fz \nxxx"}.build();
    EXPECT_EQ(parseEdid(unprintable)->productName, "[Bz");
}

TEST(Edid, TruncatedAndDamagedBlocksAreRefused)
{
    const std::vector<std::uint8_t> whole = edidFile("studio-27-displayport");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(parseEdid(std::span(whole).first(length)));
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::vector<std::uint8_t> damaged = whole;
        damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ 1U << bit % 8);
        EXPECT_FALSE(parseEdid(damaged)) << "bit " << bit;
    }
}

} // namespace
} // namespace lumenvale
