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
using CFArrayRef = const struct OpaqueCFArray*;
using CFMutableArrayRef = struct OpaqueCFArray*;
using CFDictionaryRef = const struct OpaqueCFDictionary*;
using CFMutableDictionaryRef = struct OpaqueCFDictionary*;
using CFUUIDRef = const struct OpaqueCFUUID*;

enum : OSStatus { noErr = 0 };
enum CFNumberType : CFIndex { kCFNumberSInt64Type = 4, kCFNumberFloat64Type = 6 };
enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };

struct CFRange {
    CFIndex location, length;
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
CFTypeRef CFRetain(CFTypeRef);
void CFRelease(CFTypeRef);
CFTypeID CFGetTypeID(CFTypeRef);
CFTypeID CFStringGetTypeID();
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8*, CFIndex, CFStringEncoding, Boolean);
CFIndex CFStringGetLength(CFStringRef);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex, CFStringEncoding);
Boolean CFStringGetCString(CFStringRef, char*, CFIndex, CFStringEncoding);
CFTypeID CFBooleanGetTypeID();
Boolean CFBooleanGetValue(CFBooleanRef);
CFTypeID CFNumberGetTypeID();
CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType, const void*);
Boolean CFNumberIsFloatType(CFNumberRef);
Boolean CFNumberGetValue(CFNumberRef, CFNumberType, void*);
CFTypeID CFDataGetTypeID();
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8*, CFIndex);
CFIndex CFDataGetLength(CFDataRef);
void CFDataGetBytes(CFDataRef, CFRange, UInt8*);
CFTypeID CFArrayGetTypeID();
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks*);
CFIndex CFArrayGetCount(CFArrayRef);
const void* CFArrayGetValueAtIndex(CFArrayRef, CFIndex);
void CFArrayAppendValue(CFMutableArrayRef, const void*);
CFTypeID CFDictionaryGetTypeID();
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex, const CFDictionaryKeyCallBacks*,
                                                 const CFDictionaryValueCallBacks*);
CFIndex CFDictionaryGetCount(CFDictionaryRef);
void CFDictionaryGetKeysAndValues(CFDictionaryRef, const void**, const void**);
void CFDictionaryAddValue(CFMutableDictionaryRef, const void*, const void*);
CFStringRef CFUUIDCreateString(CFAllocatorRef, CFUUIDRef);
CFPropertyListRef CFPreferencesCopyValue(CFStringRef, CFStringRef, CFStringRef, CFStringRef);
CFDictionaryRef CFPreferencesCopyMultiple(CFArrayRef, CFStringRef, CFStringRef, CFStringRef);
void CFPreferencesSetValue(CFStringRef, CFPropertyListRef, CFStringRef, CFStringRef, CFStringRef);
Boolean CFPreferencesSynchronize(CFStringRef, CFStringRef, CFStringRef);
}
