// SPDX-License-Identifier: MIT
#include "platform/qt/IniUserDefaults.h"

#include "support/ManualClock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

class IniUserDefaultsTest : public testing::Test {
protected:
    std::string pathOf(const char* name) const { return folder.filePath(name).toStdString(); }

    IniUserDefaults open() { return IniUserDefaults(path, folder.path().toStdString(), clock); }

    void write(const std::string& target, const QByteArray& text)
    {
        QFile file(QString::fromStdString(target));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// Another process that sets `prefix`1 to `prefix``count`, each with a save of its own.
    void startSaver(QProcess& process, const char* prefix, int count) const
    {
        process.start(QCoreApplication::applicationFilePath(),
                      {"--save-keys", QString::fromStdString(path), prefix, QString::number(count)});
    }

    QTemporaryDir folder;
    std::string path = pathOf("preferences.ini");
    ManualClock clock;
};

TEST_F(IniUserDefaultsTest, GivesEveryValueBackWithItsTypeFromTheDisk)
{
    using Limits = std::numeric_limits<std::int64_t>;
    std::vector<PropertyValue> values = {true,
                                         0,
                                         1,
                                         Limits::min(),
                                         Limits::max(),
                                         0.0,
                                         1.0,
                                         0.1,
                                         1e300,
                                         std::numeric_limits<double>::denorm_min(),
                                         -std::numeric_limits<double>::infinity(),
                                         "",
                                         "dock",
                                         "true",
                                         "5",
                                         "null",
                                         "\"quoted\"",
                                         "[\"not an array\"]",
                                         "{\"data\":\"AAAA\"}",
                                         "@ByteArray(x)",
                                         "@Variant(\\0\\0)",
                                         "@@",
                                         " spaces ",
                                         "a, b;c=d\\n\n\t\r#%20",
                                         "Größe 日本語 🖥",
                                         std::string("nul\0inside\0001", 12),
                                         std::string("\xFF\xFE not UTF-8"),
                                         "\xEF\xBB\xBFmark",
                                         PropertyData(),
                                         PropertyData{0},
                                         PropertyArray(),
                                         PropertyArray{"A", "B, C", "", "\"", "5"},
                                         PropertyArray{"only one"},
                                         PropertyArray{1, true, 0.5, PropertyData{1, 2}, PropertyArray{"nested"}},
                                         PropertyDictionary{{"b", 1}, {"a", "text"}, {"", PropertyDictionary()}}};
    std::minstd_rand random(1);
    for (int i = 0; i < 300; ++i) {
        std::string text(random() % 12, '\0');
        for (char& each : text)
            each = static_cast<char>(i % 2 == 0 ? random() % 128 : random() % 256);
        values.emplace_back(i % 3 == 0 ? PropertyValue(PropertyData(text.begin(), text.end()))
                                       : PropertyValue(text));
    }
    {
        IniUserDefaults defaults = open();
        for (std::size_t i = 0; i < values.size(); ++i)
            defaults.set("key" + std::to_string(i), values[i]);
        defaults.set("minus", -0.0);
        defaults.set("nan", std::nan(""));
    }
    const IniUserDefaults defaults = open();
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(defaults.value("key" + std::to_string(i)), values[i]) << "value " << i;
    EXPECT_TRUE(std::signbit(readDefault<double>(defaults, "minus").value_or(1.0)));
    EXPECT_TRUE(std::isnan(readDefault<double>(defaults, "nan").value_or(0.0)));
}

TEST_F(IniUserDefaultsTest, ReadsWhatPeopleWriteByHand)
{
    write(path, "[General]\nappPresentation=dock\nhasOpenedSettings=true\ndisplayOrder=A, B\nlevel=0.5\n");
    const IniUserDefaults defaults = open();
    EXPECT_EQ(defaults.value("appPresentation"), PropertyValue("dock"));
    EXPECT_EQ(defaults.value("hasOpenedSettings"), PropertyValue(true));
    EXPECT_EQ(defaults.value("displayOrder"), PropertyValue(PropertyArray{"A", "B"}));
    EXPECT_EQ(defaults.value("level"), PropertyValue(0.5));
    EXPECT_EQ(defaults.value("absent"), std::nullopt);
}

TEST_F(IniUserDefaultsTest, AnswersForOtherDomainsFromTheirFiles)
{
    write(pathOf("com.example.Old.ini"), "[General]\nappPresentation=both\n");
    const IniUserDefaults defaults = open();
    EXPECT_EQ(defaults.domain("com.example.Old"), (PropertyDictionary{{"appPresentation", "both"}}));
    EXPECT_EQ(defaults.domain("com.example.Missing"), PropertyDictionary());
    EXPECT_EQ(defaults.domain("../com.example.Old"), PropertyDictionary());
    EXPECT_FALSE(QFileInfo::exists(folder.filePath("com.example.Missing.ini")));
}

TEST_F(IniUserDefaultsTest, RemovesAKeyAndWritesNothingWithoutAChange)
{
    open().set("kept", 1);
    {
        IniUserDefaults defaults = open();
        defaults.set("removed", 2);
        defaults.flush();
        defaults.set("removed", std::nullopt);
    }
    {
        IniUserDefaults defaults = open();
        EXPECT_EQ(defaults.value("kept"), PropertyValue(1));
        EXPECT_EQ(defaults.value("removed"), std::nullopt);
        ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));
        defaults.flush();
    }
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(path)));
}

