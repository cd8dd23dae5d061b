// SPDX-License-Identifier: MIT
// What other programs of the user are told of the displays and may ask for. Main thread only.
#pragma once

#include "displays/DisplayStore.h"
#include "platform/Shell.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"

#include <functional>

namespace lumenvale {

/// Offers itself when the displays are known: a call may be what started the program.
class RemoteRequests {
public:
    /// The references must outlive it.
    RemoteRequests(RemoteControl& remote, DisplayStore& store, const PresetStore& presets,
                   std::function<void(const Uuid&)> applyPreset);
    RemoteRequests(const RemoteRequests&) = delete;
    RemoteRequests& operator=(const RemoteRequests&) = delete;
    ~RemoteRequests() { remote.setContent({}); }

private:
    void tell();
    tl::expected<void, std::string> set(const std::string& display, const std::string& level);
    tl::expected<void, std::string> apply(const std::string& preset);

    RemoteControl& remote;
    DisplayStore& store;
    const PresetStore& presets;
    std::function<void(const Uuid&)> applyPreset;
    bool isOffered = false;
    LaterCall tellLater{[this] { tell(); }};
};

} // namespace lumenvale
