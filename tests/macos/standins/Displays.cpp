// SPDX-License-Identifier: MIT
// Displays by number, and the libraries that are loaded at run time.
#include "Core.h"
#include "platform/macos/displays/PrivateInterfaces.h"

#include <ColorSync/ColorSync.h>
#include <CoreGraphics/CoreGraphics.h>
#include <algorithm>
#include <dlfcn.h>

using namespace lumenvale::standin;

namespace {
std::vector<std::pair<CGDisplayReconfigurationCallBack, void*>> callbacks;

const Display* findDisplay(std::uint32_t id)
{
    const auto found = std::ranges::find(machine().displays, id, &Display::id);
    return found == machine().displays.end() ? nullptr : &*found;
}
template <typename Value>
Value ofDisplay(std::uint32_t id, Value Display::*field, Value otherwise)
{
    const Display* display = findDisplay(id);
    return display ? display->*field : otherwise;
}
const Display& of(CGDisplayModeRef mode, const char* function) { return check(mode, function, modeType).display; }
using Library = std::map<std::string, void*>;
} // namespace

void lumenvale::standin::reconfigure(std::uint32_t display, std::uint32_t flags)
{
    for (const auto& [function, user] : std::vector(callbacks))
        function(display, flags, user);
}

extern "C" {
CGDirectDisplayID CGMainDisplayID() { return machine().displays.empty() ? 0 : machine().displays.front().id; }
boolean_t CGDisplayIsOnline(CGDirectDisplayID id) { return ofDisplay(id, &Display::isOnline, false); }
boolean_t CGDisplayIsBuiltin(CGDirectDisplayID id) { return ofDisplay(id, &Display::isBuiltIn, false); }
std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID id) { return ofDisplay(id, &Display::vendor, 0xFFFFFFFFU); }
std::uint32_t CGDisplayModelNumber(CGDirectDisplayID id) { return ofDisplay(id, &Display::model, 0xFFFFFFFFU); }
std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID id) { return ofDisplay(id, &Display::serial, 0U); }
CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID id)
{
    const Display* display = findDisplay(id);
    if (!display || display->pixelWidth == 0)
        return nullptr;
    Object* mode = newObject(modeType, "display mode");
    mode->display = *display;
    return as<CGDisplayModeRef>(mode);
}
std::size_t CGDisplayModeGetPixelWidth(CGDisplayModeRef mode) { return of(mode, __func__).pixelWidth; }
std::size_t CGDisplayModeGetPixelHeight(CGDisplayModeRef mode) { return of(mode, __func__).pixelHeight; }
double CGDisplayModeGetRefreshRate(CGDisplayModeRef mode) { return of(mode, __func__).refreshRate; }
CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack function, void* user)
{
    if (failing(__func__))
        return kCGErrorFailure;
    callbacks.emplace_back(function, user);
    born(user, "display callback");
    return kCGErrorSuccess;
}
CGError CGDisplayRemoveReconfigurationCallback(CGDisplayReconfigurationCallBack function, void* user)
{
    std::erase(callbacks, std::pair(function, user));
    return died(user, __func__) ? kCGErrorSuccess : kCGErrorFailure;
}
CFUUIDRef CGDisplayCreateUUIDFromDisplayID(std::uint32_t id)
{
    const Display* display = findDisplay(id);
    return display && display->uuid ? as<CFUUIDRef>(newObject(uuidType, "UUID", *display->uuid)) : nullptr;
}
CFDictionaryRef CoreDisplay_DisplayCreateInfoDictionary(std::uint32_t id)
{
    needPool(__func__);
    const Display* display = findDisplay(id);
    return display && display->information ? static_cast<CFDictionaryRef>(makeObject(*display->information))
                                           : nullptr;
}
} // extern "C"

void* standInOpen(const char* path, int)
{
    if (!machine().libraries.contains(path))
        return nullptr;
    auto* library = new Library(machine().libraries.at(path));
    born(library, std::string("library ") + path);
    return library;
}
void* standInSymbol(void* library, const char* name)
{
    const auto& symbols = *static_cast<const Library*>(library);
    return symbols.contains(name) ? symbols.at(name) : nullptr;
}
int standInClose(void* library)
{
    if (!died(library, __func__))
        return -1;
    delete static_cast<Library*>(library);
    return 0;
}
