// SPDX-License-Identifier: MIT
// The machine that the stand-ins pretend to be. A test describes it, runs the back end, and looks at what that
// did: nothing may leak, and nothing may be misused. Used by one thread at a time.
#pragma once

#include "base/PropertyList.h"

#include <CoreFoundation/CoreFoundation.h>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumenvale::standin {
/// An entry of the I/O registry.
struct Node {
    std::string name;
    PropertyDictionary properties;
    std::vector<Node> children;
    std::string bus; ///< key into `Machine::buses`: an IOAVService can be made of this entry
};
/// What a monitor does with a transfer; returns an IOReturn.
struct Bus {
    std::function<int(std::uint32_t chip, std::uint32_t address, std::vector<std::uint8_t> bytes)> write;
    std::function<int(std::uint32_t chip, std::uint32_t address, std::span<std::uint8_t> bytes)> read;
};
struct Display {
    std::uint32_t id = 0;
    bool isOnline = true, isBuiltIn = false;
    std::uint32_t vendor = 0, model = 0, serial = 0;
    std::size_t pixelWidth = 0, pixelHeight = 0; ///< 0: no current mode
    double refreshRate = 0;
    std::optional<std::string> uuid;
    std::optional<PropertyDictionary> information;
};
/// Makes calls of a function fail: it returns the code, or null or false where it returns no code.
struct Failure {
    int code = -1;
    int times = 1000000;
};
struct Machine {
    Node root{"Root", {}, {}, {}};
    std::map<std::string, Bus> buses;
    std::vector<Display> displays;                                           ///< the first is the main one
    std::map<std::string, std::map<std::string, void*>> libraries;           ///< path, then the symbols in it
    std::map<std::string, std::map<std::string, PropertyValue>> preferences; ///< domain, then key
    std::map<std::string, Failure> failures;                                 ///< by the function's name
    std::function<void(int)> walked; ///< called before each step of a registry walk with the steps made so far
};
/// A fresh machine; what the last one leaked or misused is forgotten.
Machine& reset();
Machine& machine();

/// Everything that was made and not given back, open autorelease pools included.
std::vector<std::string> leaks();
/// Everything that was used wrongly: released twice, null, of another type.
std::vector<std::string> faults();
int calls(const std::string& function);
bool isInPool(); ///< an autorelease pool is open
/// A new reference for the caller.
CFTypeRef makeObject(const PropertyValue& value);
/// The registry changes its structure: iterators end.
void invalidateIterators();
/// Runs the display callbacks.
void reconfigure(std::uint32_t display, std::uint32_t flags);

struct HotKey {
    std::uint32_t keyCode, modifiers, signature, id;
};
std::vector<HotKey> hotKeys();
/// Sends a press to the installed handlers, the newest first, until one takes it; the last one's status. With 0
/// for the id it calls them as the system never should: without an event.
OSStatus press(std::uint32_t signature, std::uint32_t id);
} // namespace lumenvale::standin
