// SPDX-License-Identifier: MIT
#include "DesktopStandIn.h"
#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/StatusNotifierItem.h"

#include <QDBusPendingCallWatcher>

namespace lumenvale {
namespace {

constexpr char itemPath[] = "/StatusNotifierItem";
constexpr char itemInterface[] = "org.kde.StatusNotifierItem";

struct StatusItemTest : DesktopBusTest {
    void SetUp() override
    {
        desktop.answers["Get"] = [](const QDBusMessage&) { return QVariant::fromValue(QDBusVariant(true)); };
        item = LinuxStatusBar(program, "id").createItem(content());
        desktop.setRunning("org.kde.StatusNotifierWatcher", true, program);
        service = waitForItem();
    }
    StatusItemContent content()
    {
        const auto image = [](double scale) {
            Bitmap bitmap = {int(22 * scale), int(18 * scale), {0xFF000000, 0x80000000}};
            bitmap.pixels.resize(std::size_t(bitmap.width) * bitmap.height);
            return bitmap;
        };
        return {"Title",
                "Tip",
                image,
                [this] { ++activations; },
                [this](int steps) { scrolled.push_back(steps); },
                [this] { return menu; }};
    }
    QString waitForItem()
    {
        EXPECT_TRUE(turnLoopUntil([this] {
            return !desktop.calls.isEmpty() && desktop.calls.last().member() == "RegisterStatusNotifierItem";
        }));
        return desktop.calls.takeLast().arguments().at(0).toString();
    }
    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments)
    {
        auto message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingCallWatcher watcher(host.asyncCall(message));
        EXPECT_TRUE(turnLoopUntil([&watcher] { return watcher.isFinished(); }));
        return watcher.reply();
    }
    QVariant property(const QString& name)
    {
        const auto reply = call(itemPath, "org.freedesktop.DBus.Properties", "Get", {itemInterface, name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    std::unique_ptr<StatusItem> item;
    QString service;
    int activations = 0;
    std::vector<int> scrolled;
    std::vector<std::string> chosen;
    Menu menu = {{"one", "First_1", false, false, [this] { chosen.push_back("one"); }, {}},
                 {},
                 {"two", "Second", true, true, [this] { chosen.push_back("two"); }, {}}};
};

TEST_F(StatusItemTest, ShowsATintedSquareImageOnceAWatcherIsThereAndAgainAfterItsRestart)
{
    const auto images = qdbus_cast<QList<DBusImage>>(property("IconPixmap"));
    ASSERT_EQ(images.size(), 4);
    EXPECT_EQ(images[2].height, 48);
    ASSERT_EQ(images[0].pixels.size(), 24 * 24 * 4);
    // Three rows make it square and leave room for the outline. Light, opaque, half, and beyond the outline: dark
    // on light, for the light windows of a test.
    const QByteArray row = images[0].pixels.mid(3 * 24 * 4, 20);
    EXPECT_EQ(row.toHex(), "fff2f2f4ff1d1d1fff87878980f2f2f400000000");
    EXPECT_EQ(qdbus_cast<DBusToolTip>(property("ToolTip")).title, "Tip");
    EXPECT_EQ(property("Status").toString(), "Active");
    EXPECT_FALSE(property("ItemIsMenu").toBool());
    for (const bool isRunning : {false, true})
        desktop.setRunning("org.kde.StatusNotifierWatcher", isRunning, program);
    EXPECT_FALSE(waitForItem().isEmpty());
}

TEST_F(StatusItemTest, PassesOnClicksAndTheWheelOfEveryDesktop)
{
    EXPECT_EQ(item->frame(), std::nullopt);
    call(itemPath, itemInterface, "Activate", {120, 7});
    EXPECT_EQ(activations, 1);
    EXPECT_EQ(item->frame(), (Rect{120, 7, 0, 0}));
    const std::pair<int, const char*> turns[] = {
        {-1, "vertical"}, {-2, "vertical"}, {1, "Vertical"},    {120, "Vertical"}, {120, "vertical"}, // one up
        {2, "vertical"},  {-1, "Vertical"}, {-240, "vertical"}, // one and two down
        {60, "vertical"}, {30, "vertical"}, {30, "vertical"},   {0, "vertical"},   {120, "horizontal"}};
    for (const auto& [delta, orientation] : turns)
        call(itemPath, itemInterface, "Scroll", {delta, orientation});
    EXPECT_EQ(scrolled, (std::vector{1, 1, 1, 1, 1, -1, -1, -2, 1}));
}

TEST_F(StatusItemTest, OffersItsMenuAndDoesWhatTheChosenRowSaid)
{
    const QString path = property("Menu").value<QDBusObjectPath>().path();
    const auto reply = call(path, "com.canonical.dbusmenu", "GetLayout", {0, -1, QStringList()});
    EXPECT_EQ(reply.signature(), "u(ia{sv}av)");
    QList<DBusMenuLayout> rows;
    for (const QDBusVariant& each : qdbus_cast<DBusMenuLayout>(reply.arguments().value(1)).children)
        rows.append(qdbus_cast<DBusMenuLayout>(each.variant()));
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].properties["label"].toString(), "First__1");
    EXPECT_EQ(rows[1].properties["type"].toString(), "separator");
    EXPECT_EQ(rows[2].properties["toggle-state"].toInt(), 1);

    menu.erase(menu.begin(), menu.begin() + 2); // the user clicks on a menu that has just changed
    menu.front().isChecked = false;
    item->menuChanged();
    for (const int id : {rows[2].id, rows[0].id}) // the latter is gone
        call(path, "com.canonical.dbusmenu", "Event",
             {id, "clicked", QVariant::fromValue(QDBusVariant(QString())), 0u});
    EXPECT_EQ(chosen, std::vector<std::string>{"two"});
}

TEST_F(StatusItemTest, AChangeTellsWhatTheRowsSayNow)
{
    QObject owner;
    auto* shown = new DBusMenu(
        &owner, [this] { return menu; }, [] {});
    QVariantMap last;
    QObject::connect(shown, &DBusMenu::ItemsPropertiesUpdated,
                     [&](const auto& rows) { last = rows.last().properties; });
    menu.back().title = "Third";
    shown->announceChange();
    EXPECT_TRUE(last["toggle-state"] == 1 && last["label"] == "Third");
}

} // namespace
} // namespace lumenvale
