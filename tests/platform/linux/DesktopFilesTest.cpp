// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/DesktopEntry.h"
#include "platform/linux/xdg/LauncherEntry.h"
#include "platform/linux/xdg/XdgAutostart.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(DesktopEntry, ReadsWhatFilesContainAndWritesItBackInOrder)
{
    const auto entry =
        DesktopEntry::parse("# comment\nlost=1\n[Desktop Entry]\r\nName = Two Words \nName[de]=Zwei\n"
                            "\nrubbish\nHidden=true\n[Desktop Action a]\nExec=x=y");
    EXPECT_EQ(entry.toString(), "[Desktop Entry]\nName=Two Words\nName[de]=Zwei\nHidden=true\n\n"
                                "[Desktop Action a]\nExec=x=y\n");
    EXPECT_TRUE(entry.flag("Desktop Entry", "Hidden") && !entry.flag("Desktop Entry", "Terminal"));
    EXPECT_EQ(escapeEntryText(" a\nExec=rm\t\\x\r"), "\\sa\\nExec=rm\\t\\\\x\\r");
    EXPECT_EQ(execLine({"/opt/my apps/lumenvale", "--simulate", "/tmp/$HOME 100%\"`\\"}),
              R"("/opt/my apps/lumenvale" "--simulate" "/tmp/\\$HOME 100%%\\"\\`\\\\")");
}

struct FolderTest : testing::Test {
    const QTemporaryDir directory;
    const std::string root = directory.path().toStdString();
    const std::string userFile = root + "/user/app.example.Test.desktop";
    const std::string systemFile = root + "/system/app.example.Test.desktop";
};

