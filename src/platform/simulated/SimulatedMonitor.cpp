// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedMonitor.h"

#include "platform/posix/FileLock.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <fcntl.h>

namespace lumenvale {

namespace {

/// A description is about one kilobyte; what is larger is something else.
constexpr qint64 largestFile = 64 * qint64{1024};

tl::expected<std::string, std::string> readText(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    const std::string name = QFileInfo(file).fileName().toStdString();
    if (!file.open(QIODevice::ReadOnly))
        return tl::unexpected(name + " could not be read: " + file.errorString().toStdString() + ".");
    const QByteArray text = file.read(largestFile + 1);
    if (text.size() > largestFile)
        return tl::unexpected(name + " is too large for the description of a monitor.");
    return text.toStdString();
}

bool replaceText(const std::string& path, const std::string& text)
{
    QSaveFile file(QString::fromStdString(path));
    return file.open(QIODevice::WriteOnly) && file.write(text.data(), static_cast<qint64>(text.size())) >= 0 &&
           file.commit();
}

template <typename Control, typename Value>
bool change(const std::string& path, std::optional<Control> MonitorFile::*section, Value value,
            std::string (*changed)(const std::string&, Value))
{
    const auto text = readText(path);
    if (!text)
        return false;
    const auto monitor = parseMonitorFile(*text, path);
    return monitor && *monitor.*section && replaceText(path, changed(*text, value));
}

} // namespace

tl::expected<MonitorFile, std::string> SimulatedMonitor::read() const
{
    const auto text = readText(path);
    if (!text)
        return tl::unexpected(text.error());
    return parseMonitorFile(*text, QFileInfo(QString::fromStdString(path)).fileName().toStdString());
}

bool SimulatedMonitor::setNativeBrightness(double brightness) const
{
    return change(path, &MonitorFile::native, brightness, &withNativeBrightness);
}

bool SimulatedMonitor::setDdcCurrent(std::uint16_t current) const
{
    return change(path, &MonitorFile::ddc, current, &withDdcCurrent);
}

bool SimulatedMonitor::setFailNextTransfers(std::uint32_t count) const
{
    return change(path, &MonitorFile::ddc, count, &withFailNextTransfers);
}

Hold SimulatedMonitor::tryHold() const
{
    const QFileInfo file(QString::fromStdString(path));
    const QString lock = file.path() + QStringLiteral("/.") + file.fileName() + QStringLiteral(".lock");
    return tryHoldFile(lock.toStdString(), O_CREAT);
}

} // namespace lumenvale
