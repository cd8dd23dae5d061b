// SPDX-License-Identifier: MIT
// Stands in for the macOS header of this name where there is none: only what the project calls, with its types and
// values. CallContract.cpp compares it with the real one on a Mac.
#pragma once

#include <cstddef>
#include <cstdint>

using Boolean = unsigned char;
using UInt8 = unsigned char;
using UInt32 = unsigned int;
using SInt32 = int;
using OSStatus = SInt32;
using OSType = UInt32;
using CFIndex = long;
using CFTypeID = unsigned long;
using CFTypeRef = const void*;
using CFPropertyListRef = CFTypeRef;
using CFStringEncoding = UInt32;
using CFAllocatorRef = const struct OpaqueCFAllocator*;
using CFStringRef = const struct OpaqueCFString*;
using CFBooleanRef = const struct OpaqueCFBoolean*;
using CFNumberRef = const struct OpaqueCFNumber*;
using CFDataRef = const struct OpaqueCFData*;
using CFDateRef = const struct OpaqueCFDate*;
using CFArrayRef = const struct OpaqueCFArray*;
using CFMutableArrayRef = struct OpaqueCFArray*;
using CFDictionaryRef = const struct OpaqueCFDictionary*;
using CFMutableDictionaryRef = struct OpaqueCFDictionary*;
using CFUUIDRef = const struct OpaqueCFUUID*;

enum : OSStatus { noErr = 0 };
enum CFNumberType : CFIndex { kCFNumberSInt64Type = 4, kCFNumberFloat64Type = 6 };
enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };

struct CFRange {
    CFIndex location;
    CFIndex length;
};
inline CFRange CFRangeMake(CFIndex location, CFIndex length) { return {location, length}; }

struct CFArrayCallBacks {};
struct CFDictionaryKeyCallBacks {};
struct CFDictionaryValueCallBacks {};

extern "C" {

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
extern const CFStringRef kCFPreferencesCurrentUser;
extern const CFStringRef kCFPreferencesAnyHost;

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

CFTypeID CFStringGetTypeID();
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFIndex CFStringGetLength(CFStringRef text);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef text, char* buffer, CFIndex size, CFStringEncoding encoding);

CFTypeID CFBooleanGetTypeID();
Boolean CFBooleanGetValue(CFBooleanRef boolean);
CFTypeID CFNumberGetTypeID();
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

CFTypeID CFDataGetTypeID();
CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length);
CFIndex CFDataGetLength(CFDataRef data);
void CFDataGetBytes(CFDataRef data, CFRange range, UInt8* buffer);
CFDateRef CFDateCreate(CFAllocatorRef allocator, double at);

CFTypeID CFArrayGetTypeID();
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity, const CFArrayCallBacks* calls);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
void CFArrayAppendValue(CFMutableArrayRef array, const void* value);

CFTypeID CFDictionaryGetTypeID();
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                 const CFDictionaryKeyCallBacks* keyCalls,
                                                 const CFDictionaryValueCallBacks* valueCalls);
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values);
void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key, const void* value);

CFStringRef CFUUIDCreateString(CFAllocatorRef allocator, CFUUIDRef uuid);

CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef application, CFStringRef user,
                                         CFStringRef host);
CFDictionaryRef CFPreferencesCopyMultiple(CFArrayRef keys, CFStringRef application, CFStringRef user,
                                          CFStringRef host);
void CFPreferencesSetValue(CFStringRef key, CFPropertyListRef value, CFStringRef application, CFStringRef user,
                           CFStringRef host);
Boolean CFPreferencesSynchronize(CFStringRef application, CFStringRef user, CFStringRef host);
}
