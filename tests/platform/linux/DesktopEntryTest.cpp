// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/DesktopEntry.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(DesktopEntry, ReadsWhatFilesContainAndWritesItBackInOrder)
{
    const auto entry =
        DesktopEntry::parse("# comment\nlost=1\n[Desktop Entry]\r\nName = Two Words \nName[de]=Zwei\n"
                            "\nrubbish\nHidden=true\n[Desktop Action a]\nExec=x=y");
    EXPECT_EQ(entry.value("Desktop Entry", "Name"), "Two Words");
    EXPECT_TRUE(entry.flag("Desktop Entry", "Hidden"));
    EXPECT_FALSE(entry.flag("Desktop Entry", "Terminal"));
    EXPECT_EQ(entry.value("Desktop Action a", "Exec"), "x=y");
    EXPECT_EQ(entry.value("Nowhere", "Exec"), std::nullopt);
    EXPECT_EQ(entry.toString(), "[Desktop Entry]\nName=Two Words\nName[de]=Zwei\nHidden=true\n\n"
                                "[Desktop Action a]\nExec=x=y\n");
}

TEST(DesktopEntry, NoTextBreaksOutOfItsLine)
{
    EXPECT_EQ(escapeEntryText(" a\nExec=rm\t\\x\r"), "\\sa\\nExec=rm\\t\\\\x\\r");
    EXPECT_EQ(execLine({"/opt/my apps/lumenvale", "--simulate", "/tmp/$HOME 100%\"`\\"}),
              R"("/opt/my apps/lumenvale" "--simulate" "/tmp/\\$HOME 100%%\\"\\`\\\\")");
}

} // namespace
} // namespace lumenvale
