// SPDX-License-Identifier: MIT
#include "EdidBuilder.h"

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
    EXPECT_EQ(edid.week, 12);
    EXPECT_EQ(edid.year, 2021);
    EXPECT_EQ(edid.revision, 4);
    EXPECT_EQ(edid.videoInput, 0xB5);
    EXPECT_EQ(edid.productName, "Studio 27");
    EXPECT_EQ(edid.serialText, "QX7200143");
    EXPECT_EQ(edid.preferred, (Resolution{2560, 1440}));
    EXPECT_EQ(parsed("television-interlaced").preferred, (Resolution{1920, 1080})) << "two fields make a frame";
    EXPECT_EQ(parsed("panel-nameless").productName, "");
}

TEST(Edid, PlaceholdersAreNoSerials)
{
    const EdidBlock numberOnly = EdidBuilder{.serial = 7}.build();
    const EdidBlock textOnly = EdidBuilder{.serialText = "A1"}.build();
    EXPECT_TRUE(hasSerial(*parseEdid(numberOnly)) && hasSerial(*parseEdid(textOnly)));
    EXPECT_FALSE(hasSerial(parsed("studio-27-without-serial")) || hasSerial(parsed("office-24-hdmi")));
}

TEST(Edid, OnlyPrintableTextIsTaken)
{
    EdidBlock block = EdidBuilder{}.build();
    const std::uint8_t text[] = {' ', 0x1B, '[', 'B', 0xC3, 0xA4, 0x7F, 'z', ' ', '\n', 'x', 'x', 'x'};
    std::ranges::copy(text, block.begin() + 77);
    EXPECT_EQ(parseEdid(withChecksum(block))->productName, "[Bz");
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
