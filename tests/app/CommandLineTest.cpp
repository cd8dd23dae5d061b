// SPDX-License-Identifier: MIT
#include "app/cli/CommandLine.h"
#include "app/cli/DisplayChoice.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(LevelArgument, ReadsTheFourForms)
{
    const std::vector<std::pair<const char*, LevelArgument>> levels{
        {"42%", {false, 0.42}}, {"100%", {false, 1.0}}, {"12.5%", {false, 0.125}}, {"0.42", {false, 0.42}},
        {"0", {false, 0.0}},    {"1", {false, 1.0}},    {"+0.5%", {true, 0.005}},  {"-100%", {true, -1.0}}};
    for (const auto& [text, level] : levels)
        EXPECT_EQ(parseLevel(text), level) << text;
}

TEST(LevelArgument, RefusesEverythingElse)
{
    for (const char* text :
         {"",     "%",    "+",    "-",    "+%",   "42",  "1.01", "101%",   "+101%", "-0.05",    "+0.05",
          ".5",   "5.",   "5.%",  "0,42", "1e-1", "0x1", "nan",  "NaN%",   "inf",   "infinity", " 42%",
          "42% ", "4 2%", "42%%", "--5%", "+-5%", "٤٢%", "42٪",  "1.2.3%", "42%0"})
        EXPECT_EQ(parseLevel(text), std::nullopt) << text;
}

/// "set DISPLAY=all LEVEL=-5%": the verb and what was given to it.
std::string verbOf(const tl::expected<CommandLine, std::string>& line)
{
    if (!line || !line->verb)
        return line ? line->answer : line.error();
    std::string text = line->verb->name;
    for (const auto& [name, texts] : line->values.given)
        text += ' ' + name + (texts.empty() ? "" : '=' + texts.front());
    return text;
}

TEST(CommandLine, ReadsEveryVerb)
{
    EXPECT_EQ(verbOf(parseCommandLine({"list", "--json"})), "list --json");
    EXPECT_EQ(verbOf(parseCommandLine({"get", "Studio 27"})), "get DISPLAY=Studio 27");
    EXPECT_EQ(verbOf(parseCommandLine({"set", "all", "-5%"})), "set DISPLAY=all LEVEL=-5%");
    EXPECT_EQ(verbOf(parseCommandLine({"presets", "--json"})), "presets --json");
    EXPECT_EQ(verbOf(parseCommandLine({"apply", "Evening"})), "apply PRESET=Evening");
    EXPECT_EQ(verbOf(parseCommandLine({"doctor"})), "doctor");
    EXPECT_EQ(verbOf(parseCommandLine({"--version"})), versionText() + '\n');
    EXPECT_NE(verbOf(parseCommandLine({"set", "--help"})).find("LEVEL"), std::string::npos);
}

TEST(CommandLine, CarriesWhatTheDesktopProgramIsAskedFor)
{
    using Action = DesktopRequest::Action;
    const auto requestOf = [](std::vector<std::string> arguments) {
        return parseCommandLine(std::move(arguments))->request;
    };
    EXPECT_EQ(requestOf({}), std::nullopt);
    EXPECT_EQ(requestOf({"--show-panel"}), (DesktopRequest{Action::showPanel, "", ""}));
    EXPECT_EQ(requestOf({"--simulate", "/a b", "--open-settings"}),
              (DesktopRequest{Action::openSettings, "", ""}));
    EXPECT_EQ(requestOf({"--simulate", "--apply-preset", "Late evening"}),
              (DesktopRequest{Action::applyPreset, "Late evening", ""}));
}

TEST(CommandLine, TakesTheGlobalOptionsBeforeTheVerb)
{
    const auto named = parseCommandLine({"--verbose", "--simulate", "monitors", "get", "all"});
    EXPECT_EQ(verbOf(named), "get DISPLAY=all");
    EXPECT_EQ(named->simulationFolder, "monitors");
    EXPECT_TRUE(named->isVerbose);

    const auto readyMade = parseCommandLine({"--simulate", "list"});
    EXPECT_EQ(verbOf(readyMade), "list");
    EXPECT_EQ(readyMade->simulationFolder, "");
    EXPECT_EQ(parseCommandLine({"--simulate"})->simulationFolder, "");
    EXPECT_EQ(parseCommandLine({"--simulate=list"})->simulationFolder, "list")
        << "a folder that is named like a verb";
    EXPECT_EQ(parseCommandLine({"list"})->simulationFolder, std::nullopt);
}

TEST(CommandLine, RefusesWrongUse)
{
    const std::vector<std::vector<std::string>> mistakes{{"dance"},
                                                         {"list", "extra"},
                                                         {"list", "--simulate", "x"},
                                                         {"get"},
                                                         {"set", "all"},
                                                         {"set", "all", "5%", "6%"},
                                                         {"set", "all", "-5"},
                                                         {"--bright"},
                                                         {"list", "get", "x"},
                                                         {"--show-panel", "--open-settings"},
                                                         {"--apply-preset"}};
    for (const auto& arguments : mistakes) {
        const auto line = parseCommandLine(arguments);
        ASSERT_FALSE(line) << arguments.back();
        EXPECT_FALSE(line.error().empty());
    }
    EXPECT_EQ(parseCommandLine({"set", "all", "42"}).error(),
              "\"42\" is not a brightness. LEVEL is 42%, 0.42, +5% or -5%.");
}

TEST(DisplayChoice, PrefersTheCloserFitAndNamesTheCandidatesOfAnAmbiguousText)
{
    std::vector<DisplayInfo> displays;
    for (const auto& [id, name] : std::vector<std::pair<std::string, std::string>>{{"37D8-A", "Studio 27"},
                                                                                   {"37D8-B", "Studio"},
                                                                                   {"display-2", "Écran"},
                                                                                   {"display-3", "studio"},
                                                                                   {"display-4", "Twin"},
                                                                                   {"display-5", "Twin"}}) {
        displays.emplace_back().id = id;
        displays.back().name = name;
    }
    const auto choose = [&](const std::string& text) {
        const auto chosen = chooseDisplays(displays, text);
        return chosen ? chosen->front().id : chosen.error();
    };
    EXPECT_EQ(choose("37d8-a"), "37D8-A");
    EXPECT_EQ(choose("Studio"), "37D8-B");
    EXPECT_EQ(choose("studio"), "display-3");
    EXPECT_EQ(choose("STUDIO 2"), "37D8-A");
    EXPECT_EQ(choose("éc"), "display-2");
    EXPECT_EQ(chooseDisplays(displays, "all")->size(), displays.size());
    EXPECT_EQ(choose("Twin"), "\"Twin\" could be Twin (display-4) or Twin (display-5).");
    EXPECT_EQ(choose("STUDIO"), "\"STUDIO\" could be Studio (37D8-B) or studio (display-3).");
    EXPECT_EQ(choose("37"), "\"37\" could be Studio 27 (37D8-A) or Studio (37D8-B).");
    EXPECT_EQ(choose("Office"), "There is no display \"Office\".");
    EXPECT_EQ(choose(""), "There is no display \"\".");
    EXPECT_EQ(chooseDisplays({}, "all").error(), "There is no display.");
}

} // namespace
} // namespace lumenvale
