// SPDX-License-Identifier: MIT
// What went wrong when a display was last spoken to: the hardware thread notes it, and those who explain it to the
// user ask for it. Any thread.
#pragma once

#include "hardware/AVService.h"
#include "hardware/DdcMessage.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace lumenvale {

struct DisplayTrouble {
    enum class Kind {
        silent,         ///< the transfer failed
        busy,           ///< another program kept the channel
        unclear,        ///< something came that is no reply
        withoutValue,   ///< the monitor says that it has no brightness, or has nothing to say to that question
        implausible,    ///< a reply whose maximum is 0, or whose value exceeds it
        refusedWrite,   ///< the panel's file could not be written
        refusedService, ///< the file is not ours to write, and the login service did not either
    };

    Kind kind = Kind::silent;
    int error = 0;           ///< the system's number; 0 where there was none
    VcpReading numbers = {}; ///< of an implausible reply
};

class DisplayTroubles {
public:
    void note(std::uint32_t displayID, const DisplayTrouble& trouble);
    void clear(std::uint32_t displayID);
    /// None when the last attempt went well, or there was none.
    std::optional<DisplayTrouble> of(std::uint32_t displayID) const;

private:
    mutable std::mutex mutex;
    std::map<std::uint32_t, DisplayTrouble> noted;
};

/// The display's channel, which notes in `troubles` how each exchange with the monitor went.
std::shared_ptr<AVService> notingTroubles(std::shared_ptr<AVService> channel, std::uint32_t displayID,
                                          std::shared_ptr<DisplayTroubles> troubles);

} // namespace lumenvale
