// SPDX-License-Identifier: MIT
#include "app/DesktopRequest.h"

#include <array>
#include <nlohmann/json.hpp>

namespace lumenvale {

namespace {

using Action = DesktopRequest::Action;

constexpr std::array<std::pair<Action, const char*>, 3> actionNames = {{
    {Action::showPanel, "showPanel"},
    {Action::openSettings, "openSettings"},
    {Action::applyPreset, "applyPreset"},
}};

std::string text(const nlohmann::json& object, const char* key)
{
    const auto entry = object.find(key);
    return entry != object.end() && entry->is_string() ? entry->get<std::string>() : std::string();
}

} // namespace

std::string encodeRequest(const DesktopRequest& request)
{
    nlohmann::json object = {{"preset", request.preset}, {"activationToken", request.activationToken}};
    for (const auto& [action, name] : actionNames) {
        if (action == request.action)
            object["action"] = name;
    }
    // Arguments of a process need not be UTF-8.
    return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

std::optional<DesktopRequest> decodeRequest(std::string_view line)
{
    const auto object = nlohmann::json::parse(line, nullptr, false);
    if (!object.is_object())
        return std::nullopt;
    for (const auto& [action, name] : actionNames) {
        if (text(object, "action") == name)
            return DesktopRequest{action, text(object, "preset"), text(object, "activationToken")};
    }
    return std::nullopt;
}

} // namespace lumenvale
