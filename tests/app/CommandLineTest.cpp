// SPDX-License-Identifier: MIT
// The command line on simulated monitors: the real parser, platform and hardware controller, without its waits.
#include "app/cli/CommandLine.h"

#include "platform/Platform.h"
#include "presets/PresetStore.h"
#include "support/ManualClock.h"
#include "support/ManualMainThread.h"
#include "support/MonitorFolder.h"

#include <QDir>
#include <gtest/gtest.h>
#include <iterator>
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
    {"7.json", R"({"name": "Écran", "displayID": 7})"},
};
// What may come as an eighth.
constexpr char gone[] = R"({"name": "Gone", "displayID": 8, "online": false, "ddc": {}})";
constexpr char twin[] = R"({"name": "panel", "displayID": 8, "ddc": {"current": 8}})";
constexpr char dark[] = R"({"name": "Dark", "displayID": 8, "isBuiltIn": true, "native": {"readFails": true}})";
constexpr char misspelt[] = R"({"name": "Odd", "displayID": 8, "ddc": {"maximun": 100}})";

constexpr char noReply[] = ": No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.\n";
constexpr char noService[] =
    ": No accessible hardware brightness service. The connection or App Sandbox may restrict access.\n";
constexpr char changed[] = ": The display connection changed. Refresh displays and try again.\n";
constexpr char overridden[] =
    ": The display reported a different brightness. Another app or a monitor preset may be overriding it.\n";
constexpr char table[] = "Panel      62.5%  Apple native brightness       display-1\n"
                         "Studio 27  42%    DDC/CI hardware backlight     display-2\n"
                         "Wide       20.0%  DDC/CI hardware backlight     display-3\n"
                         "Silent     —      Hardware control unavailable  display-4\n"
                         "Stubborn   10%    DDC/CI hardware backlight     display-5\n"
                         "Override   70%    DDC/CI hardware backlight     display-6\n"
                         "Écran      —      Hardware control unavailable  display-7\n";

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
    std::string changes; ///< files that hold something else than before: "2.json 33\n"
};

std::vector<std::string> words(const char* text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

class CommandLineTest : public testing::Test {
protected:
    /// Runs the command where the monitors and perhaps an eighth are connected.
    Outcome run(const std::string& command, const char* eighth = nullptr)
    {
        for (const auto& [name, text] : monitors)
            files.write(name, text);
        if (eighth)
            files.write("8.json", eighth);
        const auto before = contents();
        Outcome outcome = runHere(words(command.c_str()));
        for (const auto& [name, text] : contents()) {
            if (!before.contains(name) || before.at(name) != text)
                outcome.changes += name + ' ' + text + '\n';
        }
        if (eighth)
            files.remove("8.json");
        return outcome;
    }

    Platform makeHere(PlatformOptions options = {})
    {
        options.simulationFolder = files.path();
        return std::move(*makePlatform(options, clock, mainThread));
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
        options.report = [&](const std::string& text) { ++reports, err << text << '\n'; };
        Platform platform = makeHere(options);
        platform.hardware.pause = [](std::chrono::microseconds) {};
        DisplayHardware hardware(std::move(platform.hardware), mainThread);
        VerbContext context{
            *platform.screens, hardware, *platform.diagnostics, *platform.defaults, platform.words, out, err,
            *platform.events,  clock};
        const int status = awaitResult(mainThread, line->verb->run(context, line->values));
        return {exitStatus(status, reports), out.str(), err.str(), ""};
    }

    /// Of a monitor its brightness, of any other file everything.
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> all;
        for (const QString& each : QDir(QString::fromStdString(files.path())).entryList(QDir::Files)) {
            std::string& held = all[each.toStdString()] = files.text(each.toStdString());
            const auto monitor = parseJson(held).value_or(Json());
            if (monitor.contains("native"))
                held = QString::number(monitor["native"].value("brightness", -1.0)).toStdString();
            else if (monitor.contains("ddc"))
                held = std::to_string(monitor["ddc"].value("current", -1));
        }
        return all;
    }
};

TEST_F(CommandLineTest, DoesWhatItIsToldOnEveryKindOfDisplay)
{
    const std::string silent = "Silent";
    const std::string verified = ": Hardware brightness verified at ";
    const struct {
        const char* command;
        int status;
        std::string out;
        std::string err = "";
        std::string changes = "";
        const char* eighth = nullptr;
    } rows[] = {
        {"list", 2, table,
         "8.json: \"ddc.maximun\" is not a known key.\n" + silent + noReply + "Écran" + noService, "", misspelt},
        {"get Wide", 2, "20.0%\n", "8.json: \"ddc.maximun\" is not a known key.\n", "", misspelt},
        {"get Silent", 1, "", silent + noReply},
        {"get all", 1, "Panel: 62.5%\nStudio 27: 42%\nWide: 20.0%\nStubborn: 10%\nOverride: 70%\n",
         silent + noReply + "Écran" + noService},
        {"get panel", 0, "8%\n", "", "", twin},
        {"get PANEL", 3, "", "\"PANEL\" could be Panel (display-1) or panel (display-8).\n", "", twin},
        {"get Office", 3, "", "There is no display \"Office\".\n"},
        {"get S", 3, "", "\"S\" could be Studio 27 (display-2), Silent (display-4) or Stubborn (display-5).\n"},
        {"set Studio 33%", 0, "Studio 27" + verified + "33%.\n", "", "2.json 33\n"},
        {"set display-3 0.5", 0, "Wide" + verified + "50.2%.\n", "", "3.json 128\n"},
        {"set Panel -0.5%", 0, "Panel" + verified + "62.0%.\n", "", "1.json 0.62\n"},
        {"set all +5%", 1,
         "Panel" + verified + "67.5%.\nStudio 27" + verified + "47%.\nWide" + verified + "25.1%.\n",
         silent + noReply + "Stubborn" + overridden + "Override" + overridden + "Écran" + noService,
         "1.json 0.675\n2.json 47\n3.json 64\n"},
        {"set Gone 50%", 1, "", std::string("Gone") + changed, "", gone},
        {"set all 42", 2, "", "\"42\" is not a brightness. LEVEL is 42%, 0.42, +5% or -5%.\n"},
        {"presets", 0, "", "There is no preset.\n"},
        {"apply Night", 3, "", "There is no preset \"Night\".\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        const Outcome outcome = run(row.command, row.eighth);
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err, row.err);
        EXPECT_EQ(outcome.changes, row.changes);
    }
}

