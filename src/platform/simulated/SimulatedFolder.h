// SPDX-License-Identifier: MIT
// The simulated monitors of a folder: every *.json file in it but preferences.json, in name order, is one
// connected display. Each thread has an object of its own.
#pragma once

#include "platform/simulated/SimulatedMonitor.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

struct SimulatedDisplay {
    std::string fileName;
    std::uint32_t displayID = 0; ///< the file's, or made from its name
    MonitorFile monitor;
    SimulatedMonitor file;
};

struct FolderContents {
    std::vector<SimulatedDisplay> displays;
    std::vector<std::string> problems; ///< files that are no display, in whole sentences
};

class SimulatedFolder {
public:
    explicit SimulatedFolder(std::string folder) : folder(std::move(folder)) {}

    const std::string& path() const { return folder; }

    /// The files that describe displays, in name order.
    std::vector<std::string> list() const;

    /// Reads all files. Of two with the same number or UUID, the second is a problem.
    FolderContents read();

    /// The display with this number, as its file is now. Reads one file, except when files came or went.
    std::optional<SimulatedDisplay> find(std::uint32_t displayID);

private:
    std::string folder;
    std::map<std::uint32_t, std::string> fileNames; // by display number, as last read
};

} // namespace lumenvale
