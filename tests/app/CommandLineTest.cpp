// SPDX-License-Identifier: MIT
// The command line on simulated monitors: the real parser, platform and hardware controller, without its waits.
#include "app/cli/CommandLine.h"

#include "app/cli/DisplayChoice.h"
#include "platform/Platform.h"
#include "presets/PresetStore.h"
#include "support/AwaitResult.h"
#include "support/ManualClock.h"
#include "support/MonitorFolder.h"

#include <QDir>
#include <gtest/gtest.h>
#include <sstream>

namespace lumenvale {
namespace {

// One display of each kind.
constexpr std::pair<const char*, const char*> monitors[] = {
    {"1.json", R"({"name": "Panel", "displayID": 1, "isBuiltIn": true, "native": {"brightness": 0.625}})"},
    {"2.json", R"({"name": "Studio 27", "displayID": 2, "ddc": {"current": 42}})"},
    {"3.json", R"({"name": "Wide", "displayID": 3, "ddc": {"maximum": 255, "current": 51}})"},
    {"4.json", R"({"name": "Silent", "displayID": 4, "ddc": {"silent": true}})"},
    {"5.json", R"({"name": "Stubborn", "displayID": 5, "ddc": {"current": 10, "ignoresWrites": true}})"},
    {"6.json", R"({"name": "Override", "displayID": 6, "ddc": {"current": 70, "overridesTo": 70}})"},
    {"7.json", R"({"name": "Projector", "displayID": 7})"},
};
// What may come as an eighth.
constexpr char frozen[] = R"({"name": "Frozen", "displayID": 8, "native": {"writeFails": true}})";
constexpr char gone[] = R"({"name": "Gone", "displayID": 8, "online": false, "ddc": {}})";
constexpr char misspelt[] = R"({"name": "Odd", "displayID": 8, "ddc": {"maximun": 100}})";

constexpr char noReply[] = ": No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.\n";
constexpr char noService[] =
    ": No accessible hardware brightness service. The connection or App Sandbox may restrict access.\n";
constexpr char changed[] = ": The display connection changed. Refresh displays and try again.\n";
constexpr char overridden[] =
    ": The display reported a different brightness. Another app or a monitor preset may be overriding it.\n";
constexpr char notAccepted[] =
    ": The display did not accept the brightness command. Check DDC/CI in its on-screen menu.\n";
constexpr char table[] = "Panel      62.5%  Apple native brightness       display-1\n"
                         "Studio 27  42%    DDC/CI hardware backlight     display-2\n"
                         "Wide       20.0%  DDC/CI hardware backlight     display-3\n"
                         "Silent     —      Hardware control unavailable  display-4\n"
                         "Stubborn   10%    DDC/CI hardware backlight     display-5\n"
                         "Override   70%    DDC/CI hardware backlight     display-6\n"
                         "Projector  —      Hardware control unavailable  display-7\n";

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
    std::string changes; ///< files that hold something else than before: "2.json 33\n"
};

class CommandLineTest : public testing::Test {
protected:
    Outcome run(const std::vector<std::string>& arguments, const char* eighth = nullptr)
    {
        for (const auto& [name, text] : monitors)
            files.write(name, text);
        if (eighth)
            files.write("8.json", eighth);
        const auto before = contents();
        Outcome outcome = runHere(arguments);
        for (const auto& [name, text] : contents()) {
            if (!before.contains(name) || before.at(name) != text)
                outcome.changes += name + ' ' + text + '\n';
        }
        if (eighth)
            files.remove("8.json");
        return outcome;
    }

    std::optional<Platform> makeHere(PlatformOptions options = {})
    {
        options.simulationFolder = files.path();
        auto platform = makePlatform(options, clock, mainThread);
        return platform ? std::optional(std::move(*platform)) : std::nullopt;
    }

