// SPDX-License-Identifier: MIT
#include "DesktopStandIn.h"
#include "platform/linux/keyboard/KeyCodes.h"
#include "platform/linux/portal/PortalAppearance.h"
#include "platform/linux/portal/PortalHotKeys.h"
#include "platform/linux/portal/PortalShortcut.h"
#include "platform/qt/ProgramFile.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

namespace lumenvale {
namespace {

using Shortcuts = QList<std::pair<QString, QVariantMap>>;
using Messages = std::map<std::uint32_t, std::string>;

const QString portalPath = "/org/freedesktop/portal/desktop";
const QString sessionPath = portalPath + "/session/lumenvale";
const QString f5 = "shortcut-CTRL+F5";
const QString k = "shortcut-CTRL+k";

QVariant colour(double red, double green, double blue)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

using PortalAppearanceTest = DesktopBusTest;

TEST_F(PortalAppearanceTest, TellsTheDesktopsChoiceAndItsChanges)
{
    desktop.answers["Read"] = [](const QDBusMessage& message) {
        const QVariant value = message.arguments().at(1) == "color-scheme" ? QVariant(1u) : colour(1, 0.5, 0);
        return QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(value)))); // wrapped twice
    };
    desktop.setRunning(portalName, true, program);
    const auto source = makePortalAppearance(program);
    std::vector<AppearanceWish> told;
    source->observe([&told](const AppearanceWish& wish) { told.push_back(wish); });
    ASSERT_TRUE(turnLoopUntil([&told] { return told.size() == 2; }));
    EXPECT_EQ(told.back(), (AppearanceWish{true, 0xFF8000}));

    const auto change = [&](const char* space, const char* key, const QVariant& value) {
        desktop.emitSignal(portalPath, "org.freedesktop.portal.Settings", "SettingChanged",
                           {space, key, QVariant::fromValue(QDBusVariant(value))});
    };
    change("org.gnome.desktop.interface", "color-scheme", "prefer-light");
    change("org.freedesktop.appearance", "color-scheme", 0u);
    change("org.freedesktop.appearance", "accent-color", colour(-1, 0, 0));
    ASSERT_TRUE(turnLoopUntil([&told] { return told.size() == 4; }));
    EXPECT_EQ(told.back(), AppearanceWish());
}

/// What the portal answers to a request: the names of the shortcuts, with the keys that it gave them.
struct Answer {
    uint response = 0;
    std::map<QString, QString> bound;
};

QVariant list(const Answer& answer)
{
    qDBusRegisterMetaType<Shortcuts::value_type>();
    qDBusRegisterMetaType<Shortcuts>();
    Shortcuts entries;
    for (const auto& [name, key] : answer.bound)
        entries.append({name, {{"trigger_description", key}}});
    return QVariant::fromValue(entries);
}

struct PortalHotKeysTest : DesktopBusTest {
    /// The desktop's answers to CreateSession (whose list is left out when it is empty), BindShortcuts and
    /// ListShortcuts.
    void start(const Answer& create, const Answer& bind, const Answer& listed)
    {
        const auto request = [this](const Answer& answer, bool creates) {
            return [=, this](const QDBusMessage& message) {
                QVariantMap results = {{"session_handle", sessionPath}};
                if (!creates || !answer.bound.empty())
                    results["shortcuts"] = list(answer);
                const auto token =
                    qdbus_cast<QVariantMap>(message.arguments().constLast())["handle_token"].toString();
                const QString path =
                    portalPath + "/request/" + message.service().mid(1).replace('.', '_') + '/' + token;
                desktop.emitSignal(path, "org.freedesktop.portal.Request", "Response", {answer.response, results});
                return QVariant::fromValue(QDBusObjectPath(path));
            };
        };
        desktop.answers = {{"CreateSession", request(create, true)},
                           {"BindShortcuts", request(bind, false)},
                           {"ListShortcuts", request(listed, false)}};
        desktop.setRunning(portalName, true, program);
        keys = makePortalHotKeys(program);
        keys->start({.pressed = [this](std::uint32_t id) { pressed.push_back(id); },
                     .changed = [this](std::uint32_t id, const std::string& text) { messages[id] = text; }});
    }
    std::string add(std::uint32_t id, const PresetShortcut& shortcut) const
    {
        const auto added = keys->registerHotKey(id, shortcut, "Evening");
        return added ? "" : added.error();
    }
    void addBoth() const
    {
        EXPECT_EQ(add(1, {.functionKey = 5, .control = true}) + add(2, {.control = true, .recordedKeyCode = 0x28}),
                  "");
    }
    QString takeCalls()
    {
        QString members;
        for (const QDBusMessage& each : std::exchange(desktop.calls, {}))
            members += ' ' + each.member();
        return members;
    }
    bool tell(const Messages& expected)
    {
        return turnLoopUntil([&] { return messages == expected; });
    }
    void signalFromPortal(const QString& name, const QVariantList& arguments)
    {
        desktop.emitSignal(portalPath, "org.freedesktop.portal.GlobalShortcuts", name,
                           QVariantList{QVariant::fromValue(QDBusObjectPath(sessionPath))} + arguments);
    }

