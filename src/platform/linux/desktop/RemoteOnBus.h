// SPDX-License-Identifier: MIT
// The object on the session bus through which other programs see and set the displays. The interface and its
// meaning stand in packaging/linux/app.lumenvale.Lumenvale.Displays.xml. Main thread only.
#pragma once

#include "platform/Shell.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <utility>
#include <vector>

namespace lumenvale {

class DisplaysAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.lumenvale.Lumenvale.Displays")
    // What Qt makes of the class would leave out that no signal of its own tells of the properties' changes.
    Q_CLASSINFO("D-Bus Introspection",
                "<interface name='app.lumenvale.Lumenvale.Displays'>"
                "<property name='Displays' type='s' access='read'>"
                "<annotation name='org.freedesktop.DBus.Property.EmitsChangedSignal' value='false'/>"
                "</property>"
                "<property name='Folder' type='s' access='read'>"
                "<annotation name='org.freedesktop.DBus.Property.EmitsChangedSignal' value='const'/>"
                "</property>"
                "<method name='Set'>"
                "<arg name='display' type='s' direction='in'/>"
                "<arg name='level' type='s' direction='in'/>"
                "</method>"
                "<method name='Apply'>"
                "<arg name='preset' type='s' direction='in'/>"
                "</method>"
                "<signal name='Changed'>"
                "<arg name='displays' type='s'/>"
                "</signal>"
                "</interface>")
    Q_PROPERTY(QString Displays READ displays)
    Q_PROPERTY(QString Folder READ folder)

public:
    DisplaysAdaptor(QObject* parent, const QDBusConnection& bus, const std::string& simulationFolder);

    /// Answers the calls that have come before.
    void setContent(RemoteContent newContent);

    QString displays() const;
    QString folder() const { return simulationFolder; }

    // NOLINTBEGIN(readability-identifier-naming): the interface names them
public Q_SLOTS:
    void Set(const QString& display, const QString& level, const QDBusMessage& call);
    void Apply(const QString& preset, const QDBusMessage& call);

Q_SIGNALS:
    void Changed(const QString& displays);
    // NOLINTEND(readability-identifier-naming)

private:
    using Request = std::function<tl::expected<void, std::string>()>;

    void answer(const QDBusMessage& call, const Request& request);

    RemoteContent content;
    std::vector<std::pair<QDBusMessage, Request>> waiting; ///< for content
    QDBusConnection bus;
    QString simulationFolder;
};

class RemoteOnBus final : public RemoteControl {
public:
    RemoteOnBus(const QDBusConnection& bus, const ProgramIdentity& identity);
    ~RemoteOnBus() override;

    void setContent(RemoteContent content) override;
    void displaysChanged() override;

private:
    QDBusConnection bus;
    QString path;
    QObject object;
    DisplaysAdaptor* adaptor; ///< the object's
    QString lastTold;
};

} // namespace lumenvale
