// SPDX-License-Identifier: MIT
#include "app/desktop/RemoteRequests.h"

#include "app/cli/DisplayChoice.h"
#include "app/cli/DisplayJson.h"
#include "app/cli/LevelArgument.h"

#include <utility>

namespace lumenvale {

RemoteRequests::RemoteRequests(RemoteControl& remote, DisplayStore& store, const PresetStore& presets,
                               std::function<void(const Uuid&)> applyPreset)
    : remote(remote), store(store), presets(presets), applyPreset(std::move(applyPreset))
{
    tellLater.follow(store.displays);
    tellLater.follow(store.lastRefresh);
}

void RemoteRequests::tell()
{
    if (!isOffered && store.lastRefresh.get()) {
        isOffered = true;
        remote.setContent(
            {.displays = [this] { return displaysAsJson(store.displays.get()); },
             .set = [this](const std::string& display, const std::string& level) { return set(display, level); },
             .apply = [this](const std::string& preset) { return apply(preset); }});
    }
    remote.displaysChanged();
}

tl::expected<void, std::string> RemoteRequests::set(const std::string& display, const std::string& level)
{
    const auto chosen = chooseDisplays(store.displays.get(), display);
    if (!chosen)
        return tl::unexpected(chosen.error());
    const auto wanted = parseLevel(level);
    if (!wanted)
        return tl::unexpected(notALevel(level));
    std::string refusals;
    for (const DisplayInfo& each : *chosen) {
        if (each.brightness)
            store.setBrightness(each.id, wanted->isRelative ? adjusted(each, wanted->value) : wanted->value);
        else
            refusals += (refusals.empty() ? "" : "\n") + each.name + ": " + each.status;
    }
    if (!refusals.empty())
        return tl::unexpected(refusals);
    return {};
}

tl::expected<void, std::string> RemoteRequests::apply(const std::string& preset)
{
    return choosePreset(presets.presets.get(), preset).map([this](const BrightnessPreset& chosen) {
        applyPreset(chosen.id);
    });
}

} // namespace lumenvale
