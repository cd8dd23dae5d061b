// SPDX-License-Identifier: MIT
// The I/O registry and the I2C channels in it. A number that named an object never names another.
#include "Core.h"
#include "platform/macos/displays/PrivateInterfaces.h"

#include <IOKit/IOKitLib.h>
#include <cstring>

using namespace lumenvale::standin;

namespace {
struct Port {
    const Node* node = nullptr; ///< null: an iterator
    std::string path;
    std::vector<Port> items; ///< of an iterator
    std::size_t next = 0;
    bool isValid = true;
};
std::map<io_object_t, Port> ports;
io_object_t lastPort = 0x1000;

const void* keyOf(io_object_t object) { return reinterpret_cast<const void*>(std::uintptr_t{object}); }

io_object_t open(Port port, const std::string& what)
{
    born(keyOf(++lastPort), what);
    ports.emplace(lastPort, std::move(port));
    return lastPort;
}
/// The port; after a fault an empty one.
Port& find(io_object_t object, const char* function, bool isIterator = false)
{
    static Port nothing;
    const auto found = ports.find(object);
    if (found != ports.end() && (found->second.node == nullptr) == isIterator)
        return found->second;
    fault(std::string(function) + ": no such object");
    static const Node unnamed;
    return nothing = {&unnamed, "", {}, 0, true};
}
void collect(const Node& node, const std::string& path, std::vector<Port>& items)
{
    for (const Node& child : node.children) {
        const std::string childPath = path + '/' + child.name;
        items.push_back({&child, childPath, {}, 0, true});
        collect(child, childPath, items);
    }
}
kern_return_t copyOut(const std::string& text, char* buffer, std::size_t size, std::optional<int> failure)
{
    std::snprintf(buffer, size, "%s", failure ? "" : text.c_str());
    return failure.value_or(KERN_SUCCESS);
}
template <typename Transfer>
IOReturn onBus(IOAVServiceRef service, const char* function, Transfer transfer)
{
    needPool(function);
    if (const auto code = failing(function))
        return *code;
    const auto bus = machine().buses.find(check(service, function, serviceType).text());
    return bus == machine().buses.end() ? kIOReturnNoDevice : transfer(bus->second);
}
} // namespace

void lumenvale::standin::invalidateIterators()
{
    for (auto& [object, port] : ports)
        port.isValid = false;
}

extern "C" {
const mach_port_t kIOMainPortDefault = 0;
kern_return_t IOObjectRelease(io_object_t object)
{
    if (died(keyOf(object), __func__))
        ports.erase(object);
    return KERN_SUCCESS;
}
io_object_t IOIteratorNext(io_iterator_t iterator)
{
    Port& port = find(iterator, __func__, true);
    if (machine().walked)
        machine().walked(static_cast<int>(port.next));
    if (!port.isValid || failing(__func__) || port.next == port.items.size())
        return IO_OBJECT_NULL;
    return open(port.items[port.next++], "registry entry");
}
void IOIteratorReset(io_iterator_t iterator)
{
    Port& port = find(iterator, __func__, true);
    port = Port();
    collect(machine().root, "IOService:", port.items);
}
boolean_t IOIteratorIsValid(io_iterator_t iterator) { return find(iterator, __func__, true).isValid; }
io_registry_entry_t IORegistryGetRootEntry(mach_port_t)
{
    return failing(__func__) ? IO_OBJECT_NULL : open({&machine().root, "", {}, 0, true}, "registry root");
}
kern_return_t IORegistryEntryCreateIterator(io_registry_entry_t entry, const io_name_t plane, IOOptionBits options,
                                            io_iterator_t* iterator)
{
    if (const auto code = failing(__func__))
        return *code;
    find(entry, __func__);
    if (std::strcmp(plane, kIOServicePlane) != 0 || options != kIORegistryIterateRecursively)
        fault("IORegistryEntryCreateIterator: not the whole service plane");
    IOIteratorReset(*iterator = open({}, "registry iterator"));
    return KERN_SUCCESS;
}
kern_return_t IORegistryEntryGetName(io_registry_entry_t entry, io_name_t name)
{
    return copyOut(find(entry, __func__).node->name, name, sizeof(io_name_t), failing(__func__));
}
kern_return_t IORegistryEntryGetPath(io_registry_entry_t entry, const io_name_t, io_string_t path)
{
    return copyOut(find(entry, __func__).path, path, sizeof(io_string_t), failing(__func__));
}
CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t entry, CFStringRef key, CFAllocatorRef,
                                          IOOptionBits options)
{
    const std::string name = check(key, __func__, stringType).text();
    const auto* value = lumenvale::find(find(entry, __func__).node->properties, name);
    return value && options == 1 && !failing(__func__) ? makeObject(*value) : nullptr;
}
IOAVServiceRef IOAVServiceCreateWithService(CFAllocatorRef, io_service_t service)
{
    needPool(__func__);
    const std::string bus = find(service, __func__).node->bus;
    return failing(__func__) || bus.empty() ? nullptr : newObject(serviceType, "IOAVService " + bus, bus);
}
IOReturn IOAVServiceReadI2C(IOAVServiceRef service, std::uint32_t chip, std::uint32_t address, void* buffer,
                            std::uint32_t size)
{
    const std::span<std::uint8_t> bytes(static_cast<std::uint8_t*>(buffer), size);
    return onBus(service, __func__, [&](const Bus& bus) { return bus.read(chip, address, bytes); });
}
IOReturn IOAVServiceWriteI2C(IOAVServiceRef service, std::uint32_t chip, std::uint32_t address, void* buffer,
                             std::uint32_t size)
{
    const auto* bytes = static_cast<const std::uint8_t*>(buffer);
    return onBus(service, __func__, [&](const Bus& bus) {
        return bus.write(chip, address, {bytes, bytes + size});
    });
}
} // extern "C"
