// SPDX-License-Identifier: MIT
#include "app/cli/LevelArgument.h"

#include <locale>
#include <sstream>
#include <string>

namespace lumenvale {

namespace {

bool isDigit(char each) { return each >= '0' && each <= '9'; }

/// Digits, then perhaps a point and more digits.
std::optional<double> parseDecimal(std::string_view text)
{
    std::size_t position = 0;
    const auto skipDigits = [&] {
        const std::size_t first = position;
        while (position < text.size() && isDigit(text[position]))
            ++position;
        return position > first;
    };
    if (!skipDigits())
        return std::nullopt;
    if (position < text.size() && (text[position++] != '.' || !skipDigits() || position != text.size()))
        return std::nullopt;
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double value = 0.0;
    stream >> value;
    return stream.fail() ? std::nullopt : std::optional(value);
}

} // namespace

std::optional<LevelArgument> parseLevel(std::string_view text)
{
    const bool isNegative = text.starts_with('-');
    const bool isRelative = isNegative || text.starts_with('+');
    if (isRelative)
        text.remove_prefix(1);
    const bool isPercentage = text.ends_with('%');
    if (isPercentage)
        text.remove_suffix(1);
    if (isRelative && !isPercentage)
        return std::nullopt;
    const std::optional<double> number = parseDecimal(text);
    if (!number || *number > (isPercentage ? 100.0 : 1.0))
        return std::nullopt;
    const double fraction = isPercentage ? *number / 100.0 : *number;
    return LevelArgument{isRelative, isNegative ? -fraction : fraction};
}

std::string notALevel(const std::string& text)
{
    return '"' + text + "\" is not a brightness. LEVEL is 42%, 0.42, +5% or -5%.";
}

} // namespace lumenvale
