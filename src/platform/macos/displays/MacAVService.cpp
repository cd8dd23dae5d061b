// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacAVService.h"

#include "platform/macos/foundation/MacReferences.h"

#include <utility>

namespace lumenvale {

std::shared_ptr<AVService> MacAVService::open(io_service_t entry, std::function<Hold()> holder)
{
    if (!IOAVServiceCreateWithService || !IOAVServiceReadI2C || !IOAVServiceWriteI2C)
        return nullptr;
    CFReference<IOAVServiceRef> opened(IOAVServiceCreateWithService(kCFAllocatorDefault, entry));
    return opened ? std::make_shared<MacAVService>(std::move(opened), std::move(holder)) : nullptr;
}

MacAVService::MacAVService(CFReference<IOAVServiceRef> service, std::function<Hold()> holder)
    : service(std::move(service)), holder(std::move(holder))
{
}

int MacAVService::writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                           std::span<const std::uint8_t> bytes)
{
    const AutoreleasePool pool;
    // The function only reads its buffer, whatever its signature says.
    return IOAVServiceWriteI2C(service.get(), chipAddress, dataAddress, const_cast<std::uint8_t*>(bytes.data()),
                               static_cast<std::uint32_t>(bytes.size()));
}

int MacAVService::readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes)
{
    const AutoreleasePool pool;
    return IOAVServiceReadI2C(service.get(), chipAddress, dataAddress, bytes.data(),
                              static_cast<std::uint32_t>(bytes.size()));
}

} // namespace lumenvale
