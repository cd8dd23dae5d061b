// SPDX-License-Identifier: MIT
// A display of a preset that is not connected: its name and its level, read-only.
#pragma once

#include <QWidget>

namespace lumenvale {

class ElidedLabel;

class DisconnectedRow final : public QWidget {
public:
    DisconnectedRow();
    void show(const QString& name, const QString& level);

private:
    ElidedLabel* title;
    ElidedLabel* value;
};

} // namespace lumenvale
