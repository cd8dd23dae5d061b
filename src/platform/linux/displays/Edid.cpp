// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Edid.h"

#include <algorithm>
#include <numeric>

namespace lumenvale {

namespace {

constexpr std::array<std::uint8_t, 8> header = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
constexpr std::size_t firstDescriptor = 54;
constexpr std::size_t descriptorSize = 18;
constexpr std::size_t descriptorCount = 4;
constexpr std::uint8_t nameTag = 0xFC;
constexpr std::uint8_t serialTag = 0xFF;
constexpr int firstYear = 1990;

using Descriptor = std::span<const std::uint8_t, descriptorSize>;

bool isValidBlock(std::span<const std::uint8_t> block)
{
    return std::equal(header.begin(), header.end(), block.begin()) &&
           std::accumulate(block.begin(), block.end(), 0U) % 256 == 0;
}

std::string manufacturerLetters(std::uint16_t vendor)
{
    std::string letters;
    for (const int shift : {10, 5, 0}) {
        const int letter = vendor >> shift & 0x1F;
        if (letter < 1 || letter > 26)
            return {};
        letters += static_cast<char>('A' + letter - 1);
    }
    return letters;
}

/// The 13 bytes of text end at a line feed and are padded with spaces. They may hold anything.
std::string descriptorText(Descriptor descriptor)
{
    std::string text;
    for (const std::uint8_t byte : descriptor.subspan(5)) {
        if (byte == '\n' || byte == 0)
            break;
        if (byte >= 0x20 && byte < 0x7F)
            text += static_cast<char>(byte);
    }
    const std::size_t begin = text.find_first_not_of(' ');
    const std::size_t end = text.find_last_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, end - begin + 1);
}

bool isTiming(Descriptor descriptor) { return descriptor[0] != 0 || descriptor[1] != 0; }

std::optional<Resolution> timingResolution(Descriptor timing)
{
    constexpr std::uint8_t interlaced = 0x80;
    const int width = timing[2] | (timing[4] & 0xF0) << 4;
    const int lines = timing[5] | (timing[7] & 0xF0) << 4;
    if (width == 0 || lines == 0)
        return std::nullopt;
    return Resolution{width, (timing[17] & interlaced) != 0 ? lines * 2 : lines};
}

void readDescriptors(Edid& edid)
{
    for (std::size_t i = 0; i < descriptorCount; ++i) {
        const Descriptor descriptor(edid.block.data() + firstDescriptor + i * descriptorSize, descriptorSize);
        if (isTiming(descriptor)) {
            if (i == 0)
                edid.preferred = timingResolution(descriptor);
        } else if (descriptor[3] == nameTag && edid.productName.empty()) {
            edid.productName = descriptorText(descriptor);
        } else if (descriptor[3] == serialTag && edid.serialText.empty()) {
            edid.serialText = descriptorText(descriptor);
        }
    }
}

} // namespace

std::optional<Edid> parseEdid(std::span<const std::uint8_t> bytes)
{
    Edid edid;
    if (bytes.size() < edid.block.size() || !isValidBlock(bytes.first(edid.block.size())))
        return std::nullopt;
    std::copy_n(bytes.begin(), edid.block.size(), edid.block.begin());
    const EdidBlock& block = edid.block;

    edid.vendor = static_cast<std::uint16_t>(block[8] << 8 | block[9]);
    edid.manufacturer = manufacturerLetters(edid.vendor);
    edid.product = static_cast<std::uint16_t>(block[11] << 8 | block[10]);
    edid.serial = std::uint32_t{block[15]} << 24 | std::uint32_t{block[14]} << 16 | std::uint32_t{block[13]} << 8 |
                  block[12];
    edid.week = block[16];
    edid.year = firstYear + block[17];
    edid.version = block[18];
    edid.revision = block[19];
    edid.videoInput = block[20];
    if (block[21] != 0 && block[22] != 0) { // one alone is an aspect ratio
        edid.widthCm = block[21];
        edid.heightCm = block[22];
    }
    readDescriptors(edid);
    return edid;
}

bool hasSerial(const Edid& edid)
{
    constexpr std::uint32_t placeholder = 0x01010101; // what many makers leave in the field
    const bool hasNumber = edid.serial != 0 && edid.serial != placeholder && edid.serial != 0xFFFFFFFF;
    const bool hasText = edid.serialText.find_first_not_of("0 ") != std::string::npos;
    return hasNumber || hasText;
}

} // namespace lumenvale
