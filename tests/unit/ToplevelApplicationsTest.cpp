#include "platform/desktop/wayland/ext/ToplevelApplications.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <vector>

namespace mirrolet::platform::desktop::wayland {
namespace {

constexpr std::uint32_t active = 1U << 2U;
constexpr std::int32_t highestPid = 4194304; ///< That any process can have.

class ToplevelApplicationsTest : public testing::Test {
  protected:
    void show(WindowNumber number, const std::string& application, std::uint32_t states = 0) {
        model.publish(ListedToplevel{number, std::to_string(number), application});
        model.publish(ManagedToplevel{number, std::to_string(number), application, states});
    }
    std::vector<Application> all() { return applications.applicationsOf(model.frontToBack()); }

    ToplevelModel model;
    ToplevelApplications applications{model};
};

TEST_F(ToplevelApplicationsTest, AreNumberedByTheirIdentifiers) {
    for (const auto* name : {"no.such.Chat", "no.such.Notes", "no.such.Chat", "", ""})
        show(static_cast<WindowNumber>(all().size() + 1), name);
    const auto found = all(); // The newest window comes first.
    EXPECT_EQ(found[4].name, "no.such.Chat");
    EXPECT_GT(found[4].pid, highestPid);
    EXPECT_EQ(found[4].pid, found[2].pid);
    EXPECT_NE(found[4].pid, found[3].pid);
    EXPECT_NE(found[1].pid, found[2].pid) << "A window without an application belongs to none of the others.";
    EXPECT_EQ(applications.running(found[3].pid)->name, "no.such.Notes");
    model.remove(2);
    all();
    EXPECT_FALSE(applications.running(found[3].pid));
}

TEST_F(ToplevelApplicationsTest, KnowTheWindowsOfThisProgram) {
    show(1, "no.such.Chat", active);
    show(2, "mirrolet", active);
    EXPECT_EQ(all().front().pid, getpid());
    show(1, "no.such.Chat");
    EXPECT_EQ(applications.frontmost()->name, "no.such.Chat");
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
