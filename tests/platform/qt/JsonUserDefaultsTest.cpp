// SPDX-License-Identifier: MIT
#include "platform/qt/JsonUserDefaults.h"

#include "support/ManualClock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

PropertyData bytes(const std::string& text) { return {text.begin(), text.end()}; }

class JsonUserDefaultsTest : public testing::Test {
protected:
    JsonUserDefaults open()
    {
        return {path.toStdString(), folder.path().toStdString(), clock,
                [this](const std::string& text) { reports.push_back(text); }};
    }

    void write(const QByteArray& text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) >= 0);
    }

    static QByteArray textOf(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Another process that sets `prefix`1 to `prefix``count`, each with a save of its own.
    void startSaver(QProcess& process, const char* prefix, int count) const
    {
        process.start(QCoreApplication::applicationFilePath(),
                      {"--save-keys", path, prefix, QString::number(count)});
    }

    QTemporaryDir folder;
    QString path = folder.filePath("preferences.json");
    ManualClock clock;
    std::vector<std::string> reports;
};

TEST_F(JsonUserDefaultsTest, GivesEveryValueBackWithItsTypeFromTheDisk)
{
    using Limits = std::numeric_limits<std::int64_t>;
    std::map<std::string, PropertyValue> values = {{"brightnessPresets", bytes(R"([{"name":"Ä","values":{}}])")}};
    for (const PropertyValue& each : std::initializer_list<PropertyValue>{
             true, 1, Limits::min(), Limits::max(), 1.0, 0.1, 1e300, -0.0, "", "true", "5", "Größe 🖥\n\t\"",
             std::string("nul\0", 4), PropertyData(), bytes("\xFF[1]"), PropertyArray(),
             PropertyArray{1, true, 0.5, bytes("[1]"), PropertyArray{"nested"}},
             PropertyDictionary{{"b", 1}, {"$data", "AAAA"}, {"", PropertyDictionary{{"$data", "text"}}}}}) {
        values.emplace("key" + std::to_string(values.size()), each);
        values.emplace("brightnessPresets." + std::to_string(values.size()), each);
    }
    for (const char* text : {"[ ]", "[1e1]", "{\"$value\":1}", "null", "7", "\"\\u00e4\"", "[[[]]]"})
        values.emplace("brightnessPresets." + std::to_string(values.size()), bytes(text));
    {
        JsonUserDefaults defaults = open();
        for (const auto& [key, value] : values)
            defaults.set(key, value);
    }
    const JsonUserDefaults defaults = open();
    for (const auto& [key, value] : values)
        EXPECT_EQ(defaults.value(key), value) << key;
    EXPECT_EQ(reports, std::vector<std::string>());
}

TEST_F(JsonUserDefaultsTest, IsAFileThatAPersonCanReadAndEdit)
{
    write("{\"future\": null, \"displayOrder\": [\"A\"], \"old\": 1}");
    {
        JsonUserDefaults defaults = open();
        EXPECT_EQ(defaults.value("displayOrder"), PropertyValue(PropertyArray{"A"}));
        EXPECT_EQ(defaults.value("future"), std::nullopt);
        defaults.set("brightnessPresets", bytes(R"([{"name":"Night"}])"));
        defaults.set("old", std::nullopt);
    }
    EXPECT_EQ(textOf(path), "{\n  \"future\": null,\n  \"displayOrder\": [\n    \"A\"\n  ],\n"
                            "  \"brightnessPresets\": [\n    {\n      \"name\": \"Night\"\n    }\n  ]\n}\n");
    EXPECT_EQ(open().domain(".."), PropertyDictionary());
    ASSERT_TRUE(QDir(folder.path()).mkdir("com.example.Old"));
    path = folder.filePath("com.example.Old/preferences.json");
    write("{\"appPresentation\": \"both\"}");
    EXPECT_EQ(open().domain("com.example.Old"), (PropertyDictionary{{"appPresentation", "both"}}));
}

