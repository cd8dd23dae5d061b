// SPDX-License-Identifier: MIT
// Every function and constant of the system's C interfaces that this folder uses, as it understands them. Part of
// every build: on a Mac the compiler compares this with the real headers, in the tests elsewhere with the
// stand-ins.
#include "platform/macos/displays/PrivateInterfaces.h"
#include "platform/macos/foundation/MacReferences.h"
#include "presets/PresetShortcut.h"

#include <Carbon/Carbon.h>
#include <ColorSync/ColorSync.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dlfcn.h>
#include <type_traits>

namespace lumenvale {

namespace {

#define SIGNATURE(function, ...) static_assert(std::is_same_v<decltype(&function), __VA_ARGS__>, #function)

SIGNATURE(CFRetain, CFTypeRef (*)(CFTypeRef));
SIGNATURE(CFRelease, void (*)(CFTypeRef));
SIGNATURE(CFGetTypeID, CFTypeID (*)(CFTypeRef));
SIGNATURE(CFStringGetTypeID, CFTypeID (*)());
SIGNATURE(CFBooleanGetTypeID, CFTypeID (*)());
SIGNATURE(CFNumberGetTypeID, CFTypeID (*)());
SIGNATURE(CFDataGetTypeID, CFTypeID (*)());
SIGNATURE(CFArrayGetTypeID, CFTypeID (*)());
SIGNATURE(CFDictionaryGetTypeID, CFTypeID (*)());
SIGNATURE(CFStringCreateWithBytes,
          CFStringRef (*)(CFAllocatorRef, const UInt8*, CFIndex, CFStringEncoding, Boolean));
SIGNATURE(CFStringGetLength, CFIndex (*)(CFStringRef));
SIGNATURE(CFStringGetMaximumSizeForEncoding, CFIndex (*)(CFIndex, CFStringEncoding));
SIGNATURE(CFStringGetCString, Boolean (*)(CFStringRef, char*, CFIndex, CFStringEncoding));
SIGNATURE(CFBooleanGetValue, Boolean (*)(CFBooleanRef));
SIGNATURE(CFNumberCreate, CFNumberRef (*)(CFAllocatorRef, CFNumberType, const void*));
SIGNATURE(CFNumberIsFloatType, Boolean (*)(CFNumberRef));
SIGNATURE(CFNumberGetValue, Boolean (*)(CFNumberRef, CFNumberType, void*));
SIGNATURE(CFDataCreate, CFDataRef (*)(CFAllocatorRef, const UInt8*, CFIndex));
SIGNATURE(CFDataGetLength, CFIndex (*)(CFDataRef));
SIGNATURE(CFDataGetBytes, void (*)(CFDataRef, CFRange, UInt8*));
SIGNATURE(CFArrayCreateMutable, CFMutableArrayRef (*)(CFAllocatorRef, CFIndex, const CFArrayCallBacks*));
SIGNATURE(CFArrayGetCount, CFIndex (*)(CFArrayRef));
SIGNATURE(CFArrayGetValueAtIndex, const void* (*)(CFArrayRef, CFIndex));
SIGNATURE(CFArrayAppendValue, void (*)(CFMutableArrayRef, const void*));
SIGNATURE(CFDictionaryCreateMutable,
          CFMutableDictionaryRef (*)(CFAllocatorRef, CFIndex, const CFDictionaryKeyCallBacks*,
                                     const CFDictionaryValueCallBacks*));
SIGNATURE(CFDictionaryGetCount, CFIndex (*)(CFDictionaryRef));
SIGNATURE(CFDictionaryGetKeysAndValues, void (*)(CFDictionaryRef, const void**, const void**));
SIGNATURE(CFDictionaryAddValue, void (*)(CFMutableDictionaryRef, const void*, const void*));
SIGNATURE(CFUUIDCreateString, CFStringRef (*)(CFAllocatorRef, CFUUIDRef));
SIGNATURE(CFPreferencesCopyValue, CFPropertyListRef (*)(CFStringRef, CFStringRef, CFStringRef, CFStringRef));
SIGNATURE(CFPreferencesCopyMultiple, CFDictionaryRef (*)(CFArrayRef, CFStringRef, CFStringRef, CFStringRef));
SIGNATURE(CFPreferencesSetValue, void (*)(CFStringRef, CFPropertyListRef, CFStringRef, CFStringRef, CFStringRef));
SIGNATURE(CFPreferencesSynchronize, Boolean (*)(CFStringRef, CFStringRef, CFStringRef));
static_assert(kCFStringEncodingUTF8 == 0x08000100 && kCFNumberSInt64Type == 4 && kCFNumberFloat64Type == 6);
SIGNATURE(kCFAllocatorDefault, const CFAllocatorRef*);
SIGNATURE(kCFBooleanTrue, const CFBooleanRef*);
SIGNATURE(kCFBooleanFalse, const CFBooleanRef*);
SIGNATURE(kCFPreferencesCurrentUser, const CFStringRef*);
SIGNATURE(kCFPreferencesAnyHost, const CFStringRef*);
SIGNATURE(kCFTypeArrayCallBacks, const CFArrayCallBacks*);
SIGNATURE(kCFTypeDictionaryKeyCallBacks, const CFDictionaryKeyCallBacks*);
SIGNATURE(kCFTypeDictionaryValueCallBacks, const CFDictionaryValueCallBacks*);
static_assert(std::is_same_v<decltype(CFRangeMake(0, 0)), CFRange> && sizeof(CFRange) == 2 * sizeof(CFIndex));
static_assert(sizeof(CFIndex) == 8 && sizeof(Boolean) == 1);

SIGNATURE(IORegistryGetRootEntry, io_registry_entry_t (*)(mach_port_t));
SIGNATURE(IORegistryEntryCreateIterator,
          kern_return_t (*)(io_registry_entry_t, const char*, IOOptionBits, io_iterator_t*));
SIGNATURE(IOIteratorNext, io_object_t (*)(io_iterator_t));
SIGNATURE(IOIteratorReset, void (*)(io_iterator_t));
SIGNATURE(IOIteratorIsValid, boolean_t (*)(io_iterator_t));
SIGNATURE(IOObjectRelease, kern_return_t (*)(io_object_t));
SIGNATURE(IORegistryEntryGetName, kern_return_t (*)(io_registry_entry_t, char*));
SIGNATURE(IORegistryEntryGetPath, kern_return_t (*)(io_registry_entry_t, const char*, char*));
SIGNATURE(IORegistryEntryCreateCFProperty,
          CFTypeRef (*)(io_registry_entry_t, CFStringRef, CFAllocatorRef, IOOptionBits));
static_assert(sizeof(io_name_t) == 128 && sizeof(io_string_t) == 512 && sizeof(io_object_t) == 4);
static_assert(kIORegistryIterateRecursively == 1 && KERN_SUCCESS == 0 && IO_OBJECT_NULL == 0);
SIGNATURE(kIOMainPortDefault, const mach_port_t*);
static_assert(sizeof(kIOServicePlane) == sizeof("IOService"));

SIGNATURE(CGMainDisplayID, CGDirectDisplayID (*)());
SIGNATURE(CGDisplayIsOnline, boolean_t (*)(CGDirectDisplayID));
SIGNATURE(CGDisplayIsAsleep, boolean_t (*)(CGDirectDisplayID));
SIGNATURE(CGDisplayIsBuiltin, boolean_t (*)(CGDirectDisplayID));
SIGNATURE(CGDisplayVendorNumber, std::uint32_t (*)(CGDirectDisplayID));
SIGNATURE(CGDisplayModelNumber, std::uint32_t (*)(CGDirectDisplayID));
SIGNATURE(CGDisplaySerialNumber, std::uint32_t (*)(CGDirectDisplayID));
SIGNATURE(CGDisplayCopyDisplayMode, CGDisplayModeRef (*)(CGDirectDisplayID));
SIGNATURE(CGDisplayModeGetPixelWidth, std::size_t (*)(CGDisplayModeRef));
SIGNATURE(CGDisplayModeGetPixelHeight, std::size_t (*)(CGDisplayModeRef));
SIGNATURE(CGDisplayModeGetRefreshRate, double (*)(CGDisplayModeRef));
SIGNATURE(CGDisplayRegisterReconfigurationCallback, CGError (*)(CGDisplayReconfigurationCallBack, void*));
SIGNATURE(CGDisplayRemoveReconfigurationCallback, CGError (*)(CGDisplayReconfigurationCallBack, void*));
SIGNATURE(CGDisplayCreateUUIDFromDisplayID, CFUUIDRef (*)(std::uint32_t));
static_assert(std::is_same_v<CGDirectDisplayID, std::uint32_t> && kCGErrorSuccess == 0);
static_assert(std::is_same_v<CGDisplayReconfigurationCallBack,
                             void (*)(CGDirectDisplayID, CGDisplayChangeSummaryFlags, void*)>);
static_assert(kCGDisplayBeginConfigurationFlag == 1);

SIGNATURE(GetApplicationEventTarget, EventTargetRef (*)());
SIGNATURE(InstallEventHandler,
          OSStatus (*)(EventTargetRef, EventHandlerUPP, ItemCount, const EventTypeSpec*, void*, EventHandlerRef*));
SIGNATURE(RemoveEventHandler, OSStatus (*)(EventHandlerRef));
SIGNATURE(RegisterEventHotKey,
          OSStatus (*)(UInt32, UInt32, EventHotKeyID, EventTargetRef, OptionBits, EventHotKeyRef*));
SIGNATURE(UnregisterEventHotKey, OSStatus (*)(EventHotKeyRef));
SIGNATURE(GetEventParameter,
          OSStatus (*)(EventRef, EventParamName, EventParamType, EventParamType*, ByteCount, ByteCount*, void*));
static_assert(std::is_same_v<EventHandlerUPP, OSStatus (*)(EventHandlerCallRef, EventRef, void*)>);
static_assert(sizeof(EventHotKeyID) == 8 && sizeof(OSStatus) == sizeof(std::int32_t));
static_assert(kEventClassKeyboard == 0x6B657962 && kEventHotKeyPressed == 5 && kEventHotKeyNoOptions == 0);
static_assert(kEventParamDirectObject == 0x2D2D2D2D && typeEventHotKeyID == 0x686B6964 && noErr == 0);
static_assert(eventNotHandledErr == -9874);
static_assert(cmdKey == HotKeyModifier::command && shiftKey == HotKeyModifier::shift);
static_assert(optionKey == HotKeyModifier::option && controlKey == HotKeyModifier::control);

SIGNATURE(dlopen, void* (*)(const char*, int));
SIGNATURE(dlsym, void* (*)(void*, const char*));
SIGNATURE(dlclose, int (*)(void*));
static_assert(RTLD_LAZY == 1);

#undef SIGNATURE

} // namespace

} // namespace lumenvale
