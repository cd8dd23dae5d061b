// SPDX-License-Identifier: MIT
// Makes EDID base blocks: that of one of the files, with what it says changed.
#pragma once

#include "platform/linux/displays/Edid.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>
#include <string>
#include <vector>

namespace lumenvale {

inline std::vector<std::uint8_t> edidFile(const std::string& name)
{
    std::ifstream file(std::string(LUMENVALE_EDID_FOLDER) + "/" + name + ".bin", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline EdidBlock withChecksum(EdidBlock block)
{
    block[127] = 0;
    block[127] = static_cast<std::uint8_t>(0U - std::accumulate(block.begin(), block.end(), 0U));
    return block;
}

struct EdidBuilder {
    std::string name = "Studio 27";
    std::uint8_t serial = 0;
    std::string serialText = {};
    std::uint8_t revision = 4;
    std::uint8_t videoInput = 0xB5; ///< digital, 10 bits, DisplayPort

    EdidBlock build() const
    {
        EdidBlock block{};
        std::ranges::copy(edidFile("studio-27-displayport"), block.begin());
        std::fill_n(block.begin() + 12, 4, std::uint8_t{0});
        block[12] = serial;
        block[19] = revision;
        block[20] = videoInput;
        const auto writeText = [&block](std::size_t at, std::string text) {
            text += '\n';
            text.resize(13, ' ');
            std::ranges::copy(text, block.begin() + static_cast<std::ptrdiff_t>(at));
        };
        writeText(77, name);
        writeText(95, serialText);
        return withChecksum(block);
    }
};

} // namespace lumenvale
