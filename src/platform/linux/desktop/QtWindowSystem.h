// SPDX-License-Identifier: MIT
#pragma once

#include "platform/WindowSystem.h"

#include <QObject>

namespace lumenvale {

/// The screens of the running QGuiApplication.
class QtWindowSystem final : public WindowSystem {
public:
    QtWindowSystem();

    std::vector<WindowScreen> screens() override;
    [[nodiscard]] Subscription observe(std::function<void()> changed) override;

private:
    Signal<> changes;
    QObject context; // its death ends the connections to the screens
};

} // namespace lumenvale
