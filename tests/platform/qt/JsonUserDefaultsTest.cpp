// SPDX-License-Identifier: MIT
#include "platform/qt/JsonUserDefaults.h"

#include "support/ManualClock.h"
#include "support/MonitorFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

PropertyData bytes(const std::string& text) { return {text.begin(), text.end()}; }

struct JsonUserDefaultsTest : testing::Test {
    JsonUserDefaults open()
    {
        return {path, folder.path(), clock, [this](const std::string& text) { reports.push_back(text); }};
    }
    bool remove() const { return QFile::remove(QString::fromStdString(path)); }
    /// Another process that sets `prefix`1, `prefix`2 and so on, each with a save of its own.
    void startSaver(QProcess& process, const char* prefix, const char* count) const
    {
        process.start(QCoreApplication::applicationFilePath(), {QString::fromStdString(path), prefix, count});
    }

    MonitorFolder folder;
    std::string path = folder.path() + "/preferences.json";
    ManualClock clock;
    Texts reports;
};

TEST_F(JsonUserDefaultsTest, GivesEveryValueBackWithItsTypeFromTheDisk)
{
    std::map<std::string, PropertyValue> values;
    for (const PropertyValue& each : std::initializer_list<PropertyValue>{
             true, std::numeric_limits<std::int64_t>::min(), 1.0, 0.1, "", "5", "Größe 🖥\n\"",
             bytes("\xFF[1]"), bytes("[{\"a\":1.0}]"), bytes("[ ]"), bytes("{\"$value\":1}"), bytes("null"),
             PropertyArray(), PropertyArray{1, true, bytes("[1]"), PropertyArray{"nested"}},
             PropertyDictionary{{"b", 1}, {"$data", "AAAA"}, {"", PropertyDictionary{{"$data", "text"}}}}}) {
        values.emplace("key" + std::to_string(values.size()), each);
        values.emplace("brightnessPresets." + std::to_string(values.size()), each);
    }
    for (JsonUserDefaults defaults = open(); const auto& [key, value] : values)
        defaults.set(key, value);
    const JsonUserDefaults defaults = open();
    for (const auto& [key, value] : values)
        EXPECT_EQ(defaults.value(key), value) << key;
    EXPECT_EQ(reports, Texts());
}

TEST_F(JsonUserDefaultsTest, IsAFileThatAPersonCanReadAndEdit)
{
    folder.write("preferences.json", "{\"future\": null, \"displayOrder\": [\"A\"], \"old\": 1}");
    open().set("brightnessPresets", bytes(R"([{"name":"Night"}])"));
    open().set("old", std::nullopt);
    EXPECT_EQ(open().value("displayOrder"), PropertyValue(PropertyArray{"A"}));
    EXPECT_EQ(folder.text("preferences.json"),
              "{\n  \"future\": null,\n  \"displayOrder\": [\n    \"A\"\n  ],\n"
              "  \"brightnessPresets\": [\n    {\n      \"name\": \"Night\"\n    }\n  ]\n}\n");
    ASSERT_TRUE(QDir(QString::fromStdString(folder.path())).mkdir("old"));
    folder.write("old/preferences.json", "{\"appPresentation\": \"both\"}");
    EXPECT_EQ(open().domain("old"), (PropertyDictionary{{"appPresentation", "both"}}));
}

TEST_F(JsonUserDefaultsTest, WritesAtMostTwiceASecondAndKeepsWhatOthersWrote)
{
    JsonUserDefaults defaults = open();
    int writes = 0;
    for (int i = 1; i <= 1000; ++i) { // ten seconds of a dragged slider
        defaults.set("level", i);
        clock.advance(10ms);
        writes += remove() ? 1 : 0;
    }
    EXPECT_NEAR(writes, 19, 1);
    defaults.set("level", 1001);
    folder.write("preferences.json", "{\"level\": 5, \"other\": 6}");
    clock.advance(500ms);
    EXPECT_EQ(open().value("level"), PropertyValue(1001));
    EXPECT_EQ(open().value("other"), PropertyValue(6));
    EXPECT_EQ(clock.pendingCount(), 0U);
}

TEST_F(JsonUserDefaultsTest, ReportsAFailureInTheSystemsWordsAndTriesAgain)
{
    JsonUserDefaults defaults = open();
    Texts words;
    const auto subscription = defaults.observeFailures([&](const std::string& text) { words.push_back(text); });
    QDir().mkdir(QString::fromStdString(path));
    defaults.set("level", 1);
    defaults.flush();
    ASSERT_TRUE(words.size() == 1 && words[0].starts_with(path + ": "));
    QDir().rmdir(QString::fromStdString(path));
    defaults.flush();
    EXPECT_EQ(words.back(), "") << "the failure is over";
    EXPECT_EQ(open().value("level"), PropertyValue(1));
}

TEST_F(JsonUserDefaultsTest, KeepsCopiesOfWhatItCannotReadBeforeItReplacesIt)
{
    folder.write("preferences.json", "{\"a\": 1,}");
    JsonUserDefaults defaults = open();
    EXPECT_EQ(reports, Texts{path + " is not valid JSON at byte 9. It is copied before anything is saved."});
    defaults.set("level", 1);
    defaults.flush();
    EXPECT_EQ(folder.text("preferences.json.damaged"), "{\"a\": 1,}");
    folder.write("preferences.json", std::string(100'000, '[')); // an editor's mistake while the program runs
    defaults.set("other", 2);
    defaults.flush();
    EXPECT_EQ(folder.text("preferences.json.damaged.2").size(), 100'000U);
    EXPECT_EQ(open().value("level"), PropertyValue(1));
}

TEST_F(JsonUserDefaultsTest, SlowLeavesTheOldOrTheNewFileAtWhateverMomentTheProcessIsKilled)
{
    std::minstd_rand random(2);
    for (int round = 0; round < 200; ++round) {
        remove();
        open().set("filler", std::string(20'000, 'x'));
        QProcess saver;
        startSaver(saver, "key", "1000000");
        const std::string awaited = "key" + std::to_string(1 + random() % 3);
        while (!open().value(awaited))
            ASSERT_FALSE(saver.waitForFinished(1));
        for (volatile unsigned spin = random() % 2'000'000; spin != 0;) // any moment of a later save
            spin = spin - 1;
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());
        ASSERT_TRUE(open().value("filler") && open().value(awaited) && reports.empty()) << "round " << round;
    }
}

TEST_F(JsonUserDefaultsTest, LosesNoKeyWhenTwoProcessesWriteAtOnce)
{
    QProcess one, other;
    startSaver(one, "one", "30");
    startSaver(other, "two", "30");
    ASSERT_TRUE(one.waitForFinished() && other.waitForFinished());
    for (int i = 1; i <= 30; ++i)
        EXPECT_TRUE(open().value("one" + std::to_string(i)) && open().value("two" + std::to_string(i))) << i;
}

} // namespace
} // namespace lumenvale

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4 && !arguments[1].startsWith('-')) { // the other process: FILE PREFIX COUNT
        lumenvale::ManualClock clock;
        lumenvale::JsonUserDefaults defaults(arguments[1].toStdString(), "", clock, nullptr);
        for (int i = 1; i <= arguments[3].toInt(); ++i) {
            defaults.set(arguments[2].toStdString() + std::to_string(i), i);
            defaults.flush();
        }
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
