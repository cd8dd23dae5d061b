// SPDX-License-Identifier: MIT
// The I/O registry's service plane. Holds nothing between two walks; each walk belongs to the thread that makes
// it.
#pragma once

#include "hardware/ServiceRegistry.h"

namespace lumenvale {

class MacServiceRegistry final : public ServiceRegistry {
public:
    /// The registry changes while displays come and go, which ends a walk early: it is begun anew then, a few
    /// times, before the first visit.
    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override;
};

} // namespace lumenvale