    MonitorFolder files;
    ManualClock clock;
    ManualMainThread mainThread;

private:
    Outcome runHere(const std::vector<std::string>& arguments)
    {
        const auto line = parseCommandLine(arguments);
        if (!line)
            return {exitMisused, "", line.error() + '\n', ""};
        if (!line->verb)
            return {exitDone, line->answer, "", ""};
        std::ostringstream out, err;
        int reports = 0;
        PlatformOptions options;
        options.report = [&](const std::string& text) {
            err << text << '\n';
            ++reports;
        };
        auto platform = makeHere(options);
        platform->hardware.pause = [](std::chrono::microseconds) {};
        DisplayHardware hardware(std::move(platform->hardware), mainThread);
        VerbContext context{
            *platform->screens, hardware, *platform->diagnostics, *platform->defaults, out, err, reports};
        const int status = awaitResult(mainThread, line->verb->run(context, line->values));
        return {status, out.str(), err.str(), ""};
    }

    /// Of a monitor its brightness, of any other file everything.
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> all;
        for (const QString& each : QDir(QString::fromStdString(files.path())).entryList(QDir::Files)) {
            const std::string name = each.toStdString();
            const std::string text = files.text(name);
            const auto monitor = nlohmann::json::parse(text, nullptr, false);
            std::ostringstream brightness;
            if (monitor.contains("native"))
                brightness << monitor["native"].value("brightness", -1.0);
            else if (monitor.contains("ddc"))
                brightness << monitor["ddc"].value("current", -1);
            all[name] = brightness.str().empty() ? text : brightness.str();
        }
        return all;
    }
};

struct Row {
    std::vector<std::string> arguments;
    int status;
    std::string out;
    std::string err = "";
    std::string changes = "";
    const char* eighth = nullptr;
};

TEST_F(CommandLineTest, DoesWhatItIsToldOnEveryKindOfDisplay)
{
    const std::string verified = ": Hardware brightness verified at ";
    const Row rows[] = {
        {{"list"}, 0, table},
        {{"list"}, 2, table, "8.json: \"ddc.maximun\" is not a known key.\n", "", misspelt},
        {{"get", "stud"}, 0, "42%\n"},
        {{"get", "Wide"}, 0, "20.0%\n", "8.json: \"ddc.maximun\" is not a known key.\n", "", misspelt},
        {{"get", "Silent"}, 1, "", std::string("Silent") + noReply},
        {{"get", "all"},
         1,
         "Panel: 62.5%\nStudio 27: 42%\nWide: 20.0%\nStubborn: 10%\nOverride: 70%\n",
         std::string("Silent") + noReply + "Projector" + noService},
        {{"get", "Office"}, 3, "", "There is no display \"Office\".\n"},
        {{"get", "S"},
         3,
         "",
         "\"S\" could be Studio 27 (display-2), Silent (display-4) or Stubborn (display-5).\n"},
        {{"set", "Studio", "33%"}, 0, "Studio 27" + verified + "33%.\n", "", "2.json 33\n"},
        {{"set", "display-3", "0.5"}, 0, "Wide" + verified + "50.2%.\n", "", "3.json 128\n"},
        {{"set", "Panel", "12.5%"}, 0, "Panel" + verified + "12.5%.\n", "", "1.json 0.125\n"},
        {{"set", "Panel", "-0.5%"}, 0, "Panel" + verified + "62.0%.\n", "", "1.json 0.62\n"},
        {{"set", "all", "+5%"},
         1,
         "Panel" + verified + "67.5%.\nStudio 27" + verified + "47%.\nWide" + verified + "25.1%.\n",
         std::string("Silent") + changed + "Silent" + noReply + "Stubborn" + overridden + "Override" + overridden +
             "Projector" + changed + "Projector" + noService,
         "1.json 0.675\n2.json 47\n3.json 64\n"},
        {{"set", "Frozen", "50%"}, 1, "", std::string("Frozen") + notAccepted, "", frozen},
        {{"set", "Gone", "50%"}, 1, "", std::string("Gone") + changed, "", gone},
        {{"set", "Office", "50%"}, 3, "", "There is no display \"Office\".\n"},
        {{"set", "all", "42"}, 2, "", "\"42\" is not a brightness. LEVEL is 42%, 0.42, +5% or -5%.\n"},
        {{"set", "all", "-5"}, 2, "", "\"-5\" is not a brightness. LEVEL is 42%, 0.42, +5% or -5%.\n"},
        {{"presets"}, 0, "", "There is no preset.\n"},
        {{"apply", "Night"}, 3, "", "There is no preset \"Night\".\n"},
        {{"--version"}, 0, versionText() + '\n'},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const Outcome outcome = run(row.arguments, row.eighth);
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err, row.err);
        EXPECT_EQ(outcome.changes, row.changes);
    }
}