TEST_F(FolderTest, TheLauncherOffersWhatCanBeStartedAndLeavesTheUsersOwnEntryAlone)
{
    const LauncherEntry launcher({"app.example.Test", "/app/example/Test", "Test", {"/usr/bin/test"}},
                                 {root + "/user", {root + "/absent", root + "/system"}});
    Menu menu = {{"brightness", "Brightness…", false, false, nullptr, {"--show-panel"}},
                 {},
                 {"preset-1", "Evening\nExec=evil", true, true, nullptr, {"--apply-preset", "1"}},
                 {"unreachable", "Only inside", false, false, nullptr, {}}};
    launcher.update(menu, true);
    const std::string text = readTextFile(userFile).value_or("");
    EXPECT_TRUE(text.starts_with("[Desktop Entry]\nType=Application\nName=Test\n")) << text;
    EXPECT_TRUE(text.ends_with(R"(
TryExec=/usr/bin/test
X-Lumenvale-Generated=true
Actions=brightness;preset-1;

[Desktop Action brightness]
Name=Brightness…
Exec="/usr/bin/test" "--show-panel"

[Desktop Action preset-1]
Name=Evening\nExec=evil
Exec="/usr/bin/test" "--apply-preset" "1"
)")) << text;
    launcher.update(menu, false); // the dock is not shown
    EXPECT_FALSE(readTextFile(userFile));

    ASSERT_TRUE(writeTextFile(systemFile, "[Desktop Entry]\nName=Installed\nName[de]=Da\nActions=brightness;\n"
                                          "[Desktop Action brightness]\nName=Old\n"));
    launcher.update(menu, false);
    const auto written = DesktopEntry::parse(*readTextFile(userFile));
    EXPECT_EQ(written.value("Desktop Entry", "Name[de]"), "Da");
    EXPECT_EQ(written.value("Desktop Action brightness", "Name"), "Brightness…");
    menu.resize(2); // without presets the installed entry says it all
    launcher.update(menu, true);
    EXPECT_FALSE(readTextFile(userFile));
    ASSERT_TRUE(writeTextFile(userFile, "[Desktop Entry]\nName=Mine\n"));
    launcher.update({}, true);
    launcher.withdraw();
    EXPECT_EQ(readTextFile(userFile), "[Desktop Entry]\nName=Mine\n");
}

struct XdgAutostartTest : FolderTest {
    AutostartPlace place = {
        "app.example.Test", "Test", {"/bin/sh", "--simulate", "/a b"}, root + "/user", {root + "/system"},
        "ubuntu:GNOME",     false};
};

TEST_F(XdgAutostartTest, SwitchesOnAndOffAndHidesAnEntryOfTheSystems)
{
    XdgAutostart service(place);
    for (const bool isInstalled : {false, true}) {
        ASSERT_TRUE(!isInstalled || writeTextFile(systemFile, "[Desktop Entry]\nExec=/bin/sh\n"));
        EXPECT_EQ(service.status(), isInstalled ? StartupStatus::enabled : StartupStatus::off);
        ASSERT_TRUE(service.setEnabled(true));
        EXPECT_EQ(service.status(), StartupStatus::enabled);
        const auto written = DesktopEntry::parse(*readTextFile(userFile));
        EXPECT_EQ(written.value("Desktop Entry", "Exec"), R"("/bin/sh" "--simulate" "/a b")");
        EXPECT_FALSE(
            written.value("Desktop Entry", "X-GNOME-Autostart-Phase")); // some starters leave such files out
        ASSERT_TRUE(service.setEnabled(false));
        EXPECT_EQ(service.status(), StartupStatus::off);
        EXPECT_EQ(readTextFile(userFile).has_value(), isInstalled);
    }
}

TEST_F(XdgAutostartTest, RenewsTheCommandOfAnEarlierVersionAndNothingElse)
{
    place.formerCommand = {"/bin/sh"};
    for (const auto& [found, renewed] : {std::pair(R"("/bin/sh")", R"("/bin/sh" "--simulate" "/a b")"),
                                         std::pair("nice /bin/sh", "nice /bin/sh")}) {
        const std::string rest = "X-GNOME-Autostart-enabled=false\n";
        ASSERT_TRUE(writeTextFile(userFile, std::string("[Desktop Entry]\nExec=") + found + "\n" + rest));
        XdgAutostart(place).renew();
        EXPECT_EQ(readTextFile(userFile), std::string("[Desktop Entry]\nExec=") + renewed + "\n" + rest);
    }
}

TEST_F(XdgAutostartTest, ReportsWhatTheDesktopWillDo)
{
    const std::pair<std::string, StartupStatus> entries[] = {
        {"Exec=/bin/sh\n", StartupStatus::enabled},
        {"Name=No command\n", StartupStatus::off},
        {"Exec=/bin/sh\nHidden=true\n", StartupStatus::off},
        {"Exec=/bin/sh\nX-GNOME-Autostart-enabled=false\n", StartupStatus::off},
        {"Exec=/bin/sh\nOnlyShowIn=KDE;\n", StartupStatus::off},
        {"Exec=/bin/sh\nOnlyShowIn=KDE;GNOME;\n", StartupStatus::enabled},
        {"Exec=/bin/sh\nNotShowIn=GNOME;\n", StartupStatus::off},
        {"Exec=/bin/sh\nTryExec=/nowhere/at/all\n", StartupStatus::off}};
    for (const auto& [text, expected] : entries) {
        ASSERT_TRUE(writeTextFile(userFile, "[Desktop Entry]\n" + text));
        XdgAutostart service(place);
        EXPECT_EQ(service.status(), expected) << text;
        ASSERT_TRUE(service.setEnabled(true));
        EXPECT_EQ(service.status(), StartupStatus::enabled) << text;
    }
}

TEST_F(XdgAutostartTest, IsUnavailableWhereItCannotWork)
{
    ASSERT_TRUE(writeTextFile(root + "/file", ""));
    place.isSandboxed = true;
    EXPECT_EQ(XdgAutostart(place).status(), StartupStatus::unavailable);
    EXPECT_FALSE(XdgAutostart(place).setEnabled(true));
    place.isSandboxed = false;
    place.userFolder = root + "/file/autostart"; // a file stands where a folder should
    EXPECT_EQ(XdgAutostart(place).status(), StartupStatus::unavailable);
    EXPECT_EQ(XdgAutostart(place).setEnabled(true).error(),
              "The folder for programs that start at login (" + root + "/file/autostart) cannot be written to.");
}

} // namespace
} // namespace lumenvale
