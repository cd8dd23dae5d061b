// SPDX-License-Identifier: MIT
#include "platform/linux/XdgAutostart.h"
#include "platform/linux/Files.h"

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
    StartupStatus statusWith(const std::string& userText)
    {
        EXPECT_TRUE(writeTextFile(userFile, "[Desktop Entry]\n" + userText));
        return status();
    }
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
    ASSERT_TRUE(service.setEnabled(false));
    EXPECT_EQ(service.status(), StartupStatus::off);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(userFile)));
    EXPECT_TRUE(service.setEnabled(false));
}

TEST_F(XdgAutostartTest, ReportsWhatTheDesktopWillDo)
{
    const std::string ours = "Exec=/bin/sh\nX-Lumenvale-Registered=true\n";
    EXPECT_EQ(statusWith("Exec=/bin/sh\n"), StartupStatus::enabled);
    EXPECT_EQ(statusWith("Name=No command\n"), StartupStatus::off);
    EXPECT_EQ(statusWith("Exec=/bin/sh\nHidden=true\n"), StartupStatus::off);
    EXPECT_EQ(statusWith("Exec=/bin/sh\nX-GNOME-Autostart-enabled=false\n"), StartupStatus::off);
    EXPECT_EQ(statusWith(ours), StartupStatus::enabled);
    EXPECT_EQ(statusWith(ours + "Hidden=true\n"), StartupStatus::requiresApproval);
    EXPECT_EQ(statusWith(ours + "X-GNOME-Autostart-enabled=false\n"), StartupStatus::requiresApproval);
    EXPECT_EQ(statusWith(ours + "OnlyShowIn=KDE;\n"), StartupStatus::off);
    EXPECT_EQ(statusWith(ours + "OnlyShowIn=KDE;GNOME;\n"), StartupStatus::enabled);
    EXPECT_EQ(statusWith(ours + "NotShowIn=GNOME;\n"), StartupStatus::off);
    EXPECT_EQ(statusWith(ours + "TryExec=/nowhere/at/all\n"), StartupStatus::off);
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

TEST_F(XdgAutostartTest, AsksAgainAfterTheDesktopsSettingsSwitchedItOff)
{
    XdgAutostart service(place);
    ASSERT_TRUE(service.setEnabled(true));
    ASSERT_TRUE(writeTextFile(userFile, *readTextFile(userFile) + "Hidden=true\n"));
    EXPECT_EQ(service.status(), StartupStatus::requiresApproval);
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
