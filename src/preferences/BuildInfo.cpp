// SPDX-License-Identifier: MIT
#include "preferences/BuildInfo.h"

#include "base/Json.h"

#include <string_view>

namespace lumenvale {

namespace {

using namespace std::chrono_literals;

constexpr auto labelAge = 7 * 24h; // a label is for those who try out a fresh build

/// Reads `count` decimal digits off the front of `text`; -1 when they are not there.
int takeNumber(std::string_view& text, std::size_t count)
{
    if (text.size() < count)
        return -1;
    int number = 0;
    for (const char digit : text.substr(0, count)) {
        if (digit < '0' || digit > '9')
            return -1;
        number = number * 10 + (digit - '0');
    }
    text.remove_prefix(count);
    return number;
}

bool takeCharacter(std::string_view& text, char expected)
{
    if (text.empty() || text.front() != expected)
        return false;
    text.remove_prefix(1);
    return true;
}

/// Reads `separator` and a two-digit number below `limit`; -1 when they are not there.
int takeField(std::string_view& text, char separator, int limit)
{
    if (!takeCharacter(text, separator))
        return -1;
    const int number = takeNumber(text, 2);
    return number < limit ? number : -1;
}

/// Reads "Z" or "+hh:mm" to the end of `text`: how far local time is ahead of UTC.
std::optional<std::chrono::minutes> takeZone(std::string_view text)
{
    if (text == "Z")
        return 0min;
    const int sign = text.starts_with('-') ? -1 : 1;
    const int hours = takeField(text, sign < 0 ? '-' : '+', 24);
    const int minutes = takeField(text, ':', 60);
    if (hours < 0 || minutes < 0 || !text.empty())
        return std::nullopt;
    return sign * (std::chrono::hours(hours) + std::chrono::minutes(minutes));
}

std::optional<std::string> builtAtText(const std::string& metadata)
{
    const auto stamp = parseJson(metadata);
    if (!stamp || !stamp->is_object())
        return std::nullopt;
    const auto entry = stamp->find("builtAt");
    if (entry == stamp->end() || !entry->is_string())
        return std::nullopt;
    return entry->get<std::string>();
}

} // namespace

std::optional<BuildInfo::Time> parseIsoTime(const std::string& text)
{
    std::string_view rest = text;
    const int year = takeNumber(rest, 4);
    const int month = takeField(rest, '-', 13);
    const int day = takeField(rest, '-', 32);
    const int hour = takeField(rest, 'T', 24);
    const int minute = takeField(rest, ':', 60);
    const int second = takeField(rest, ':', 60);
    const std::optional<std::chrono::minutes> zone = takeZone(rest);
    if (year < 0 || month < 0 || day < 0 || hour < 0 || minute < 0 || second < 0 || !zone)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok())
        return std::nullopt;
    const std::chrono::sys_seconds time = std::chrono::sys_days(date) + std::chrono::hours(hour) +
                                          std::chrono::minutes(minute) + std::chrono::seconds(second) - *zone;
    // A clock that counts nanoseconds ends in 2262. Compared in seconds, which cannot overflow.
    if (time < std::chrono::ceil<std::chrono::seconds>(BuildInfo::Time::min()) ||
        time > std::chrono::floor<std::chrono::seconds>(BuildInfo::Time::max()))
        return std::nullopt;
    return BuildInfo::Time(time);
}

BuildInfo readBuildInfo(const BuildResources& resources)
{
    BuildInfo info;
    info.version = resources.version.value_or("Unknown");
    info.number = resources.number.value_or("Unknown");
    const auto builtAt = resources.metadata ? builtAtText(*resources.metadata) : std::nullopt;
    info.builtAt = builtAt ? parseIsoTime(*builtAt) : std::nullopt;
    return info;
}

std::optional<std::string> buildLabel(const BuildInfo& info, BuildInfo::Time now,
                                      const std::function<std::string(BuildInfo::Time)>& format)
{
    if (!info.builtAt || now < *info.builtAt || now - labelAge >= *info.builtAt)
        return std::nullopt;
    return "Built " + format(*info.builtAt);
}

} // namespace lumenvale
