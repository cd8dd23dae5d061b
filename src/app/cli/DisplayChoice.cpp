// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"

#include <QString>
#include <array>

namespace lumenvale {

namespace {

/// How closely a name fits; a closer fit leaves the others out.
enum class Fit { exact, ignoringCase, start, none };

Fit fitOf(const std::string& name, const std::string& text)
{
    if (name == text)
        return Fit::exact;
    const QString folded = QString::fromStdString(name).toCaseFolded();
    const QString wanted = QString::fromStdString(text).toCaseFolded();
    if (folded == wanted)
        return Fit::ignoringCase;
    return !wanted.isEmpty() && folded.startsWith(wanted) ? Fit::start : Fit::none;
}

std::string listed(const std::vector<Candidate>& candidates, const std::vector<std::size_t>& positions)
{
    std::string text;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const Candidate& each = candidates[positions[i]];
        if (i > 0)
            text += i + 1 == positions.size() ? " or " : ", ";
        text += each.name + " (" + each.id + ')';
    }
    return text;
}

} // namespace

tl::expected<std::size_t, std::string> chooseByName(const std::vector<Candidate>& candidates,
                                                    const std::string& text, const std::string& kind)
{
    std::array<std::vector<std::size_t>, 4> fits;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const Fit fit = std::min(fitOf(candidates[i].id, text), fitOf(candidates[i].name, text));
        fits[static_cast<std::size_t>(fit)].push_back(i);
    }
    for (const Fit fit : {Fit::exact, Fit::ignoringCase, Fit::start}) {
        const auto& found = fits[static_cast<std::size_t>(fit)];
        if (found.size() == 1)
            return found.front();
        if (found.size() > 1)
            return tl::unexpected('"' + text + "\" could be " + listed(candidates, found) + '.');
    }
    return tl::unexpected("There is no " + kind + " \"" + text + "\".");
}

tl::expected<std::vector<DisplayInfo>, std::string> chooseDisplays(std::vector<DisplayInfo> displays,
                                                                   const std::string& text)
{
    if (text == allDisplays && displays.empty())
        return tl::unexpected(std::string("There is no display."));
    if (text == allDisplays)
        return displays;
    std::vector<Candidate> candidates;
    candidates.reserve(displays.size());
    for (const DisplayInfo& each : displays)
        candidates.push_back({each.id, each.name});
    return chooseByName(candidates, text, "display").map([&](std::size_t position) {
        return std::vector<DisplayInfo>{std::move(displays[position])};
    });
}

tl::expected<BrightnessPreset, std::string> choosePreset(const std::vector<BrightnessPreset>& presets,
                                                         const std::string& text)
{
    std::vector<Candidate> candidates;
    candidates.reserve(presets.size());
    for (const BrightnessPreset& each : presets)
        candidates.push_back({each.id.toString(), displayName(each)});
    return chooseByName(candidates, text, "preset").map([&](std::size_t position) { return presets[position]; });
}

} // namespace lumenvale
