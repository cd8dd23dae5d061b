// SPDX-License-Identifier: MIT
#include "platform/qt/QtMainThread.h"

#include <QMetaObject>

namespace lumenvale {

void QtMainThread::post(std::function<void()> call)
{
    QMetaObject::invokeMethod(&context, std::move(call), Qt::QueuedConnection);
}

} // namespace lumenvale
