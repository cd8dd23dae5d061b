// SPDX-License-Identifier: MIT
// Stands in for the macOS header of this name; see CoreFoundation.h beside it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

using EventTargetRef = struct OpaqueEventTargetRef*;
using EventRef = struct OpaqueEventRef*;
using EventHandlerRef = struct OpaqueEventHandlerRef*;
using EventHandlerCallRef = struct OpaqueEventHandlerCallRef*;
using EventHotKeyRef = struct OpaqueEventHotKeyRef*;
using EventParamName = OSType;
using EventParamType = OSType;
using ItemCount = unsigned long;
using ByteCount = unsigned long;
using OptionBits = UInt32;
using EventHandlerUPP = OSStatus (*)(EventHandlerCallRef, EventRef, void*);

struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
enum { eventNotHandledErr = -9874, eventHotKeyExistsErr = -9878, eventHotKeyInvalidErr = -9879 };
enum { kEventClassKeyboard = 0x6B657962, kEventHotKeyPressed = 5, kEventHotKeyNoOptions = 0 };
enum { kEventParamDirectObject = 0x2D2D2D2D, typeEventHotKeyID = 0x686B6964 };
enum { cmdKey = 0x100, shiftKey = 0x200, optionKey = 0x800, controlKey = 0x1000 };

extern "C" {
EventTargetRef GetApplicationEventTarget();
OSStatus InstallEventHandler(EventTargetRef, EventHandlerUPP, ItemCount, const EventTypeSpec*, void*,
                             EventHandlerRef*);
OSStatus RemoveEventHandler(EventHandlerRef);
OSStatus RegisterEventHotKey(UInt32, UInt32, EventHotKeyID, EventTargetRef, OptionBits, EventHotKeyRef*);
OSStatus UnregisterEventHotKey(EventHotKeyRef);
OSStatus GetEventParameter(EventRef, EventParamName, EventParamType, EventParamType*, ByteCount, ByteCount*,
                           void*);
}
