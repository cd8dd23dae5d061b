// SPDX-License-Identifier: MIT
// Stands in for the macOS header of this name; see CoreFoundation.h beside it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

using kern_return_t = int;
using IOReturn = kern_return_t;
using boolean_t = int;
using mach_port_t = unsigned int;
using IOOptionBits = UInt32;
using io_object_t = mach_port_t;
using io_iterator_t = io_object_t;
using io_registry_entry_t = io_object_t;
using io_service_t = io_object_t;
using io_name_t = char[128];
using io_string_t = char[512];

#define IO_OBJECT_NULL ((io_object_t)0)
#define KERN_SUCCESS 0
#define kIOReturnError ((IOReturn)0xE00002BC)
#define kIOReturnNoDevice ((IOReturn)0xE00002C0)
#define kIOReturnTimeout ((IOReturn)0xE00002D6)
#define kIOServicePlane "IOService"
enum { kIORegistryIterateRecursively = 1 };

extern "C" {
extern const mach_port_t kIOMainPortDefault;
kern_return_t IOObjectRelease(io_object_t);
io_object_t IOIteratorNext(io_iterator_t);
void IOIteratorReset(io_iterator_t);
boolean_t IOIteratorIsValid(io_iterator_t);
io_registry_entry_t IORegistryGetRootEntry(mach_port_t);
kern_return_t IORegistryEntryCreateIterator(io_registry_entry_t, const io_name_t, IOOptionBits, io_iterator_t*);
kern_return_t IORegistryEntryGetName(io_registry_entry_t, io_name_t);
kern_return_t IORegistryEntryGetPath(io_registry_entry_t, const io_name_t, io_string_t);
CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t, CFStringRef, CFAllocatorRef, IOOptionBits);
}