TEST_F(CommandLineTest, ListsEveryFieldAndAppliesPresetsToWhatIsConnected)
{
    const auto list = nlohmann::json::parse(run({"list", "--json"}).out);
    ASSERT_EQ(list.size(), 7U);
    EXPECT_EQ(list[0].size(), 21U);
    EXPECT_EQ(list[0].at("brightness"), 0.625);
    EXPECT_EQ(list[2].at("maximum"), 255);
    EXPECT_EQ(list[3].at("brightness"), nullptr);

    std::string evening, everyDay;
    {
        const auto platform = makeHere();
        PresetStore store(*platform->defaults);
        const std::map<std::string, double> levels{{"display-1", 0.3}, {"display-2", 0.2}, {"display-3", 0.2},
                                                   {"display-4", 0.4}, {"display-5", 0.5}, {"display-9", 0.9}};
        const Uuid id = store.addPreset(levels, {{"display-9", "Beamer"}}).id;
        store.rename(id, "Evening");
        evening = id.toString();
        const Uuid other = store.addPreset({{"display-1", 0.5}}, {}).id;
        store.rename(other, "Every day");
        everyDay = other.toString();
    }
    EXPECT_EQ(run({"presets"}).out,
              "Evening  F16  6 displays  " + evening + "\nEvery day  F17  1 display  " + everyDay + "\n");
    EXPECT_EQ(nlohmann::json::parse(run({"presets", "--json"}).out)[0].at("values").at("display-2"), 0.2);
    const Outcome outcome = run({"apply", "evening"});
    EXPECT_EQ(outcome.status, exitRefused);
    EXPECT_EQ(outcome.out, "Panel: Hardware brightness verified at 30.0%.\n"
                           "Studio 27: Hardware brightness verified at 20%.\n"
                           "Wide: Hardware brightness verified at 20.0%.\n"
                           "Beamer: Not connected.\n");
    EXPECT_EQ(outcome.err, std::string("Silent") + changed + "Silent" + noReply + "Stubborn" + overridden);
    EXPECT_EQ(outcome.changes, "1.json 0.3\n2.json 20\n") << "the third has its level already";
    EXPECT_EQ(run({"apply", everyDay}).status, exitDone);
    EXPECT_EQ(run({"apply", "Eve"}).status, exitUnknown) << "two of them";
}

TEST_F(CommandLineTest, DoctorSaysWhatWasTriedAndWhatWouldHelp)
{
    const Outcome doctor = run({"doctor"});
    EXPECT_EQ(doctor.status, exitDone);
    for (const char* each :
         {"ok: ", "Silent (display-4)\n  Hardware control unavailable\n",
          "Panel (display-1)\n  Apple native brightness, 62.5%\n  tried: ",
          "-> Set \"ddc.silent\" to false in 4.json.", "-> Add a \"native\" or a \"ddc\" object to 7.json."})
        EXPECT_NE(doctor.out.find(each), std::string::npos) << each << "\n" << doctor.out;
    EXPECT_EQ(doctor.out.find("There is no display"), std::string::npos);
}

TEST_F(CommandLineTest, RefusesWrongUse)
{
    const std::vector<std::string> mistakes[] = {{"dance"},
                                                 {"list", "extra"},
                                                 {"list", "--simulate", "x"},
                                                 {"get"},
                                                 {"set", "all"},
                                                 {"set", "all", "5%", "6%"},
                                                 {"--bright"},
                                                 {"list", "get", "x"},
                                                 {"--show-panel", "--open-settings"},
                                                 {"--apply-preset", "x", "--show-panel"},
                                                 {"--apply-preset"}};
    for (const auto& arguments : mistakes) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, exitMisused) << testing::PrintToString(arguments);
        EXPECT_TRUE(outcome.err.ends_with("\nRun lumenvale --help for more.\n")) << outcome.err;
    }
    const std::string help = run({"--help"}).out;
    for (const Verb& verb : verbs())
        EXPECT_NE(help.find(verb.name + ' '), std::string::npos) << verb.name;
    EXPECT_NE(help.find("Exit status: 0 done"), std::string::npos);
    const std::string ofSet = run({"set", "--help"}).out;
    EXPECT_NE(ofSet.find("DISPLAY LEVEL\n"), std::string::npos) << ofSet;
}

