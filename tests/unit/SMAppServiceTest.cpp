#include "platform/servicemanagement/SMAppService.h"

#include "tests/desktop/harness/Sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace mirrolet {
namespace {

using harness::Sandbox;
using platform::SMAppService;
using testing::HasSubstr;
using Status = SMAppService::Status;

constexpr auto ownFile = "config/autostart/app.mirrolet.Mirrolet.desktop";
constexpr auto systemFile = "etc/autostart/app.mirrolet.Mirrolet.desktop";
const std::string header = "[Desktop Entry]\nType=Application\nName=Mirrolet\n";

class SMAppServiceTest : public testing::Test {
  protected:
    SMAppServiceTest() {
        setenv("XDG_CONFIG_HOME", (sandbox.folder() / "config").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", (sandbox.folder() / "etc").c_str(), 1);
    }
    ~SMAppServiceTest() override {
        unsetenv("XDG_CONFIG_DIRS");
        before.empty() ? unsetenv("XDG_CONFIG_HOME") : setenv("XDG_CONFIG_HOME", before.c_str(), 1);
    }

    [[nodiscard]] std::string written() const { return Sandbox::read(sandbox.folder() / ownFile); }

    Sandbox sandbox;
    SMAppService service{"/bin/true"};

  private:
    std::string before = std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : "";
};

TEST_F(SMAppServiceTest, TheStatusIsWhatADesktopWouldMakeOfTheEntry) {
    struct Row {
        std::string keys;
        Status status;
    };
    for (const auto& row :
         {Row{"Exec=true\n", Status::enabled}, Row{"Exec=true\nHidden=true\n", Status::notRegistered},
          Row{"Exec=true\nX-GNOME-Autostart-enabled=false\n", Status::notRegistered},
          Row{"Exec=true\nX-GNOME-Autostart-enabled=true\nNoDisplay=true\n", Status::enabled},
          Row{"Exec=true\nOnlyShowIn=Elsewhere;\n", Status::notRegistered},
          Row{"Exec=true\nTryExec=/no/such/program\n", Status::notRegistered},
          Row{"Exec=/no/such/program\n", Status::notRegistered}, Row{"", Status::notRegistered},
          Row{"[broken", Status::notRegistered}}) {
        sandbox.write(ownFile, header + row.keys);
        EXPECT_EQ(service.status(), row.status) << row.keys;
    }
}

TEST_F(SMAppServiceTest, RegisteringAndUnregisteringLeaveNothingBehind) {
    EXPECT_EQ(service.status(), Status::notRegistered);
    EXPECT_FALSE(service.registerService());
    EXPECT_EQ(service.status(), Status::enabled);
    EXPECT_FALSE(service.unregisterService());
    EXPECT_EQ(service.status(), Status::notRegistered);
    EXPECT_FALSE(std::filesystem::exists(sandbox.folder() / ownFile));
    EXPECT_FALSE(service.unregisterService());
}

TEST_F(SMAppServiceTest, APathOfAnyLettersIsStartedAsItStands) {
    const auto program = sandbox.write(R"(a "b" $c `d` \e 100/mirrolet)", "#!/bin/sh\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    EXPECT_FALSE(SMAppService(program).registerService());
    EXPECT_EQ(service.status(), Status::enabled);
    EXPECT_THAT(written(), HasSubstr(R"(/a \\"b\\" \\$c \\`d\\` \\\\e 100/mirrolet")"));
}

TEST_F(SMAppServiceTest, AnEntryOfTheSystemIsOverriddenNotDeleted) {
    sandbox.write(systemFile, header + "Exec=true\nX-Delay=5\n");
    EXPECT_EQ(service.status(), Status::enabled);
    EXPECT_FALSE(service.unregisterService());
    EXPECT_EQ(service.status(), Status::notRegistered);
    EXPECT_THAT(written(), HasSubstr("Hidden=true"));
    EXPECT_FALSE(service.registerService());
    EXPECT_EQ(service.status(), Status::enabled);
    EXPECT_THAT(written(), HasSubstr("X-Delay=5"));
}

} // namespace
} // namespace mirrolet