TEST_F(IniUserDefaultsTest, LeavesTheOldOrTheNewFileAtWhateverMomentTheProcessIsKilled)
{
    const std::string filler(20'000, 'x');
    std::minstd_rand random(2);
    for (int round = 0; round < 200; ++round) {
        QFile::remove(QString::fromStdString(path));
        IniUserDefaults(path, "", clock).set("filler", filler);
        QProcess saver;
        startSaver(saver, "key", 1'000'000);
        const std::string awaited = "key" + std::to_string(1 + random() % 3);
        while (!IniUserDefaults(path, "", clock).value(awaited))
            ASSERT_FALSE(saver.waitForFinished(1)) << saver.readAllStandardError().toStdString();
        for (volatile unsigned spin = random() % 8'000'000; spin != 0;) // any moment of a later save
            spin = spin - 1;
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());
        const IniUserDefaults defaults = open();
        ASSERT_EQ(defaults.value("filler"), PropertyValue(filler)) << "round " << round;
        int last = 1;
        for (; const auto value = defaults.value("key" + std::to_string(last)); ++last)
            ASSERT_EQ(value, PropertyValue(last));
        ASSERT_TRUE(defaults.value(awaited)) << "what was on the disk is lost";
    }
}

TEST_F(IniUserDefaultsTest, WritesAtMostTwiceASecondWhileValuesKeepComing)
{
    IniUserDefaults defaults = open();
    int writes = 0;
    for (int i = 1; i <= 1000; ++i) { // ten seconds of a dragged slider
        defaults.set("level", i);
        clock.advance(10ms);
        writes += QFile::remove(QString::fromStdString(path)) ? 1 : 0;
    }
    EXPECT_GE(writes, 18);
    EXPECT_LE(writes, 20);
    defaults.set("level", 7);
    clock.advance(500ms);
    EXPECT_EQ(open().value("level"), PropertyValue(7));
    EXPECT_EQ(clock.pendingCount(), 0U);
}

TEST_F(IniUserDefaultsTest, ReportsAFailureInTheSystemsWordsAndTriesAgain)
{
    write(pathOf("obstacle"), "a file where a folder should be");
    path = pathOf("obstacle/preferences.ini");
    IniUserDefaults defaults = open();
    std::vector<std::string> words;
    const auto subscription = defaults.observeFailures([&](const std::string& text) { words.push_back(text); });
    defaults.set("level", 1);
    clock.advance(500ms);
    EXPECT_EQ(words, std::vector<std::string>{"Not a directory"});
    EXPECT_EQ(defaults.value("level"), PropertyValue(1));

    QFile::remove(folder.filePath("obstacle"));
    defaults.set("other", 2);
    clock.advance(500ms);
    EXPECT_EQ(words, (std::vector<std::string>{"Not a directory", ""})) << "the failure is over";
    EXPECT_EQ(open().value("level"), PropertyValue(1));
    EXPECT_EQ(open().value("other"), PropertyValue(2));

    QFile::remove(QString::fromStdString(path));
    ASSERT_TRUE(QDir().mkdir(QString::fromStdString(path)));
    defaults.set("level", 3);
    clock.advance(500ms);
    EXPECT_NE(words.back().find("is a folder"), std::string::npos) << words.back();
}

TEST_F(IniUserDefaultsTest, KeepsADamagedFileBesideTheNewOne)
{
    const QByteArray damaged = "[General]\nappPresentation=dock\nthis is no line of preferences\n";
    write(path, damaged);
    {
        IniUserDefaults defaults = open();
        EXPECT_EQ(defaults.value("appPresentation"), PropertyValue("dock"));
        defaults.set("level", 1);
    }
    QFile copy(QString::fromStdString(path + ".damaged"));
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), damaged);
    EXPECT_EQ(open().value("appPresentation"), PropertyValue("dock"));
    EXPECT_EQ(open().value("level"), PropertyValue(1));
}

TEST_F(IniUserDefaultsTest, LosesNoKeyWhenTwoProcessesWriteAtOnce)
{
    constexpr int count = 30;
    QProcess one, other;
    startSaver(one, "one", count);
    startSaver(other, "two", count);
    ASSERT_TRUE(one.waitForFinished() && other.waitForFinished());
    EXPECT_EQ(one.exitCode(), 0);
    EXPECT_EQ(other.exitCode(), 0);
    const IniUserDefaults defaults = open();
    for (int i = 1; i <= count; ++i) {
        EXPECT_EQ(defaults.value("one" + std::to_string(i)), PropertyValue(i));
        EXPECT_EQ(defaults.value("two" + std::to_string(i)), PropertyValue(i));
    }
}

} // namespace
} // namespace lumenvale
