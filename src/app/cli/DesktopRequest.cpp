// SPDX-License-Identifier: MIT
#include "app/cli/DesktopRequest.h"

#include "base/Json.h"

#include <array>

namespace lumenvale {

namespace {

using Action = DesktopRequest::Action;

constexpr std::array<std::pair<Action, const char*>, 4> actionNames = {{
    {Action::showPanel, "showPanel"},
    {Action::openSettings, "openSettings"},
    {Action::applyPreset, "applyPreset"},
    {Action::startQuietly, "startQuietly"},
}};

std::string text(const Json& object, const char* key)
{
    const auto entry = object.find(key);
    return entry != object.end() && entry->is_string() ? entry->get<std::string>() : std::string();
}

} // namespace

std::string encodeRequest(const DesktopRequest& request)
{
    OrderedJson object = {{"preset", request.preset}, {"activationToken", request.activationToken}};
    for (const auto& [action, name] : actionNames) {
        if (action == request.action)
            object["action"] = name;
    }
    // Arguments of a process need not be UTF-8.
    return writeJson(object);
}

std::optional<DesktopRequest> decodeRequest(std::string_view line)
{
    const auto object = parseJson(line);
    if (!object || !object->is_object())
        return std::nullopt;
    for (const auto& [action, name] : actionNames) {
        if (text(*object, "action") == name)
            return DesktopRequest{action, text(*object, "preset"), text(*object, "activationToken")};
    }
    return std::nullopt;
}

} // namespace lumenvale
