// SPDX-License-Identifier: MIT
#include "platform/macos/shell/TiffImage.h"

#include <cstddef>

namespace lumenvale {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint16_t shortType = 3;
constexpr std::uint16_t longType = 4;
constexpr std::uint16_t rationalType = 5;
constexpr std::uint32_t pointsPerInch = 72;
constexpr std::uint32_t samplesPerPixel = 4;

void append16(Bytes& file, std::uint32_t value)
{
    file.push_back(static_cast<std::uint8_t>(value));
    file.push_back(static_cast<std::uint8_t>(value >> 8));
}

void append32(Bytes& file, std::uint32_t value)
{
    append16(file, value & 0xFFFF);
    append16(file, value >> 16);
}

void put32(Bytes& file, std::size_t offset, std::uint32_t value)
{
    for (std::size_t byte = 0; byte < 4; ++byte)
        file[offset + byte] = static_cast<std::uint8_t>(value >> (8 * byte));
}

/// One tag of a page; a value of two bytes stands at the front of its four, which little-endian order gives.
struct Field {
    std::uint16_t tag;
    std::uint16_t type;
    std::uint32_t count;
    std::uint32_t value; ///< or where it stands in the file
};

std::uint32_t endOf(const Bytes& file) { return static_cast<std::uint32_t>(file.size()); }

std::uint32_t appendPixels(Bytes& file, const Bitmap& bitmap)
{
    const std::uint32_t begin = endOf(file);
    for (const std::uint32_t pixel : bitmap.pixels) {
        for (const int shift : {16, 8, 0, 24}) // 0xAARRGGBB to red, green, blue, opacity
            file.push_back(static_cast<std::uint8_t>(pixel >> shift));
    }
    return begin;
}

std::uint32_t appendSampleSizes(Bytes& file)
{
    const std::uint32_t begin = endOf(file);
    for (std::uint32_t sample = 0; sample < samplesPerPixel; ++sample)
        append16(file, 8);
    return begin;
}

std::uint32_t appendResolution(Bytes& file, std::uint32_t pixelsPerPoint)
{
    const std::uint32_t begin = endOf(file);
    append32(file, pointsPerInch * pixelsPerPoint);
    append32(file, 1);
    return begin;
}

/// Appends a page, and returns where the place of the next one is to be entered.
std::size_t appendPage(Bytes& file, const TiffPage& page, std::size_t linkOffset)
{
    const auto width = static_cast<std::uint32_t>(page.bitmap.width);
    const auto height = static_cast<std::uint32_t>(page.bitmap.height);
    const std::uint32_t pixels = appendPixels(file, page.bitmap);
    const std::uint32_t sampleSizes = appendSampleSizes(file);
    const std::uint32_t resolution = appendResolution(file, page.pixelsPerPoint);
    const Field fields[] = {
        {256, longType, 1, width},
        {257, longType, 1, height},
        {258, shortType, samplesPerPixel, sampleSizes},
        {259, shortType, 1, 1}, // not compressed
        {262, shortType, 1, 2}, // RGB
        {273, longType, 1, pixels},
        {277, shortType, 1, samplesPerPixel},
        {278, longType, 1, height}, // one strip
        {279, longType, 1, width * height * samplesPerPixel},
        {282, rationalType, 1, resolution},
        {283, rationalType, 1, resolution},
        {296, shortType, 1, 2}, // per inch
        {338, shortType, 1, 2}, // opacity, not multiplied in
    };
    put32(file, linkOffset, endOf(file));
    append16(file, static_cast<std::uint32_t>(std::size(fields)));
    for (const Field& field : fields) {
        append16(file, field.tag);
        append16(file, field.type);
        append32(file, field.count);
        append32(file, field.value);
    }
    append32(file, 0);
    return file.size() - 4;
}

} // namespace

std::vector<std::uint8_t> encodeTiff(const std::vector<TiffPage>& pages)
{
    Bytes file = {'I', 'I', 42, 0, 0, 0, 0, 0};
    std::size_t link = 4;
    for (const TiffPage& page : pages)
        link = appendPage(file, page, link);
    return file;
}

} // namespace lumenvale
