// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LockHolder.h"

#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace lumenvale {

std::optional<std::string> lockHolder(const SystemPaths& paths, const std::filesystem::path& file)
{
    struct stat record = {};
    if (::stat(file.c_str(), &record) != 0)
        return std::nullopt;
    const std::string inode = ":" + std::to_string(record.st_ino);
    std::ifstream locks(paths.processes / "locks");
    for (std::string line; std::getline(locks, line);) {
        // "1: FLOCK  ADVISORY  WRITE 812 00:05:345 0 EOF": number, kind, mode, access, process, file, range
        std::istringstream fields(line);
        std::string number, kind, mode, access, process, place;
        fields >> number >> kind >> mode >> access >> process >> place;
        if (kind == "FLOCK" && place.ends_with(inode)) {
            const std::string name = readAttribute(paths.processes / process / "comm").value_or("");
            return name.empty() ? "another program" : name;
        }
    }
    return std::nullopt;
}

} // namespace lumenvale
