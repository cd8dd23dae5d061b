// SPDX-License-Identifier: MIT
// Makes EDID base blocks from what they say (VESA E-EDID 1.4, section 3).
#pragma once

#include "platform/linux/displays/Edid.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <string>

namespace lumenvale {

struct EdidBuilder {
    std::string manufacturer = "LMV";
    int product = 0x2701;
    std::uint32_t serial = 0;
    int week = 12;
    int year = 2021;
    int revision = 4;
    int videoInput = 0xB5; ///< digital, 10 bits, DisplayPort
    int widthCm = 60;
    int heightCm = 34;
    int width = 2560;
    int height = 1440;
    bool isInterlaced = false;
    std::string name = "Studio 27";
    std::string serialText = {};

    EdidBlock build() const
    {
        EdidBlock block{};
        std::fill(block.begin() + 1, block.begin() + 7, std::uint8_t{0xFF});
        const int letters = (manufacturer[0] - '@') << 10 | (manufacturer[1] - '@') << 5 | (manufacturer[2] - '@');
        put(block, 8, {letters >> 8, letters, product, product >> 8});
        put(block, 12, {byteOf(serial, 0), byteOf(serial, 1), byteOf(serial, 2), byteOf(serial, 3)});
        put(block, 16, {week, year - 1990, 1, revision, videoInput, widthCm, heightCm, 120, 0x06});
        std::fill(block.begin() + 38, block.begin() + 54, std::uint8_t{0x01}); // no standard timings
        put(block, 54, {0x6A, 0x5E, width, 0, width >> 8 << 4, height, 0, height >> 8 << 4});
        block[71] = isInterlaced ? 0x80 : 0;
        putText(block, 72, 0xFC, name);
        putText(block, 90, serialText.empty() ? 0x10 : 0xFF, serialText);
        putText(block, 108, 0x10, {});
        return withChecksum(block);
    }

    static EdidBlock withChecksum(EdidBlock block)
    {
        block[127] = 0;
        block[127] = static_cast<std::uint8_t>(0U - std::accumulate(block.begin(), block.end(), 0U));
        return block;
    }

private:
    static int byteOf(std::uint32_t value, int index) { return static_cast<int>(value >> (8 * index) & 0xFF); }

    static void put(EdidBlock& block, std::size_t at, std::initializer_list<int> bytes)
    {
        for (const int byte : bytes)
            block[at++] = static_cast<std::uint8_t>(byte);
    }

    static void putText(EdidBlock& block, std::size_t at, int tag, const std::string& text)
    {
        put(block, at, {0, 0, 0, tag, 0});
        std::string padded = text + '\n';
        padded.resize(13, ' ');
        std::memcpy(block.data() + at + 5, padded.data(), 13);
    }
};

} // namespace lumenvale
