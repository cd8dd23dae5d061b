// SPDX-License-Identifier: MIT
// Functions that macOS exports without a public header. Linked weakly: on a system that has lost one its address
// is null, and the program starts without it. Ask before calling.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>
#include <cstdint>

extern "C" {

// IOKit: the I2C channel of an external display on Apple Silicon. The service is a CoreFoundation object.
using IOAVServiceRef = CFTypeRef;
__attribute__((weak)) IOAVServiceRef IOAVServiceCreateWithService(CFAllocatorRef allocator, io_service_t service);
__attribute__((weak)) IOReturn IOAVServiceReadI2C(IOAVServiceRef service, std::uint32_t chipAddress,
                                                  std::uint32_t dataAddress, void* buffer, std::uint32_t size);
__attribute__((weak)) IOReturn IOAVServiceWriteI2C(IOAVServiceRef service, std::uint32_t chipAddress,
                                                   std::uint32_t dataAddress, void* buffer, std::uint32_t size);
}
