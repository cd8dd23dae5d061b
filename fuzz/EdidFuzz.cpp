// SPDX-License-Identifier: MIT
// An EDID may be anything. What is read from it must be text that can be shown, and stand for the block itself.
#include "platform/linux/displays/Edid.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace {

bool isPrintable(const std::string& text)
{
    return text.size() <= 13 &&
           std::all_of(text.begin(), text.end(), [](char each) { return each >= ' ' && each <= '~'; });
}

void examine(std::span<const std::uint8_t> bytes)
{
    using namespace lumenvale;
    const auto edid = parseEdid(bytes);
    if (!edid)
        return;
    const bool isSound = std::accumulate(bytes.begin(), bytes.begin() + 128, 0U) % 256 == 0 &&
                         std::equal(edid->block.begin(), edid->block.end(), bytes.begin());
    const bool isShowable =
        isPrintable(edid->productName) && isPrintable(edid->serialText) && isPrintable(edid->manufacturer);
    if (!isSound || !isShowable ||
        (edid->preferred && (edid->preferred->width <= 0 || edid->preferred->height <= 0)))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    examine({data, size});
    // The same with header and checksum put right, so that the fuzzer reaches what lies behind them.
    std::vector<std::uint8_t> repaired(data, data + size);
    repaired.resize(128);
    const std::uint8_t header[] = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
    std::copy(std::begin(header), std::end(header), repaired.begin());
    repaired[127] = 0;
    repaired[127] = static_cast<std::uint8_t>(0U - std::accumulate(repaired.begin(), repaired.end(), 0U));
    examine(repaired);
    return 0;
}
