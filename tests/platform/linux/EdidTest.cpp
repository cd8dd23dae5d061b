// SPDX-License-Identifier: MIT
#include "EdidBuilder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

std::vector<std::uint8_t> readFile(const std::string& name)
{
    std::ifstream file(std::string(LUMENVALE_EDID_FOLDER) + "/" + name + ".bin", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

Edid parsedFile(const std::string& name) { return parseEdid(readFile(name)).value_or(Edid{}); }

TEST(Edid, FieldsAreReadFromTheirPlaces)
{
    const Edid edid = parsedFile("studio-27-displayport");
    EXPECT_EQ(edid.manufacturer, "LMV");
    EXPECT_EQ(edid.product, 0x2701);
    EXPECT_EQ(edid.serial, 305419896U);
    EXPECT_EQ(edid.week, 12);
    EXPECT_EQ(edid.year, 2021);
    EXPECT_EQ(edid.revision, 4);
    EXPECT_EQ(edid.videoInput, 0xB5);
    EXPECT_EQ(edid.widthCm, 60);
    EXPECT_EQ(edid.heightCm, 34);
    EXPECT_EQ(edid.productName, "Studio 27");
    EXPECT_EQ(edid.serialText, "QX7200143");
    EXPECT_EQ(edid.preferred, (Resolution{2560, 1440}));
    EXPECT_TRUE(hasSerial(edid));
    EXPECT_EQ(edid.block, (EdidBuilder{.serial = 305419896, .serialText = "QX7200143"}.build()))
        << "the builder of other tests lays its blocks out alike";
}

TEST(Edid, PlaceholdersAreNoSerials)
{
    EXPECT_FALSE(hasSerial(parsedFile("studio-27-without-serial")));
    EXPECT_FALSE(hasSerial(parsedFile("office-24-hdmi")));
    const EdidBlock numberOnly = EdidBuilder{.serial = 7}.build();
    const EdidBlock textOnly = EdidBuilder{.serialText = "A1"}.build();
    EXPECT_TRUE(hasSerial(*parseEdid(numberOnly)));
    EXPECT_TRUE(hasSerial(*parseEdid(textOnly)));
}

TEST(Edid, AnAspectRatioIsNoSizeAndFieldsMakeAFrame)
{
    const Edid edid = parsedFile("television-interlaced");
    EXPECT_EQ(edid.widthCm, 0);
    EXPECT_EQ(edid.heightCm, 0);
    EXPECT_EQ(edid.preferred, (Resolution{1920, 1080}));
}

TEST(Edid, OnlyPrintableTextIsTaken)
{
    EdidBlock block = EdidBuilder{.name = "A"}.build();
    const std::uint8_t text[] = {' ', 0x1B, '[', 'B', 0xC3, 0xA4, 0x7F, 'z', ' ', '\n', 'x', 'x', 'x'};
    std::copy(std::begin(text), std::end(text), block.begin() + 77);
    EXPECT_EQ(parseEdid(EdidBuilder::withChecksum(block))->productName, "[Bz");
    EXPECT_EQ(parsedFile("panel-nameless").productName, "");
}

TEST(Edid, TruncatedAndDamagedBlocksAreRefused)
{
    const std::vector<std::uint8_t> whole = readFile("studio-27-displayport");
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
