#include "platform/foundation/UserDefaults.h"

#include "platform/dispatch/fake/VirtualTime.h"
#include "platform/foundation/ConfigFolder.h"
#include "platform/foundation/PropertyListFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace mirrolet::platform {
namespace {

using testing::HasSubstr;

class UserDefaultsTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    std::string path = (folder.path() + "/sub/defaults.json").toStdString();
    dispatch::VirtualTime time;

    void put(const QByteArray& bytes) const {
        QDir().mkpath(folder.path() + "/sub");
        QFile file(QString::fromStdString(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    [[nodiscard]] QByteArray bytes() const {
        QFile file(QString::fromStdString(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] QStringList setAside() const {
        return QDir(folder.path() + "/sub")
            .entryList({"defaults.json.broken-*"}, QDir::AllEntries | QDir::System);
    }
};

TEST_F(UserDefaultsTest, TheFolderIsThatOfTheEnvironmentOnlyIfAbsolute) {
    const auto before = qgetenv("XDG_CONFIG_HOME");
    const auto usual = (qgetenv("HOME") + "/.config").toStdString();
    EXPECT_EQ(userConfigFolder(), before.toStdString());
    for (const auto* unusable : {"", "relative", "./here"}) {
        qputenv("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(userConfigFolder(), usual);
    }
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(userConfigFolder(), usual);
    qputenv("XDG_CONFIG_HOME", before);
}

TEST_F(UserDefaultsTest, ValuesOfEveryTypeAndUnknownKeysOutliveTheProcess) {
    put(R"({"mine": {"deep": [1, null, "x"]}, "half": 1})");
    const std::pair<const char*, PropertyList> values[] = {
        {"boolean", true},
        {"integer", std::int64_t{9007199254740993}}, // A double would round this number.
        {"half", 0.5},
        {"text", "é\n\"𝄞"},
        {"array", PropertyList::Array{"a", false}},
        {"empty", PropertyList::Array{}},
    };
    {
        UserDefaults defaults(path);
        for (const auto& [key, value] : values)
            defaults.set(key, value);
    }
    const UserDefaults reread(path);
    for (const auto& [key, value] : values)
        EXPECT_EQ(reread.object(key), value) << key;
    EXPECT_EQ(reread.object("mine"),
              PropertyList(PropertyList::Dictionary{
                  {"deep", PropertyList::Array{std::int64_t{1}, PropertyList(), "x"}}}));
    EXPECT_EQ(reread.object("nothing"), PropertyList());
}

TEST_F(UserDefaultsTest, WritesOnceAMomentAfterTheLastChange) {
    UserDefaults defaults(path);
    for (int value = 1; value <= 3; ++value) {
        defaults.set("key", value);
        time.advance(0.2);
        EXPECT_EQ(bytes(), "");
    }
    time.advance(0.11);
    EXPECT_EQ(UserDefaults(path).object("key").asInt32(), 3);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);

    put("changed outside");
    defaults.set("key", 3);
    defaults.flush();
    EXPECT_EQ(bytes(), "changed outside") << "an equal value is no reason to write";
}

TEST_F(UserDefaultsTest, ABrokenFileIsSetAsideAsItIsAndSaidInOneLine) {
    const struct {
        const char* what;
        std::function<void()> make;
    } rows[] = {
        {"empty", [&] { put(""); }},
        {"no JSON", [&] { put("{\"pollInterval\": 5"); }},
        {"no object", [&] { put("[1, 2]"); }},
        {"binary", [&] { put(QByteArray(100, '\xff')); }},
        {"nested without end", [&] { put(R"({"a":)" + QByteArray(100000, '[')); }},
        {"huge", [&] { put("{\"a\": \"" + QByteArray(5 * 1024 * 1024, 'x') + "\"}"); }},
        {"a folder", [&] { QDir().mkpath(QString::fromStdString(path)); }},
        {"a FIFO",
         [&] {
             QDir().mkpath(folder.path() + "/sub");
             mkfifo(path.c_str(), 0600);
         }},
    };
    qsizetype brokenFiles = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        QFile::remove(QString::fromStdString(path));
        row.make();
        testing::internal::CaptureStderr();
        {
            UserDefaults defaults(path);
            EXPECT_EQ(defaults.object("pollInterval"), PropertyList());
            defaults.set("key", 1);
        }
        const auto said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
        EXPECT_THAT(said, HasSubstr("UserDefaults: cannot read " + path));
        EXPECT_EQ(setAside().size(), ++brokenFiles);
        EXPECT_EQ(UserDefaults(path).object("key").asInt32(), 1);
    }
}

TEST_F(UserDefaultsTest, AFolderThatCannotBeWrittenIsSaidOnceAndTriedAgain) {
    // Puts a file in the place of the settings' folder, so that the settings cannot be written. A folder
    // without write permission would not do, because root can write into it.
    const auto obstacle = folder.path() + "/sub";
    QFile file(obstacle);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    testing::internal::CaptureStderr();
    UserDefaults defaults(path);
    for (int value = 0; value < 3; ++value) {
        defaults.set("key", value);
        time.advance(1);
    }
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_THAT(said, HasSubstr("UserDefaults: cannot write " + path));
    EXPECT_EQ(defaults.object("key").asInt32(), 2);

    file.remove();
    defaults.set("key", 2);
    time.advance(1);
    EXPECT_EQ(UserDefaults(path).object("key").asInt32(), 2);
}

/// Limits the length of the program's files instead of filling a disk, which only root could do. Each write
/// then fails in the middle of the file.
TEST_F(UserDefaultsTest, AFullDiskLeavesTheFormerFileAndTheValuesInMemory) {
    UserDefaults defaults(path);
    defaults.set("key", 1);
    time.advance(1);
    const auto before = bytes();
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit full{1024, usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    defaults.set("long", std::string(2000, 'x'));
    time.advance(1);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(QDir(folder.path() + "/sub").entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1)
        << "what was begun is taken away";

    defaults.set("key", 2);
    time.advance(1);
    EXPECT_EQ(UserDefaults(path).object("long"), PropertyList(std::string(2000, 'x')));
}

} // namespace
} // namespace mirrolet::platform
