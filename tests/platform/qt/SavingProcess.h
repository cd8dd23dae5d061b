// SPDX-License-Identifier: MIT
// Another process that saves preferences: this test program, started again.
#pragma once

#include <QProcess>
#include <QStringList>
#include <optional>
#include <string>

namespace lumenvale {

/// Saves for as long as it lives: "count" becomes one more each time, and "text" the text for that count. Prints
/// a line once each pair has been saved.
std::optional<int> runSavingProcess(const QStringList& arguments);

/// The text that belongs to a count.
std::string textFor(std::int64_t count);

/// Starts a process that saves without end.
void startEndlessSaver(QProcess& process, const std::string& path);

/// Starts a process that sets the keys `prefix`1 to `prefix``count`, each with a save of its own.
void startKeySaver(QProcess& process, const std::string& path, const std::string& prefix, int count);

} // namespace lumenvale