TEST_F(CommandLineTest, ListsEveryFieldAndAppliesPresetsToWhatIsConnected)
{
    const auto list = parseJson(run("list --json").out).value();
    EXPECT_EQ(list[0].size(), 21U);
    EXPECT_EQ(list[2].at("maximum").get<int>(), 255);
    EXPECT_TRUE(list[3].at("brightness").is_null());
    std::string ids[2];
    {
        const auto defaults = std::move(makeHere().defaults);
        PresetStore store(*defaults);
        for (std::string& each : ids)
            each = store
                       .addPreset({{"display-1", 0.3}, {"display-4", 0.4}, {"display-9", 0.9}},
                                  {{"display-9", "Beamer"}})
                       .id.toString();
        store.rename(*Uuid::parse(ids[0]), "Evening");
        store.rename(*Uuid::parse(ids[1]), "Every day");
    }
    EXPECT_EQ(run("presets").out,
              "Evening  F16  3 displays  " + ids[0] + "\nEvery day  F17  3 displays  " + ids[1] + "\n");
    const Outcome outcome = run("apply evening");
    EXPECT_EQ(outcome.status, exitRefused);
    EXPECT_EQ(outcome.out, "Panel: Hardware brightness verified at 30.0%.\nBeamer: Not connected.\n");
    EXPECT_EQ(outcome.err, std::string("Silent") + noReply);
    EXPECT_EQ(outcome.changes, "1.json 0.3\n");
    EXPECT_EQ(run("apply Eve").status, exitUnknown) << "two of them";
}

TEST_F(CommandLineTest, ExplainsWhatIsMissingAndRefusesWrongUse)
{
    const auto [status, doctor, err, changes] = run("doctor", dark);
    EXPECT_EQ(status, 1) << "three cannot be controlled";
    for (const char* each : {"ok: ", "Silent (display-4)\n  Hardware control unavailable\n  tried: ",
                             "Panel (display-1)\n  Apple native brightness, 62.5%\n  tried: ",
                             "-> Set \"ddc.silent\" to false in 4.json.",
                             "functions, without a reading; DDC/CI is for external monitors.\n"})
        EXPECT_NE(doctor.find(each), std::string::npos) << each << "\n" << doctor;
    for (const char* command :
         {"dance", "list extra", "list --simulate x", "get", "set all", "set all 5% 6%", "--bright", "list get x",
          "--show-panel --open-settings", "--apply-preset x --show-panel", "--apply-preset"})
        EXPECT_TRUE(run(command).err.ends_with("\nRun lumenvale --help for more.\n")) << command;
    for (const Verb& verb : verbs())
        EXPECT_NE(run("--help").out.find(verb.name + ' '), std::string::npos) << verb.name;
}

TEST(CommandLine, TakesTheProgramsOptionsBeforeTheVerb)
{
    const auto line = parseCommandLine(words("--verbose --simulate monitors list"));
    EXPECT_TRUE(line->isVerbose);
    EXPECT_EQ(line->verb->name + ' ' + *line->simulationFolder, "list monitors");
    EXPECT_EQ(parseCommandLine(words("--simulate list"))->simulationFolder, "");
    const auto named =
        parseCommandLine(words("--simulate=list --apply-preset Late")); // a folder named like a verb
    EXPECT_FALSE(named->verb);
    EXPECT_EQ(named->simulationFolder, "list");
    EXPECT_EQ(named->request->preset, "Late");
}

TEST(CommandLine, ReadsFourFormsOfALevelAndNoOther)
{
    EXPECT_EQ(parseLevel("12.5%"), (LevelArgument{false, 0.125}));
    EXPECT_EQ(parseLevel("0.42"), (LevelArgument{false, 0.42}));
    EXPECT_EQ(parseLevel("1"), (LevelArgument{false, 1.0}));
    EXPECT_EQ(parseLevel("+0.5%"), (LevelArgument{true, 0.005}));
    EXPECT_EQ(parseLevel("-100%"), (LevelArgument{true, -1.0}));
    for (const char* text : {"",      "%",    "+",    "-",    "+%",   "42",   "1.01", "101%", "+101%",  "-0.05",
                             "+0.05", ".5",   "5.",   "5.%",  "0,42", "1e-1", "0x1",  "nan",  "inf",    "NaN%",
                             " 42%",  "42% ", "4 2%", "42%%", "--5%", "+-5%", "٤٢%",  "42٪",  "1.2.3%", "42%0"})
        EXPECT_EQ(parseLevel(text), std::nullopt) << text;
}

} // namespace
} // namespace lumenvale
