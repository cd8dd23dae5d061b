// SPDX-License-Identifier: MIT
#include "SavingProcess.h"

#include "platform/qt/IniUserDefaults.h"
#include "support/ManualClock.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>

namespace lumenvale {

namespace {

void saveForever(const std::string& path)
{
    ManualClock clock;
    IniUserDefaults defaults(path, "", clock);
    bool failed = false;
    const auto subscription = defaults.observeFailures([&](const std::string&) { failed = true; });
    for (std::int64_t count = readDefault<std::int64_t>(defaults, "count").value_or(0) + 1;; ++count) {
        defaults.set("count", count);
        defaults.set("text", textFor(count));
        defaults.flush();
        if (failed)
            std::abort();
        std::puts("saved");
        std::fflush(stdout);
    }
}

void saveKeys(const std::string& path, const std::string& prefix, int count)
{
    ManualClock clock;
    IniUserDefaults defaults(path, "", clock);
    for (int i = 1; i <= count; ++i) {
        defaults.set(prefix + std::to_string(i), i);
        defaults.flush();
    }
}

} // namespace

std::optional<int> runSavingProcess(const QStringList& arguments)
{
    if (arguments.size() == 3 && arguments[1] == "--save-forever")
        saveForever(arguments[2].toStdString());
    if (arguments.size() == 5 && arguments[1] == "--save-keys") {
        saveKeys(arguments[2].toStdString(), arguments[3].toStdString(), arguments[4].toInt());
        return 0;
    }
    return std::nullopt;
}

std::string textFor(std::int64_t count)
{
    return std::to_string(count) + std::string(20'000, static_cast<char>('a' + count % 26));
}

void startEndlessSaver(QProcess& process, const std::string& path)
{
    process.start(QCoreApplication::applicationFilePath(), {"--save-forever", QString::fromStdString(path)});
}

void startKeySaver(QProcess& process, const std::string& path, const std::string& prefix, int count)
{
    process.start(
        QCoreApplication::applicationFilePath(),
        {"--save-keys", QString::fromStdString(path), QString::fromStdString(prefix), QString::number(count)});
}

} // namespace lumenvale
