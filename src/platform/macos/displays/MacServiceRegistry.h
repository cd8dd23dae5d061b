// SPDX-License-Identifier: MIT
// The I/O registry's service plane. Holds nothing between two walks; each walk belongs to the thread that makes
// it.
#pragma once

#include "hardware/ServiceRegistry.h"

#include <functional>
#include <utility>

namespace lumenvale {

class MacServiceRegistry final : public ServiceRegistry {
public:
    /// `holder` keeps other programs from any channel, see AVService::tryHold.
    explicit MacServiceRegistry(std::function<Hold()> holder = holdOfNothing) : holder(std::move(holder)) {}

    /// The registry changes while displays come and go, which ends a walk early: it is begun anew then, a few
    /// times, before the first visit.
    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override;

private:
    std::function<Hold()> holder;
};

} // namespace lumenvale
