#include "settings/InstalledApp.h"

#include "platform/foundation/Bundle.h"
#include "platform/foundation/DesktopEntryFiles.h"
#include "platform/foundation/FileManager.h"
#include "tests/desktop/harness/Sandbox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace mirrolet {
namespace {

using harness::Sandbox;
using platform::FileManager;

/// Makes folders for a user and for the system, which the scan reads instead of the machine's folders.
class InstalledAppTest : public testing::Test {
  protected:
    InstalledAppTest() {
        setenv("XDG_DATA_HOME", (sandbox.folder() / "home").c_str(), 1);
        setenv(
            "XDG_DATA_DIRS",
            ((sandbox.folder() / "first").string() + ":relative:" + (sandbox.folder() / "second/").string())
                .c_str(),
            1);
    }

    ~InstalledAppTest() override {
        for (const auto& [name, value] : before)
            value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
    }

    std::filesystem::path add(const std::string& file, const std::string& keys) const {
        return sandbox.write(file, "[Desktop Entry]\nType=Application\nExec=true\n" + keys);
    }

    /// Scans the applications. Returns "identifier=name" for each application, in the order of the result.
    static std::vector<std::string> scan() {
        std::vector<std::string> apps;
        for (const auto& app : InstalledApp::scanInstalledApplications())
            apps.push_back(app.bundleIdentifier + "=" + app.displayName);
        return apps;
    }

    using Apps = std::vector<std::string>;
    Sandbox sandbox;

  private:
    static std::string variable(const char* name) {
        const char* value = std::getenv(name);
        return value ? value : "";
    }
    std::map<std::string, std::string> before = {{"XDG_DATA_HOME", variable("XDG_DATA_HOME")},
                                                 {"XDG_DATA_DIRS", variable("XDG_DATA_DIRS")}};
};

TEST_F(InstalledAppTest, AMachineWithoutApplicationFoldersHasNoApplications) {
    EXPECT_EQ(scan(), Apps{});
}

TEST_F(InstalledAppTest, EachHasTheIconOfItsEntry) {
    add("first/applications/a.desktop", "Name=A\nIcon=a-icon\n");
    add("first/applications/b.desktop", "Name=B\n");
    std::vector<std::string> icons;
    for (const auto& app : InstalledApp::scanInstalledApplications())
        icons.push_back(app.icon ? app.icon->drawnContent().icon : "none");
    EXPECT_EQ(icons, (std::vector<std::string>{"a-icon", ""}));
}

TEST_F(InstalledAppTest, NamesSortByLettersAndFallBackToTheFileName) {
    add("first/applications/org.example.G.desktop", "Name=gamma\n");
    add("home/applications/a.desktop", "Name=alpha\n");
    add("second/applications/b.desktop", "Name=Beta\n");
    add("second/applications/org.example.delta.desktop", "");
    add("second/applications/kde/deep.desktop", "Name=Älter\n");
    EXPECT_EQ(scan(), (Apps{"a=alpha", "kde-deep=Älter", "b=Beta", "org.example.G=gamma",
                            "org.example.delta=org.example.delta"}));
}

TEST_F(InstalledAppTest, WhatAMenuWouldHideIsNotListed) {
    for (const auto* hidden : {"NoDisplay=true\n", "Hidden=true\n", "OnlyShowIn=Elsewhere;\n",
                               "TryExec=/no/such/program\n", "Type=Link\n", "Exec=/no/such/program\n"}) {
        const auto file = add("first/applications/app.desktop", std::string("Name=App\n") + hidden);
        EXPECT_EQ(scan(), Apps{}) << hidden;
        std::filesystem::remove(file);
    }
    add("first/applications/.hidden.desktop", "Name=App\n");
    add("first/applications/upper.DESKTOP", "Name=App\n");
    add("first/applications/app.mirrolet.Mirrolet.desktop", "Name=Mirrolet\n");
    EXPECT_EQ(scan(), Apps{});
}

TEST_F(InstalledAppTest, OfOneIdentifierInSeveralFoldersTheFirstOnThePathCounts) {
    add("second/applications/both.desktop", "Name=Later\n");
    add("first/applications/both.desktop", "Name=Earlier\n");
    EXPECT_EQ(scan(), Apps{"both=Earlier"});
    add("home/applications/both.desktop", "Name=Mine\n");
    EXPECT_EQ(scan(), Apps{"both=Mine"});
    add("home/applications/both.desktop", "Hidden=true\n");
    EXPECT_EQ(scan(), Apps{});
}

TEST_F(InstalledAppTest, EntriesThatAreNoFilesToReadNeitherStopNorDelayTheScan) {
    const auto folder = sandbox.folder() / "first/applications";
    const auto good = add("first/applications/good.desktop", "Name=Good\n");
    ASSERT_EQ(mkfifo((folder / "fifo.desktop").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "folder.desktop");
    std::filesystem::create_directory_symlink(folder, folder / "loop");
    std::filesystem::create_symlink("itself.desktop", folder / "itself.desktop");
    std::filesystem::create_symlink("/dev/zero", folder / "endless.desktop");
    std::filesystem::create_symlink("nowhere", folder / "dangling.desktop");
    add("first/applications/huge.desktop", "Name=Huge\n");
    std::filesystem::resize_file(folder / "huge.desktop", 100 << 20);
    sandbox.write("first/applications/empty.desktop", "");
    sandbox.write("first/applications/noise.desktop", std::string("\0\xff[=\n\xc3", 6));
    sandbox.write("first/applications/broken.desktop", "[Desktop Entry\nName=\xff\n");
    EXPECT_EQ(scan(), Apps{"good=Good"});
}

TEST_F(InstalledAppTest, WithoutUsableVariablesTheUsualFoldersAreRead) {
    const auto home = FileManager::standard().homeDirectoryForCurrentUser().path();
    const Apps usual = {home + "/.local/share/applications", "/usr/local/share/applications",
                        "/usr/share/applications"};
    setenv("XDG_DATA_HOME", "relative", 1);
    setenv("XDG_DATA_DIRS", "", 1);
    EXPECT_EQ(platform::userApplicationFolders(), usual);
    setenv("XDG_DATA_HOME", "", 1);
    unsetenv("XDG_DATA_DIRS");
    EXPECT_EQ(platform::userApplicationFolders(), usual);
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(platform::userApplicationFolders(), usual);
}

TEST_F(InstalledAppTest, ApplicationsOfTheSystemAreFoundInAFolderOfTheirOwn) {
    setenv("XDG_DATA_DIRS", "/usr/share", 1);
    const auto system =
        FileManager::standard().contentsOfDirectory(platform::URL::fileURLWithPath("/System/Applications"));
    ASSERT_TRUE(system);
    EXPECT_EQ(system->size(), platform::desktopEntryFiles({"/usr/share/applications"}).size());
    const auto shown = std::count_if(system->begin(), system->end(),
                                     [](const auto& url) { return platform::Bundle::open(url).has_value(); });
    EXPECT_EQ(scan().size(), static_cast<std::size_t>(shown));
}

} // namespace
} // namespace mirrolet
