// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Action = DesktopRequest::Action;

std::optional<DesktopRequest> requestOf(std::vector<std::string> arguments)
{
    const auto line = parseCommandLine(std::move(arguments));
    EXPECT_TRUE(line) << line.error();
    return line ? std::get<DesktopVerb>(line->verb).request : std::nullopt;
}

TEST(DesktopCommandLine, CarriesWhatTheDesktopProgramIsAskedFor)
{
    EXPECT_EQ(requestOf({}), std::nullopt);
    EXPECT_EQ(requestOf({"--show-panel"}), (DesktopRequest{Action::showPanel, "", ""}));
    EXPECT_EQ(requestOf({"--simulate", "/a b", "--open-settings"}),
              (DesktopRequest{Action::openSettings, "", ""}));
    EXPECT_EQ(requestOf({"--simulate", "--apply-preset", "Late evening"}),
              (DesktopRequest{Action::applyPreset, "Late evening", ""}));
    EXPECT_FALSE(parseCommandLine({"--show-panel", "--open-settings"}));
    EXPECT_FALSE(parseCommandLine({"--apply-preset"}));
}

} // namespace
} // namespace lumenvale