TEST(CommandLine, TakesTheProgramsOptionsBeforeTheVerb)
{
    using Action = DesktopRequest::Action;
    const struct {
        std::vector<std::string> arguments;
        std::optional<std::string> folder;
        std::string verb;
        std::optional<DesktopRequest> request = {};
    } rows[] = {
        {{}, {}, ""},
        {{"list"}, {}, "list"},
        {{"--verbose", "--simulate", "monitors", "list"}, "monitors", "list"},
        {{"--simulate", "list"}, "", "list"},
        {{"--simulate"}, "", ""},
        {{"--simulate=list"}, "list", ""}, // a folder that is named like a verb
        {{"--show-panel"}, {}, "", DesktopRequest{Action::showPanel, "", ""}},
        {{"--simulate", "/a b", "--open-settings"}, "/a b", "", DesktopRequest{Action::openSettings, "", ""}},
        {{"--apply-preset", "Late evening"}, {}, "", DesktopRequest{Action::applyPreset, "Late evening", ""}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const auto line = parseCommandLine(row.arguments);
        ASSERT_TRUE(line);
        EXPECT_EQ(line->simulationFolder, row.folder);
        EXPECT_EQ(line->verb ? line->verb->name : "", row.verb);
        EXPECT_EQ(line->request, row.request);
        EXPECT_EQ(line->isVerbose, !row.arguments.empty() && row.arguments[0] == "--verbose");
    }
}

TEST(CommandLine, ReadsFourFormsOfALevelAndNoOther)
{
    const std::pair<const char*, LevelArgument> levels[] = {
        {"42%", {false, 0.42}}, {"100%", {false, 1.0}}, {"12.5%", {false, 0.125}}, {"0.42", {false, 0.42}},
        {"0", {false, 0.0}},    {"1", {false, 1.0}},    {"+0.5%", {true, 0.005}},  {"-100%", {true, -1.0}}};
    for (const auto& [text, level] : levels)
        EXPECT_EQ(parseLevel(text), level) << text;
    for (const char* text : {"",      "%",    "+",    "-",    "+%",   "42",   "1.01", "101%", "+101%",  "-0.05",
                             "+0.05", ".5",   "5.",   "5.%",  "0,42", "1e-1", "0x1",  "nan",  "inf",    "NaN%",
                             " 42%",  "42% ", "4 2%", "42%%", "--5%", "+-5%", "٤٢%",  "42٪",  "1.2.3%", "42%0"})
        EXPECT_EQ(parseLevel(text), std::nullopt) << text;
}

TEST(CommandLine, PrefersTheCloserFitAndNamesTheCandidatesOfAnAmbiguousText)
{
    const std::vector<Candidate> displays = {{"37D8-A", "Studio 27"}, {"37D8-B", "Studio"},
                                             {"display-2", "Écran"},  {"display-3", "studio"},
                                             {"display-4", "Twin"},   {"display-5", "Twin"}};
    const std::pair<const char*, const char*> rows[] = {
        {"37d8-a", "37D8-A"},
        {"Studio", "37D8-B"},
        {"studio", "display-3"},
        {"STUDIO 2", "37D8-A"},
        {"éc", "display-2"},
        {"Twin", "\"Twin\" could be Twin (display-4) or Twin (display-5)."},
        {"STUDIO", "\"STUDIO\" could be Studio (37D8-B) or studio (display-3)."},
        {"37", "\"37\" could be Studio 27 (37D8-A) or Studio (37D8-B)."},
        {"Office", "There is no display \"Office\"."},
        {"", "There is no display \"\"."},
    };
    for (const auto& [text, expected] : rows) {
        const auto chosen = chooseByName(displays, text, "display");
        EXPECT_EQ(chosen ? displays[*chosen].id : chosen.error(), expected) << text;
    }
    EXPECT_EQ(chooseDisplays({}, "all").error(), "There is no display.");
}

} // namespace
} // namespace lumenvale
