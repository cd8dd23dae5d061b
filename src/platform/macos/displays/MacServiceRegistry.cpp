// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacServiceRegistry.h"

#include "platform/macos/displays/MacAVService.h"
#include "platform/macos/foundation/MacReferences.h"
#include "platform/macos/foundation/PropertyConversion.h"

#include <vector>

namespace lumenvale {

namespace {

/// A registry that is still changing after this many walks is taken as the last one found it.
constexpr int walkAttempts = 5;
constexpr IOOptionBits propertyOptions = 1;

class MacRegistryEntry final : public RegistryEntry {
public:
    MacRegistryEntry(io_registry_entry_t borrowed, const std::function<Hold()>& holder)
        : entry(borrowed), holder(holder)
    {
    }

    std::string name() const override
    {
        io_name_t text = {};
        return IORegistryEntryGetName(entry, text) == KERN_SUCCESS ? text : "";
    }

    std::optional<PropertyValue> property(const std::string& key) const override
    {
        const auto name = toCFString(key);
        if (!name)
            return std::nullopt;
        const CFReference<CFTypeRef> value(
            IORegistryEntryCreateCFProperty(entry, name.get(), kCFAllocatorDefault, propertyOptions));
        return toPropertyValue(value.get());
    }

    std::string path() const override
    {
        io_string_t text = {};
        return IORegistryEntryGetPath(entry, kIOServicePlane, text) == KERN_SUCCESS ? text : "";
    }

    std::shared_ptr<AVService> createAVService() const override { return MacAVService::open(entry, holder); }

private:
    io_registry_entry_t entry;
    const std::function<Hold()>& holder;
};

/// Null when the walk cannot begin.
IOReference beginWalk()
{
    const IOReference root(IORegistryGetRootEntry(kIOMainPortDefault));
    io_iterator_t iterator = IO_OBJECT_NULL;
    if (!root || IORegistryEntryCreateIterator(root.get(), kIOServicePlane, kIORegistryIterateRecursively,
                                               &iterator) != KERN_SUCCESS)
        return IOReference();
    return IOReference(iterator);
}

std::vector<IOReference> walk(io_iterator_t iterator)
{
    std::vector<IOReference> entries;
    for (int attempt = 1;; ++attempt) {
        while (IOReference entry{IOIteratorNext(iterator)})
            entries.push_back(std::move(entry));
        if (IOIteratorIsValid(iterator) || attempt == walkAttempts)
            return entries;
        entries.clear();
        IOIteratorReset(iterator);
    }
}

} // namespace

void MacServiceRegistry::forEachEntry(const std::function<void(const RegistryEntry&)>& visit)
{
    const AutoreleasePool pool;
    const IOReference iterator = beginWalk();
    if (!iterator)
        return;
    for (const IOReference& entry : walk(iterator.get()))
        visit(MacRegistryEntry(entry.get(), holder));
}

} // namespace lumenvale
