// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedFolder.h"

#include "support/MonitorFolder.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

std::vector<std::string> namesIn(SimulatedFolder& folder)
{
    std::vector<std::string> names;
    for (const SimulatedDisplay& each : folder.read().displays)
        names.push_back(each.monitor.name);
    return names;
}

TEST(SimulatedFolder, ListsJsonFilesInNameOrderAndNothingElse)
{
    MonitorFolder files;
    files.write("b.json", R"({"name": "B"})");
    files.write("a.json", R"({"name": "A"})");
    files.write("C.json", R"({"name": "C"})");
    files.write("preferences.json", "{}");
    files.write(".hidden.json", R"({"name": "H"})");
    files.write("d.json.Xy12ab", R"({"name": "D"})");
    SimulatedFolder folder(files.path());
    EXPECT_EQ(namesIn(folder), (std::vector<std::string>{"C", "A", "B"}));
}

TEST(SimulatedFolder, KeepsTheOthersWhenAFileIsBroken)
{
    MonitorFolder files;
    files.write("1.json", R"({"name": "One", "displayID": 1, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230"})");
    files.write("2.json", R"({"name": "Two", "colour": "red"})");
    files.write("3.json", R"({"name": "Three", "displayID": 1})");
    files.write("4.json", R"({"name": "Four", "displayID": 4, "uuid": "37d8832a-2d66-02ca-b9f7-8f30a301b230"})");
    files.write("5.json", R"({"name": "Five", "displayID": 4})");
    SimulatedFolder folder(files.path());
    EXPECT_EQ(namesIn(folder), (std::vector<std::string>{"One", "Five"}));
    EXPECT_EQ(folder.read().problems, (std::vector<std::string>{R"(2.json: "colour" is not a known key.)",
                                                                R"(3.json: the "displayID" 1 is taken by 1.json.)",
                                                                R"(4.json: the "uuid" is taken by 1.json.)"}));
}

TEST(SimulatedFolder, KeepsADisplaysNumberWhenOthersComeAndGo)
{
    MonitorFolder files;
    files.write("m.json", R"({"name": "M"})");
    SimulatedFolder folder(files.path());
    const std::uint32_t before = folder.read().displays.at(0).displayID;
    files.write("a.json", R"({"name": "A"})");
    EXPECT_EQ(folder.read().displays.at(1).displayID, before);
}

TEST(SimulatedFolder, FindsADisplayAsItsFileIsNow)
{
    MonitorFolder files;
    files.write("a.json", R"({"name": "A", "displayID": 1})");
    SimulatedFolder folder(files.path());
    EXPECT_EQ(folder.find(1)->monitor.name, "A");

    files.write("a.json", R"({"name": "A", "displayID": 2})"); // and another takes its number
    files.write("b.json", R"({"name": "B", "displayID": 1})");
    EXPECT_EQ(folder.find(1)->fileName, "b.json");
    EXPECT_EQ(folder.find(2)->fileName, "a.json");

    files.remove("b.json");
    EXPECT_FALSE(folder.find(1));
}

} // namespace
} // namespace lumenvale
