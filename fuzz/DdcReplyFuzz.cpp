// SPDX-License-Identifier: MIT
// A reply may be anything. What is read from it must be there byte for byte, and make sense. Random bytes hardly
// ever have the right header and checksum, so every input is also tried as damage to a whole reply.
#include "hardware/DdcMessage.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace lumenvale;

void check(std::span<const std::uint8_t> reply)
{
    const auto reading = parseVcpReply(reply, luminanceVcpCode);
    if (reading &&
        (reply.size() != vcpReplyLength || reading->maximum == 0 || reading->current > reading->maximum ||
         reading->maximum != reply[6] * 256 + reply[7] || reading->current != reply[8] * 256 + reply[9]))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::uint8_t> input(data, size);
    check(input);
    std::array<std::uint8_t, vcpReplyLength> reply = {0x6E, 0x88, 0x02, 0x00, 0x10, 0x00,
                                                      0x00, 0x64, 0x00, 0x32, 0};
    for (std::size_t i = 0; i < std::min(size, reply.size() - 1); ++i)
        reply[i] = static_cast<std::uint8_t>(reply[i] ^ input[i]);
    for (std::size_t i = 0; i + 1 < reply.size(); ++i)
        reply.back() = static_cast<std::uint8_t>(reply.back() ^ reply[i]);
    reply.back() ^= 0x50;
    check(reply);
    if (size > reply.size()) {
        reply.back() = static_cast<std::uint8_t>(reply.back() ^ input[reply.size()]);
        check(reply);
    }
    return 0;
}
