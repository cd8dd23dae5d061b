// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalHotKeys.h"

#include "platform/linux/portal/PortalTrigger.h"
#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <vector>

namespace lumenvale {
namespace {

constexpr std::uint32_t keyF5 = 96;
constexpr std::uint32_t keyK = 0x28;
const QString service = "org.freedesktop.portal.Desktop";
const QString desktopPath = "/org/freedesktop/portal/desktop";

/// The desktop's side of the portal, as far as shortcuts need it.
class FakePortal final : public QDBusVirtualObject {
public:
    /// Returns once `client` has heard that the portal is there.
    FakePortal(const QDBusConnection& connection, const QDBusConnection& client) : bus(connection)
    {
        bool announced = false;
        const QDBusServiceWatcher watcher(service, client, QDBusServiceWatcher::WatchForRegistration);
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &watcher, [&] { announced = true; });
        bus.registerVirtualObject(desktopPath, this, QDBusConnection::SubPath);
        bus.registerService(service);
        EXPECT_TRUE(turnLoopUntil([&] { return announced; }));
    }
    ~FakePortal() override
    {
        bus.unregisterService(service);
        bus.unregisterObject(desktopPath);
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override
    {
        calls.push_back(message.member().toStdString());
        if (message.member() == "Register") {
            applicationID = message.arguments().at(0).toString().toStdString();
            bus.send(message.createReply());
        } else if (message.member() == "CreateSession") {
            session = desktopPath + QString("/session/%1").arg(++sessions);
            answer(message, 0, {{"session_handle", session}});
        } else if (message.member() == "BindShortcuts") {
            bind(message);
        } else {
            bus.send(message.createReply());
        }
        return true;
    }

    void press(const QString& name)
    {
        QDBusMessage signal = shortcutSignal("Activated");
        signal << QVariant::fromValue(QDBusObjectPath(session)) << name << qulonglong(1) << QVariantMap();
        bus.send(signal);
    }

    /// The user takes the key from all shortcuts but those of `kept`.
    void userKeeps(const std::vector<std::string>& kept)
    {
        QDBusMessage signal = shortcutSignal("ShortcutsChanged");
        signal << QVariant::fromValue(QDBusObjectPath(session)) << QVariant::fromValue(list(kept));
        bus.send(signal);
    }

    std::size_t count(const std::string& call) const
    {
        return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), call));
    }

    uint bindResponse = 0;
    std::vector<std::string> calls;
    std::map<std::string, std::string> triggers; // preferred, by name, of the last bind
    std::string applicationID;

private:
    static QDBusMessage shortcutSignal(const char* name)
    {
        return QDBusMessage::createSignal(desktopPath, "org.freedesktop.portal.GlobalShortcuts", name);
    }

    void bind(const QDBusMessage& message)
    {
        EXPECT_EQ(message.signature().toStdString(), "oa(sa{sv})sa{sv}");
        const auto argument = message.arguments().at(1).value<QDBusArgument>();
        triggers.clear();
        std::vector<std::string> names;
        argument.beginArray();
        while (!argument.atEnd()) {
            QString name;
            QVariantMap properties;
            argument.beginStructure();
            argument >> name >> properties;
            argument.endStructure();
            names.push_back(name.toStdString());
            triggers[names.back()] = properties.value("preferred_trigger").toString().toStdString();
        }
        argument.endArray();
        answer(message, bindResponse, {{"shortcuts", QVariant::fromValue(list(names))}});
    }

    static QDBusArgument list(const std::vector<std::string>& names)
    {
        QDBusArgument argument;
        argument.beginArray(qDBusRegisterMetaType<std::pair<QString, QVariantMap>>());
        for (const std::string& name : names) {
            argument.beginStructure();
            argument << QString::fromStdString(name) << QVariantMap{{"trigger_description", "a key"}};
            argument.endStructure();
        }
        argument.endArray();
        return argument;
    }

    void answer(const QDBusMessage& message, uint response, const QVariantMap& results)
    {
        const auto options = qdbus_cast<QVariantMap>(message.arguments().constLast());
        const QString sender = message.service().mid(1).replace('.', '_');
        const QString path = desktopPath + "/request/" + sender + '/' + options.value("handle_token").toString();
        bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
        QDBusMessage signal = QDBusMessage::createSignal(path, "org.freedesktop.portal.Request", "Response");
        signal << response << results;
        bus.send(signal);
    }

    QDBusConnection bus;
    QString session;
    int sessions = 0;
};

