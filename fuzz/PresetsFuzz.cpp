// SPDX-License-Identifier: MIT
// The stored presets may be anything. What can be read must be whole once loaded, and survive being saved.
#include "base/MemoryUserDefaults.h"
#include "base/Words.h"
#include "presets/PresetStore.h"

#include <cstdlib>
#include <set>

namespace {

using namespace lumenvale;

bool isWhole(const std::vector<BrightnessPreset>& presets)
{
    std::set<Uuid> ids;
    for (const BrightnessPreset& preset : presets) {
        if (!ids.insert(preset.id).second || displayName(preset).empty())
            return false;
        if (preset.shortcut &&
            (!keyCode(*preset.shortcut) || displayLabel(*preset.shortcut, portableWords).empty()))
            return false;
        for (const auto& [display, level] : preset.values) {
            if (!(level >= 0.0 && level <= 1.0))
                return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const PropertyData stored(data, data + size);
    const bool isReadable = decodePresets(stored).has_value();
    MemoryUserDefaults defaults;
    defaults.set("brightnessPresets", stored);
    PresetStore store(defaults);
    const std::vector<BrightnessPreset> loaded = *store.presets;
    store.save();
    const bool isKept = defaults.values.contains("brightnessPresets.unreadable");
    const bool isSame = *PresetStore(defaults).presets == loaded;
    if (!isWhole(loaded) || isKept == isReadable || !isSame || store.persistenceError->has_value())
        std::abort();
    return 0;
}
