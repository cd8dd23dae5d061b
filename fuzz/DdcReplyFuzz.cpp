// SPDX-License-Identifier: MIT
// A reply may be anything. What is read from it must be there byte for byte, and make sense.
#include "hardware/DdcMessage.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace lumenvale;
    const std::span<const std::uint8_t> reply(data, size);
    const auto reading = parseVcpReply(reply, luminanceVcpCode);
    if (!reading)
        return 0;
    const bool isWhole = size == vcpReplyLength && hasValidChecksum(reply) && reply[4] == luminanceVcpCode;
    const bool isSensible = reading->maximum > 0 && reading->current <= reading->maximum;
    const bool isThere =
        reading->maximum == (reply[6] << 8 | reply[7]) && reading->current == (reply[8] << 8 | reply[9]);
    if (!isWhole || !isSensible || !isThere)
        std::abort();
    return 0;
}
