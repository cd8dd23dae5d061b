// SPDX-License-Identifier: MIT
#include "BusCall.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/StatusNotifierItem.h"

#include <gtest/gtest.h>

namespace lumenvale {

/// The part of a status bar's watcher that items see.
class WatcherStandIn final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

public:
    explicit WatcherStandIn(QDBusConnection connection) : bus(std::move(connection))
    {
        bus.registerObject("/StatusNotifierWatcher", this, QDBusConnection::ExportAllContents);
    }
    void appear() { bus.registerService("org.kde.StatusNotifierWatcher"); }
    void vanish() { bus.unregisterService("org.kde.StatusNotifierWatcher"); }

    bool hasHost = true;
    QStringList items;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) { items.append(service); }

private:
    QDBusConnection bus;
};

namespace {

constexpr char itemPath[] = "/StatusNotifierItem";
constexpr char itemInterface[] = "org.kde.StatusNotifierItem";

class StatusItemTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!bus)
            GTEST_SKIP() << "dbus-daemon is not installed";
        own.emplace(bus->connect());
        host.emplace(bus->connect());
        watcher.emplace(*host);
    }
    void TearDown() override
    {
        item.reset();
        watcher.reset();
    }
    /// Shows the item on a bar that is there.
    void show()
    {
        watcher->appear();
        bar.emplace(*own, "id");
        item = bar->createItem(content());
        service = waitForItem();
    }

    StatusItemContent content()
    {
        return {"Title",
                "Tip",
                [](double scale) {
                    const int width = int(22 * scale);
                    const int height = int(18 * scale);
                    Bitmap bitmap = {width, height, std::vector<std::uint32_t>(std::size_t(width) * height)};
                    bitmap.pixels[0] = 0xFF000000;
                    bitmap.pixels[1] = 0x80000000;
                    return bitmap;
                },
                [this] { ++activations; },
                [this](int steps) { scrolled.push_back(steps); },
                [this] { return menu; }};
    }

    QString waitForItem()
    {
        turnLoopUntil([this] { return !watcher->items.isEmpty(); });
        return watcher->items.takeFirst();
    }

    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments)
    {
        auto message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        return callOverBus(*host, message);
    }
    QVariant property(const QString& name)
    {
        const auto reply = call(itemPath, "org.freedesktop.DBus.Properties", "Get", {itemInterface, name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    const std::unique_ptr<PrivateBus> bus = tryStartBus();
    std::optional<QDBusConnection> own;
    std::optional<QDBusConnection> host;
    std::optional<WatcherStandIn> watcher;
    std::optional<LinuxStatusBar> bar;
    std::unique_ptr<StatusItem> item;
    QString service;
    int activations = 0;
    std::vector<int> scrolled;
    std::vector<std::string> chosen;
    Menu menu = {{"one", "First_1", false, false, [this] { chosen.push_back("one"); }, {}},
                 {},
                 {"two", "Second", true, true, [this] { chosen.push_back("two"); }, {}}};
};

TEST_F(StatusItemTest, AppearsWhenAWatcherDoesAndAgainAfterItsRestart)
{
    bar.emplace(*own, "id");
    item = bar->createItem(content());
    watcher->appear();
    service = waitForItem();
    EXPECT_EQ(property("Status").toString(), "Active");
    EXPECT_FALSE(property("ItemIsMenu").toBool());
    watcher->vanish();
    watcher->appear();
    EXPECT_FALSE(waitForItem().isEmpty());
}

TEST_F(StatusItemTest, ShowsATintedSquareImageInNetworkByteOrderAndPassesOnWhatTheUserDoes)
{
    show();
    const auto images = qdbus_cast<QList<DBusImage>>(property("IconPixmap"));
    ASSERT_EQ(images.size(), 4);
    EXPECT_EQ(images[2].height, 44);
    ASSERT_EQ(images[0].pixels.size(), 22 * 22 * 4);
    const QByteArray row = images[0].pixels.mid(2 * 22 * 4, 12); // two blank rows make it square
    EXPECT_EQ(quint8(row[0]), 0xFF);
    EXPECT_EQ(quint8(row[4]), 0x80);
    EXPECT_EQ(quint8(row[8]), 0x00);
    EXPECT_EQ(row.mid(1, 3), QByteArray("\x1D\x1D\x1F", 3)); // dark, for the light windows of a test
    EXPECT_EQ(qdbus_cast<DBusToolTip>(property("ToolTip")).title, "Tip");

    EXPECT_EQ(item->frame(), std::nullopt);
    call(itemPath, itemInterface, "Activate", {120, 7});
    EXPECT_EQ(activations, 1);
    EXPECT_EQ(item->frame(), (Rect{120, 7, 0, 0}));
    for (const int delta : {1, -1, 120, -240, 60, 30, 30, 0}) // whole steps, notches, and parts of one
        call(itemPath, itemInterface, "Scroll", {delta, "vertical"});
    call(itemPath, itemInterface, "Scroll", {120, "horizontal"});
    EXPECT_EQ(scrolled, (std::vector{1, -1, 1, -2, 1}));
}

TEST_F(StatusItemTest, OffersItsMenuAndDoesWhatTheChosenRowSaid)
{
    show();
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
    item->menuChanged();
    const auto click = [&](int id) {
        const auto none = QVariant::fromValue(QDBusVariant(QString()));
        call(path, "com.canonical.dbusmenu", "Event", {id, "clicked", none, 0u});
    };
    click(rows[2].id);
    click(rows[0].id); // gone
    EXPECT_EQ(chosen, (std::vector<std::string>{"two"}));
}

} // namespace
} // namespace lumenvale

#include "StatusItemTest.moc"
