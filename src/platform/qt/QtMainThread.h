// SPDX-License-Identifier: MIT
// The main thread's queue on Qt's event loop. Make it on the main thread, after the application object.
#pragma once

#include "base/MainThread.h"

#include <QMetaObject>
#include <QObject>
#include <utility>

namespace lumenvale {

class QtMainThread final : public MainThread {
public:
    void post(std::function<void()> call) override
    {
        QMetaObject::invokeMethod(&context, std::move(call), Qt::QueuedConnection);
    }

private:
    QObject context; // lives on the main thread; its death discards what is still queued
};

} // namespace lumenvale