struct PortalHotKeysTest : testing::Test {
    PortalHotKeysTest()
    {
        keys->start({
            .pressed = [this](std::uint32_t id) { pressed.push_back(id); },
            .changed = [this](std::uint32_t id,
                              const std::string& message) { messages.insert_or_assign(id, message); },
        });
    }

    std::string add(std::uint32_t keyCode, std::uint32_t id)
    {
        const auto added = keys->registerHotKey(id, {.control = true, .recordedKeyCode = keyCode}, "Evening");
        return added ? "" : added.error();
    }

    PrivateBus bus;
    QDBusConnection desktopBus = bus.connect();
    QDBusConnection programBus = bus.connect();
    std::unique_ptr<HotKeyService> keys = makePortalHotKeys(programBus);
    std::vector<std::uint32_t> pressed;
    std::map<std::uint32_t, std::string> messages;
};

TEST_F(PortalHotKeysTest, BindsEachSetOfKeysOnceDeliversPressesAndReportsTheUsersChanges)
{
    FakePortal portal(desktopBus, programBus);
    EXPECT_EQ(add(keyF5, 1), "");
    EXPECT_EQ(add(keyK, 2), "");
    ASSERT_TRUE(turnLoopUntil([&] { return messages.size() == 2; }));
    EXPECT_EQ(messages, (std::map<std::uint32_t, std::string>{{1, ""}, {2, ""}}));
    EXPECT_EQ(portal.count("BindShortcuts"), 1u);
    EXPECT_EQ(portal.applicationID, "app.lumenvale.Lumenvale");
    EXPECT_EQ(portal.triggers.at("shortcut-CTRL+F5"), "CTRL+F5");
    portal.press("shortcut-CTRL+k");
    ASSERT_TRUE(turnLoopUntil([&] { return !pressed.empty(); }));
    EXPECT_EQ(pressed, std::vector<std::uint32_t>{2});

    portal.userKeeps({"shortcut-CTRL+k"});
    ASSERT_TRUE(turnLoopUntil([&] { return !messages.at(1).empty(); }));
    EXPECT_EQ(messages.at(2), "");

    messages.clear();
    keys->unregisterHotKey(1);
    ASSERT_TRUE(turnLoopUntil([&] { return messages.contains(2); }));
    EXPECT_EQ(portal.count("Close"), 1u) << "the old session";
    EXPECT_EQ(portal.triggers.size(), 1u);
}

TEST_F(PortalHotKeysTest, ARefusalAndAMissingPortalAreExplainedDifferently)
{
    add(keyF5, 1);
    ASSERT_TRUE(turnLoopUntil([&] { return messages.contains(1); }));
    EXPECT_NE(messages.at(1).find("lumenvale apply"), std::string::npos) << messages.at(1);

    FakePortal portal(desktopBus, programBus);
    portal.bindResponse = 1;
    add(keyK, 2);
    ASSERT_TRUE(turnLoopUntil([&] { return messages.contains(2); }));
    EXPECT_NE(messages.at(2).find("did not allow"), std::string::npos) << messages.at(2);
}

TEST_F(PortalHotKeysTest, APortalThatRestartsIsGivenTheKeysAgain)
{
    {
        FakePortal portal(desktopBus, programBus);
        add(keyF5, 1);
        ASSERT_TRUE(turnLoopUntil([&] { return messages.contains(1); }));
    }
    messages.clear();
    FakePortal portal(desktopBus, programBus);
    ASSERT_TRUE(turnLoopUntil([&] { return messages.contains(1) && messages.at(1).empty(); }));
    EXPECT_EQ(portal.count("BindShortcuts"), 1u);
}

TEST_F(PortalHotKeysTest, RefusesAtOnceWhatItCannotAskFor)
{
    EXPECT_EQ(add(keyF5, 1), "");
    EXPECT_EQ(add(keyF5, 2), "⌃Key 96 is already used by another preset.");
    EXPECT_EQ(add(0x7F, 3), "⌃Key 127 uses a key that this desktop does not know. Record another one.");
}

TEST(PortalTrigger, NamesModifiersAndKey)
{
    EXPECT_EQ(portalTrigger({.functionKey = 5, .command = true, .shift = true}), "SHIFT+LOGO+F5");
    EXPECT_EQ(portalTrigger({.option = true, .control = true, .recordedKeyCode = keyK}), "CTRL+ALT+k");
    EXPECT_EQ(portalTrigger({.recordedKeyCode = 0x31}), "space");
    EXPECT_EQ(portalTrigger({.recordedKeyCode = 0x3F}), "");
}

} // namespace
} // namespace lumenvale
