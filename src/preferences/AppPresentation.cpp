// SPDX-License-Identifier: MIT
#include "preferences/AppPresentation.h"

namespace lumenvale {

std::string_view rawValue(AppPresentation presentation)
{
    switch (presentation) {
    case AppPresentation::menuBar:
        return "menuBar";
    case AppPresentation::dock:
        return "dock";
    case AppPresentation::both:
        return "both";
    }
    return {};
}

std::optional<AppPresentation> appPresentationFromRawValue(std::string_view text)
{
    for (const AppPresentation each : allPresentations) {
        if (rawValue(each) == text)
            return each;
    }
    return std::nullopt;
}

} // namespace lumenvale