TEST_F(JsonUserDefaultsTest, WritesAtMostTwiceASecondAndOnlyWhatChanged)
{
    JsonUserDefaults defaults = open();
    int writes = 0;
    for (int i = 1; i <= 1000; ++i) { // ten seconds of a dragged slider
        defaults.set("level", i);
        clock.advance(10ms);
        writes += QFile::remove(path) ? 1 : 0;
    }
    EXPECT_GE(writes, 18);
    EXPECT_LE(writes, 20);
    defaults.flush();
    write("{\"level\": 5, \"other\": 6}");
    defaults.flush();
    EXPECT_EQ(open().value("level"), PropertyValue(5)) << "nothing was changed since";
    defaults.set("level", 7);
    clock.advance(500ms);
    EXPECT_EQ(open().value("level"), PropertyValue(7));
    EXPECT_EQ(open().value("other"), PropertyValue(6));
    EXPECT_EQ(clock.pendingCount(), 0U);
}

TEST_F(JsonUserDefaultsTest, ReportsAFailureInTheSystemsWordsAndTriesAgain)
{
    JsonUserDefaults defaults = open();
    std::vector<std::string> words;
    const auto subscription = defaults.observeFailures([&](const std::string& text) { words.push_back(text); });
    ASSERT_TRUE(QDir().mkdir(path));
    defaults.set("level", 1);
    clock.advance(500ms);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].find(path.toStdString() + ": "), 0U) << words[0];
    ASSERT_TRUE(QDir().rmdir(path));
    defaults.set("other", 2);
    clock.advance(500ms);
    ASSERT_EQ(words.size(), 2U);
    EXPECT_EQ(words[1], "") << "the failure is over";
    EXPECT_EQ(open().value("level"), PropertyValue(1));
}

TEST_F(JsonUserDefaultsTest, KeepsCopiesOfWhatItCannotReadBeforeItReplacesIt)
{
    write("{\"appPresentation\": \"dock\",}");
    JsonUserDefaults defaults = open();
    EXPECT_EQ(reports, std::vector<std::string>{path.toStdString() + " is not valid JSON at byte 28. It is copied "
                                                                     "before anything is saved."});
    defaults.set("level", 1);
    defaults.flush();
    EXPECT_EQ(textOf(path + ".damaged"), "{\"appPresentation\": \"dock\",}");
    write(QByteArray(100'000, '[')); // an editor's mistake while the program runs
    defaults.set("other", 2);
    defaults.flush();
    EXPECT_EQ(textOf(path + ".damaged.2").size(), 100'000);
    EXPECT_EQ(open().value("level"), PropertyValue(1));
    EXPECT_EQ(open().value("other"), PropertyValue(2));
    EXPECT_FALSE(QFile::exists(path + ".damaged.3"));
}

TEST_F(JsonUserDefaultsTest, SlowLeavesTheOldOrTheNewFileAtWhateverMomentTheProcessIsKilled)
{
    const std::string filler(20'000, 'x');
    std::minstd_rand random(2);
    for (int round = 0; round < 200; ++round) {
        QFile::remove(path);
        open().set("filler", filler);
        QProcess saver;
        startSaver(saver, "key", 1'000'000);
        const std::string awaited = "key" + std::to_string(1 + random() % 3);
        while (!open().value(awaited))
            ASSERT_FALSE(saver.waitForFinished(1)) << saver.readAllStandardError().toStdString();
        for (volatile unsigned spin = random() % 8'000'000; spin != 0;) // any moment of a later save
            spin = spin - 1;
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());
        const JsonUserDefaults defaults = open();
        ASSERT_EQ(defaults.value("filler"), PropertyValue(filler)) << "round " << round;
        ASSERT_TRUE(defaults.value(awaited)) << "what was on the disk is lost";
        ASSERT_TRUE(reports.empty());
    }
}

TEST_F(JsonUserDefaultsTest, LosesNoKeyWhenTwoProcessesWriteAtOnce)
{
    constexpr int count = 30;
    QProcess one, other;
    startSaver(one, "one", count);
    startSaver(other, "two", count);
    ASSERT_TRUE(one.waitForFinished() && other.waitForFinished());
    const JsonUserDefaults defaults = open();
    for (int i = 1; i <= count; ++i) {
        EXPECT_EQ(defaults.value("one" + std::to_string(i)), PropertyValue(i));
        EXPECT_EQ(defaults.value("two" + std::to_string(i)), PropertyValue(i));
    }
}

} // namespace
} // namespace lumenvale
