// SPDX-License-Identifier: MIT
// Calls over a bus to objects of the same process, which need the event loop to answer.
#pragma once

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <memory>

namespace lumenvale {

/// Turns the loop until the call is answered.
inline QDBusMessage callOverBus(const QDBusConnection& from, const QDBusMessage& message)
{
    const QDBusPendingCallWatcher watcher(from.asyncCall(message));
    turnLoopUntil([&watcher] { return watcher.isFinished(); });
    return watcher.reply();
}

/// Null where there is no daemon.
inline std::unique_ptr<PrivateBus> tryStartBus()
{
    try {
        return std::make_unique<PrivateBus>();
    } catch (const std::runtime_error&) {
        return nullptr;
    }
}

} // namespace lumenvale
