// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/LauncherEntry.h"
#include "platform/linux/xdg/DesktopEntry.h"
#include "platform/linux/xdg/Files.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

class LauncherEntryTest : public testing::Test {
protected:
    const QTemporaryDir directory;
    const std::string root = directory.path().toStdString();
    const std::string userFile = root + "/user/app.example.Test.desktop";
    const std::string systemFile = root + "/system/app.example.Test.desktop";
    const ProgramIdentity identity = {"app.example.Test", "/app/example/Test", "Test", {"/usr/bin/test"}};
    const LauncherEntry entry{identity, {root + "/user", {root + "/absent", root + "/system"}}};
    Menu menu = {{"brightness", "Brightness…", false, false, nullptr, {"--show-panel"}},
                 {},
                 {"preset-1", "Evening\nExec=evil", true, true, nullptr, {"--apply-preset", "1"}},
                 {"unreachable", "Only inside", false, false, nullptr, {}}};
};

TEST_F(LauncherEntryTest, OffersEveryRowThatCanBeStarted)
{
    EXPECT_EQ(entry.text("", menu), R"([Desktop Entry]
Type=Application
Name=Test
GenericName=Display Brightness
Comment=Control the brightness of each display
Icon=app.lumenvale.Lumenvale
Exec="/usr/bin/test"
Terminal=false
Categories=Settings;HardwareSettings;
StartupNotify=false
TryExec=/usr/bin/test
X-Lumenvale-Generated=true
Actions=brightness;preset-1;

[Desktop Action brightness]
Name=Brightness…
Exec="/usr/bin/test" "--show-panel"

[Desktop Action preset-1]
Name=Evening\nExec=evil
Exec="/usr/bin/test" "--apply-preset" "1"
)");
}

TEST_F(LauncherEntryTest, AppearsAndGoesWithTheDock)
{
    entry.update(menu, false);
    EXPECT_FALSE(readTextFile(userFile));
    entry.update(menu, true);
    EXPECT_EQ(readTextFile(userFile), entry.text("", menu));
    entry.update(menu, false);
    EXPECT_FALSE(readTextFile(userFile));
}

TEST_F(LauncherEntryTest, AddsThePresetsToAnInstalledEntryAndKeepsItsWords)
{
    ASSERT_TRUE(writeTextFile(systemFile, "[Desktop Entry]\nName=Installed\nName[de]=Da\nDBusActivatable=true\n"
                                          "Actions=brightness;\n[Desktop Action brightness]\nName=Old\n"));
    entry.update(menu, false);
    const auto written = DesktopEntry::parse(*readTextFile(userFile));
    EXPECT_EQ(written.value("Desktop Entry", "Name[de]"), "Da");
    EXPECT_EQ(written.value("Desktop Entry", "DBusActivatable"), "true");
    EXPECT_EQ(written.value("Desktop Action brightness", "Name"), "Brightness…");
    EXPECT_EQ(written.value("Desktop Entry", "Actions"), "brightness;preset-1;");
    menu.resize(2); // without presets the installed entry says it all
    entry.update(menu, true);
    EXPECT_FALSE(readTextFile(userFile));
}

TEST_F(LauncherEntryTest, LeavesAFileAloneThatTheUserMade)
{
    ASSERT_TRUE(writeTextFile(userFile, "[Desktop Entry]\nName=Mine\n"));
    entry.update(menu, true);
    entry.withdraw();
    EXPECT_EQ(readTextFile(userFile), "[Desktop Entry]\nName=Mine\n");
}

} // namespace
} // namespace lumenvale