    std::unique_ptr<HotKeyService> keys;
    std::vector<std::uint32_t> pressed;
    Messages messages;
};

const std::string notAccepted =
    "The desktop did not accept this shortcut. Choose a key for it in the desktop's own keyboard settings.";
const std::string notAllowed =
    "The desktop did not allow system-wide shortcuts. Allow them in its settings for apps.";
std::string noPortal()
{
    return "This desktop lets no app set system-wide shortcuts. In its own keyboard settings, bind a key to the "
           "command \"" +
           programCommand() + " apply\" followed by the preset's name.";
}
const std::string stopped = "The desktop's service for system-wide shortcuts has stopped.";

TEST_F(PortalHotKeysTest, EveryKindOfPortalBindsTheKeysOrSaysWhyNot)
{
    const struct {
        Answer create, bind, listed;
        Messages told;
        QString calls;
    } rows[] = {
        {{0, {{k, ""}, {f5, "a"}}}, {}, {}, {{1, ""}, {2, notAccepted}}, ""},
        {{}, {0, {{f5, "a"}, {k, "b"}}}, {}, {{1, ""}, {2, ""}}, " BindShortcuts"},
        {{}, {}, {0, {{f5, ""}, {k, "b"}}}, {{1, notAccepted}, {2, ""}}, " BindShortcuts ListShortcuts"},
        {{}, {1}, {}, {{1, notAllowed}, {2, notAllowed}}, " BindShortcuts"},
        {{}, {2}, {}, {{1, notAllowed}, {2, notAllowed}}, " BindShortcuts"},
        {{2}, {}, {}, {{1, noPortal()}, {2, noPortal()}}, ""},
    };
    for (const auto& row : rows) {
        start(row.create, row.bind, row.listed);
        addBoth();
        EXPECT_TRUE(tell(row.told)) << row.calls.toStdString();
        // The end of a session that nothing came of may be told at any time.
        desktop.calls.removeIf([](const QDBusMessage& each) { return each.member() == "Close"; });
        ASSERT_GT(desktop.calls.size(), 1);
        const auto options = qdbus_cast<QVariantMap>(desktop.calls.at(1).arguments().at(0));
        EXPECT_EQ(options["session_handle_token"], "lumenvale") << "the same in every run";
        EXPECT_EQ(qdbus_cast<Shortcuts>(options["shortcuts"]).at(0).second["preferred_trigger"], "CTRL+F5");
        EXPECT_EQ(takeCalls(), " Register CreateSession" + row.calls);
        desktop.setRunning(portalName, false, program);
        keys.reset();
        takeCalls();
        messages.clear();
    }
}

TEST_F(PortalHotKeysTest, DeliversPressesAndFollowsTheUsersChangesAndThePortalsComingsAndGoings)
{
    start({}, {0, {{f5, "a"}, {k, "b"}}}, {});
    addBoth();
    ASSERT_TRUE(tell({{1, ""}, {2, ""}}));
    signalFromPortal("Activated", {k, qulonglong(1), QVariantMap()});
    ASSERT_TRUE(turnLoopUntil([&] { return pressed == std::vector<std::uint32_t>{2}; }));
    signalFromPortal("ShortcutsChanged", {list({0, {{k, "b"}}})});
    ASSERT_TRUE(tell({{1, notAccepted}, {2, ""}}));

    takeCalls();
    keys->unregisterHotKey(1);
    messages.clear();
    ASSERT_TRUE(tell({{2, ""}}));
    EXPECT_EQ(takeCalls(), " Close Register CreateSession BindShortcuts");

    desktop.setRunning(portalName, false, program);
    ASSERT_TRUE(tell({{2, stopped}}));
    desktop.setRunning(portalName, true, program);
    ASSERT_TRUE(tell({{2, ""}}));
    desktop.emitSignal(sessionPath, "org.freedesktop.portal.Session", "Closed", {});
    ASSERT_TRUE(tell({{2, stopped}}));

    EXPECT_EQ(add(3, {.control = true, .recordedKeyCode = 0x28}),
              "Ctrl+Key 40 is already used by another preset.");
    EXPECT_EQ(add(3, {.recordedKeyCode = 0x7F}),
              "Key 127 uses a key that this desktop does not know. Record another one.");
    EXPECT_EQ(portalTrigger({.functionKey = 5, .command = true, .shift = true}), "SHIFT+LOGO+F5");
    EXPECT_EQ(portalTrigger({.option = true, .recordedKeyCode = 0x31}), "ALT+space");
    EXPECT_EQ(portalTrigger({.control = true, .recordedKeyCode = foreignKeyBase + 119}), "CTRL+Pause");
}

} // namespace
} // namespace lumenvale
