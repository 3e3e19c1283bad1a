#include "platform/desktop/applications/ApplicationRegistry.h"

#include "tests/desktop/harness/Sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace mirrolet::platform::desktop {
namespace {

constexpr std::int32_t ownPid = 77;

/// Tests the registry with desktop entries and a /proc folder that the test writes.
class ApplicationRegistryTest : public testing::Test {
  protected:
    void startProcess(std::int32_t pid, int startTime) {
        const std::filesystem::path folder = "proc/" + std::to_string(pid);
        sandbox.write(folder / "stat", std::to_string(pid) +
                                           " (a) b) (c) S 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 " +
                                           std::to_string(startTime) + " 20\n");
        sandbox.write(folder / "comm", "program\n");
    }
    void endProcess(std::int32_t pid) { std::filesystem::remove_all(proc() / std::to_string(pid)); }
    std::filesystem::path proc() const { return sandbox.folder() / "proc"; }
    std::filesystem::path entryFolder(const std::string& name = "applications") const {
        return sandbox.folder() / name;
    }
    void writeEntry(const std::string& file, const std::string& lines = {}) {
        sandbox.write(file, "[Desktop Entry]\nType=Application\nName=Name of " + file + "\nExec=x\n" + lines +
                                "\n");
    }
    ApplicationRegistry makeBook() {
        return {ownPid, ProcFolder(proc().string()), DesktopEntryIndex({entryFolder().string()})};
    }
    static WindowOwner window(WindowNumber number, std::int32_t pid, const std::string& className) {
        return {number, number & 0xFFF00000, pid, {className, className, ""}};
    }

    harness::Sandbox sandbox;
};

TEST_F(ApplicationRegistryTest, TellsApplicationsOfOneProcessApartAndKeepsTheirNumbers) {
    startProcess(500, 1);
    writeEntry("applications/browser.desktop");
    writeEntry("applications/web.desktop", "Exec=browser --app-id=aaa\nStartupWMClass=crx_aaa");
    auto book = makeBook();
    const auto browser = window(1, 500, "browser");
    const auto web = window(2, 500, "crx_aaa");
    const auto first = book.applicationsOf({browser, web, window(3, 500, "browser")}, true);
    EXPECT_EQ(first[0].pid, 500);
    EXPECT_EQ(first[2].pid, 500);
    EXPECT_GT(first[1].pid, 4194304);
    EXPECT_EQ(first[1].identifier, "web");
    EXPECT_EQ(first[1].name, "Name of applications/web.desktop");
    EXPECT_EQ(book.running(first[1].pid)->identifier, "web");

    const auto alone = book.applicationsOf({web}, true);
    EXPECT_EQ(alone[0].pid, first[1].pid);
    EXPECT_EQ(book.applicationsOf({browser}, true)[0].pid, 500);
    EXPECT_EQ(book.applicationsOf({web, browser}, true)[0].pid, first[1].pid);
}

TEST_F(ApplicationRegistryTest, ForgetsAProcessThatEndedAndOneWhoseNumberWasGivenAgain) {
    startProcess(500, 1);
    auto book = makeBook();
    const auto second = book.applicationsOf({window(1, 500, "a"), window(2, 500, "b")}, true)[1];
    EXPECT_EQ(second.pid, 500) << "without entries a process is one application";
    EXPECT_EQ(second.name, "b");
    book.applicationsOf({}, true);
    EXPECT_TRUE(book.running(500)) << "its windows are only hidden";
    endProcess(500);
    EXPECT_FALSE(book.running(500));

    startProcess(500, 2);
    writeEntry("applications/later.desktop");
    EXPECT_EQ(book.applicationsOf({window(1, 500, "later")}, true)[0].pid, 500);
    EXPECT_EQ(book.running(500)->identifier, "later");
    EXPECT_EQ(book.applicationsOf({window(3, 500, "")}, true)[0].name, "program");
}

TEST_F(ApplicationRegistryTest, LooksAtNoProcessAgainForWindowsThatItKnows) {
    startProcess(500, 1);
    auto book = makeBook();
    const auto before = book.applicationsOf({window(1, 500, "a")}, true)[0];
    std::filesystem::remove_all(proc());
    EXPECT_EQ(book.applicationsOf({window(1, 500, "a")}, true)[0].name, before.name);
    EXPECT_TRUE(book.running(500));
    writeEntry("applications/a.desktop");
    EXPECT_EQ(book.applicationsOf({window(1, 500, "a")}, true)[0].identifier, "a")
        << "an entry was installed";
}

TEST_F(ApplicationRegistryTest, GivesItsOwnProcessOneNumberAndAClientWithoutProcessOneOfItsOwn) {
    writeEntry("applications/a.desktop");
    auto book = makeBook();
    const auto applications = book.applicationsOf(
        {window(1, ownPid, "a"), window(2, ownPid, "b"), window(0x100001, 0, "c"), window(0x200001, 0, "c")},
        true);
    EXPECT_EQ(applications[0].pid, ownPid);
    EXPECT_EQ(applications[1].pid, ownPid);
    EXPECT_GT(applications[2].pid, 4194304);
    EXPECT_GT(applications[3].pid, 4194304);
    EXPECT_NE(applications[2].pid, applications[3].pid);
}

TEST_F(ApplicationRegistryTest, ReadsOnlySoundEntriesAndTheFirstOfEachId) {
    writeEntry("first/masked.desktop", "Hidden=true");
    writeEntry("applications/masked.desktop");
    writeEntry("first/sub/folder/deep.desktop");
    sandbox.write("first/broken.desktop", "no group\n\xFF\xFE");
    sandbox.write("first/huge.desktop",
                  "[Desktop Entry]\nType=Application\nName=" + std::string(2 << 20, 'x'));
    ASSERT_EQ(mkfifo((entryFolder("first") / "fifo.desktop").c_str(), 0600), 0);
    std::filesystem::create_symlink(entryFolder("first"), entryFolder("first") / "loop");
    std::filesystem::create_symlink("nowhere", entryFolder("first") / "dangling.desktop");
    writeEntry("first/link.desktop", "Type=Link");
    DesktopEntryIndex index(
        {entryFolder("missing").string(), entryFolder("first").string(), entryFolder().string()});
    EXPECT_TRUE(index.entries().withId("sub-folder-deep"));
    for (const auto* id : {"masked", "broken", "huge", "fifo", "dangling", "link", "loop-masked"})
        EXPECT_FALSE(index.entries().withId(id)) << id;
    EXPECT_FALSE(index.refresh());
    writeEntry("missing/new.desktop");
    EXPECT_TRUE(index.refresh());
    EXPECT_TRUE(index.entries().withId("new"));
}

} // namespace
} // namespace mirrolet::platform::desktop
