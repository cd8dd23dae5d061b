// SPDX-License-Identifier: MIT
#include "platform/linux/displays/ProcessRecords.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace lumenvale {

namespace {

std::string described(const SystemPaths& paths, const std::string& process)
{
    const std::string name = readAttribute(paths.processes / process / "comm").value_or("");
    return (name.empty() ? "another program" : name) + " (process " + process + ")";
}

bool isOurs(const std::string& process) { return process == std::to_string(::getpid()); }

} // namespace

std::optional<std::string> lockHolder(const SystemPaths& paths, const std::filesystem::path& file)
{
    struct stat record = {};
    if (::stat(file.c_str(), &record) != 0)
        return std::nullopt;
    std::array<char, 64> place = {};
    std::snprintf(place.data(), place.size(), "%02x:%02x:%lu", major(record.st_dev), minor(record.st_dev),
                  static_cast<unsigned long>(record.st_ino));
    std::ifstream locks(paths.processes / "locks");
    for (std::string line; std::getline(locks, line);) {
        // "1: FLOCK  ADVISORY  WRITE 812 00:05:345 0 EOF": number, kind, mode, access, process, place, range
        std::istringstream fields(line);
        std::string number, kind, mode, access, process, held;
        fields >> number >> kind >> mode >> access >> process >> held;
        if (kind == "FLOCK" && held == place.data() && !isOurs(process))
            return described(paths, process);
    }
    return std::nullopt;
}

std::optional<std::string> openHolder(const SystemPaths& paths, const std::filesystem::path& file)
{
    for (const std::string& process : entryNames(paths.processes)) {
        if (!parseNumber(process) || isOurs(process))
            continue;
        const std::filesystem::path descriptors = paths.processes / process / "fd";
        for (const std::string& each : entryNames(descriptors)) {
            if (linkTarget(descriptors / each) == file)
                return described(paths, process);
        }
    }
    return std::nullopt;
}

} // namespace lumenvale
