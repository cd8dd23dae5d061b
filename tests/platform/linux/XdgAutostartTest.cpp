// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/XdgAutostart.h"
#include "platform/linux/xdg/Files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <unistd.h>

namespace lumenvale {
namespace {

class XdgAutostartTest : public testing::Test {
protected:
    const QTemporaryDir directory;
    const std::string root = directory.path().toStdString();
    const std::string userFile = root + "/config/autostart/app.example.Test.desktop";
    const std::string systemFile = root + "/etc/app.example.Test.desktop";
    AutostartPlace place = {
        "app.example.Test", "Test", {"/bin/sh", "--simulate", "/a b"}, root + "/config/autostart", {root + "/etc"},
        "ubuntu:GNOME",     false};

    StartupStatus status() { return XdgAutostart(place).status(); }
};

TEST_F(XdgAutostartTest, SwitchesOnAndOff)
{
    XdgAutostart service(place);
    EXPECT_EQ(service.status(), StartupStatus::off);
    ASSERT_TRUE(service.setEnabled(true));
    EXPECT_EQ(service.status(), StartupStatus::enabled);
    const auto written = DesktopEntry::parse(*readTextFile(userFile));
    EXPECT_EQ(written.value("Desktop Entry", "Exec"), R"("/bin/sh" "--simulate" "/a b")");
    EXPECT_FALSE(written.value("Desktop Entry", "X-GNOME-Autostart-Phase")); // it would be started by nobody
    ASSERT_TRUE(writeTextFile(userFile, *readTextFile(userFile) + "Hidden=true\n")); // the desktop's settings
    EXPECT_EQ(service.status(), StartupStatus::requiresApproval);
    ASSERT_TRUE(service.setEnabled(true));
    EXPECT_EQ(service.status(), StartupStatus::enabled);
    ASSERT_TRUE(service.setEnabled(false));
    EXPECT_EQ(service.status(), StartupStatus::off);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(userFile)));
}

TEST_F(XdgAutostartTest, ReportsWhatTheDesktopWillDo)
{
    const std::string ours = "Exec=/bin/sh\nX-Lumenvale-Registered=true\n";
    const std::pair<std::string, StartupStatus> entries[] = {
        {"Exec=/bin/sh\n", StartupStatus::enabled},
        {"Name=No command\n", StartupStatus::off},
        {"Exec=/bin/sh\nHidden=true\n", StartupStatus::off},
        {"Exec=/bin/sh\nX-GNOME-Autostart-enabled=false\n", StartupStatus::off},
        {ours, StartupStatus::enabled},
        {ours + "X-GNOME-Autostart-enabled=false\n", StartupStatus::requiresApproval},
        {ours + "OnlyShowIn=KDE;\n", StartupStatus::off},
        {ours + "OnlyShowIn=KDE;GNOME;\n", StartupStatus::enabled},
        {ours + "NotShowIn=GNOME;\n", StartupStatus::off},
        {ours + "TryExec=/nowhere/at/all\n", StartupStatus::off}};
    for (const auto& [text, expected] : entries) {
        ASSERT_TRUE(writeTextFile(userFile, "[Desktop Entry]\n" + text));
        EXPECT_EQ(status(), expected) << text;
    }
}

TEST_F(XdgAutostartTest, HidesAnEntryOfTheSystemsInsteadOfLosingToIt)
{
    ASSERT_TRUE(writeTextFile(systemFile, "[Desktop Entry]\nExec=/bin/sh\n"));
    XdgAutostart service(place);
    EXPECT_EQ(service.status(), StartupStatus::enabled);
    ASSERT_TRUE(service.setEnabled(false));
    EXPECT_EQ(service.status(), StartupStatus::off);
    ASSERT_TRUE(service.setEnabled(true));
    EXPECT_EQ(service.status(), StartupStatus::enabled);
}

TEST_F(XdgAutostartTest, IsUnavailableWhereItCannotWork)
{
    const AutostartPlace usable = place;
    place.userFolder.clear();
    EXPECT_EQ(status(), StartupStatus::unavailable);
    place = usable;
    place.isSandboxed = true;
    EXPECT_EQ(status(), StartupStatus::unavailable);
    EXPECT_FALSE(XdgAutostart(place).setEnabled(true));
    place = usable;
    ASSERT_TRUE(writeTextFile(root + "/file", ""));
    place.userFolder = root + "/file/autostart"; // a file stands where a folder should
    EXPECT_EQ(status(), StartupStatus::unavailable);
    const auto refused = XdgAutostart(place).setEnabled(true);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(),
              "The folder for programs that start at login (" + place.userFolder + ") cannot be written to.");
}

} // namespace
} // namespace lumenvale
