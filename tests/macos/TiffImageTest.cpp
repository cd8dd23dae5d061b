// SPDX-License-Identifier: MIT
#include "platform/macos/shell/TiffImage.h"

#include <gtest/gtest.h>
#include <map>

namespace lumenvale {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::uint32_t number(const Bytes& file, std::size_t offset, std::size_t size)
{
    std::uint32_t value = 0;
    for (std::size_t byte = size; byte-- > 0;)
        value = value << 8 | file.at(offset + byte);
    return value;
}

/// The tags of the page at `offset`; which then names the next page.
std::map<std::uint32_t, std::uint32_t> readPage(const Bytes& file, std::size_t& offset)
{
    std::map<std::uint32_t, std::uint32_t> tags;
    const std::size_t count = number(file, offset, 2);
    std::uint32_t last = 0;
    for (std::size_t entry = offset + 2; entry < offset + 2 + 12 * count; entry += 12) {
        EXPECT_GT(number(file, entry, 2), last) << "tags stand in ascending order";
        last = number(file, entry, 2);
        tags[last] = number(file, entry + 8, 4);
    }
    offset = number(file, offset + 2 + 12 * count, 4);
    return tags;
}

TEST(TiffImageTest, EachPageHasItsSizeResolutionAndPixels)
{
    const Bytes file = encodeTiff({{Bitmap{2, 1, {0xFF112233, 0x80000000}}, 1}, {Bitmap{1, 1, {0x01ABCDEF}}, 2}});
    EXPECT_EQ(Bytes(file.begin(), file.begin() + 4), (Bytes{'I', 'I', 42, 0}));
    std::size_t offset = number(file, 4, 4);
    auto tags = readPage(file, offset);
    EXPECT_EQ(tags[256], 2U);
    EXPECT_EQ(tags[257], 1U);
    EXPECT_EQ(tags[279], 8U);
    EXPECT_EQ(number(file, tags[258] + 6, 2), 8U);
    EXPECT_EQ(number(file, tags[282], 4), 72U);
    EXPECT_EQ(number(file, tags[282] + 4, 4), 1U);
    EXPECT_EQ(Bytes(file.begin() + tags[273], file.begin() + tags[273] + 8),
              (Bytes{0x11, 0x22, 0x33, 0xFF, 0x00, 0x00, 0x00, 0x80}));
    tags = readPage(file, offset);
    EXPECT_EQ(tags[256], 1U);
    EXPECT_EQ(number(file, tags[283], 4), 144U);
    EXPECT_EQ(number(file, tags[273], 4), 0x01EFCDABU);
    EXPECT_EQ(offset, 0U);
}

} // namespace
} // namespace lumenvale
