#include "tests/desktop/endtoend/EndToEndTest.h"

#include <algorithm>
#include <csignal>
#include <cstring>

namespace mirrolet {
namespace {

using namespace harness;
using testing::HasSubstr;

class LifecycleTest : public EndToEndTest {};

std::ptrdiff_t lineCount(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

/// Expects that the program does not crash, but ends with an exit status that reports a failure.
void expectRefusal(Program& program) {
    const auto status = program.child().waitForExit();
    ASSERT_TRUE(status.has_value()) << "still running";
    EXPECT_GT(*status, 0);
    EXPECT_LT(*status, 126);
    EXPECT_EQ(lineCount(program.log()), 1) << program.log();
}

TEST_F(LifecycleTest, EndsWellOnTheSignalsThatAskForIt) {
    const auto call = showCall();
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(strsignal(number));
        startQuiet();
        openMirror(*call);
        program->child().signal(number);
        EXPECT_EQ(program->child().waitForExit(), 0);
        EXPECT_EQ(program->log(), "");
    }
    EXPECT_FALSE(isGrabbed(key::f));
}

TEST_F(LifecycleTest, EndsWithOneLineWhenTheServerIsLost) {
    startQuiet();
    const auto call = showCall();
    openMirror(*call);
    server.kill();
    expectRefusal(*program);
}

TEST(LifecycleTestOfOddDesktops, ADesktopThatIsNoGoodIsRefusedWithOneLine) {
    {
        SCOPED_TRACE("no DISPLAY");
        Program program(nullptr, nullptr, {});
        expectRefusal(program);
    }
    {
        SCOPED_TRACE("a DISPLAY that nobody serves");
        Program program(nullptr, nullptr, {.environment = {{"DISPLAY", ":9876"}}});
        expectRefusal(program);
    }
}

TEST(LifecycleTestOfOddDesktops, AServerWithoutCompositeIsToldOfInOneLineAndOpensNoMirror) {
    XServer::Options options;
    options.composite = false;
    const XServer server(options);
    XClient client(server);
    const WindowFacts facts(client);
    Program program(&server, nullptr, {.defaults = Program::defaults()});
    const CallWindow call(server);
    program.awaitPrompt(facts);
    EXPECT_THAT(program.log(), HasSubstr("COMPOSITE"));
    Keyboard(client).stroke({key::returnKey});
    // panel() takes each window that is not the prompt for the panel, so it also finds the alert about the
    // missing permission.
    require("the alert is shown", [&] { return !program.prompt(facts) && program.panel(facts); });
    Keyboard(client).stroke({key::escape});
    require("the alert is gone", [&] { return program.windows(facts).empty(); });
    EXPECT_TRUE(program.child().running());
}

TEST(LifecycleTestOfOddDesktops, ADesktopWithoutAWindowManagerATrayOrABusStillGetsItsMirror) {
    const XServer server;
    XClient client(server);
    const WindowFacts facts(client);
    Program program(&server, nullptr, {.defaults = Program::defaults()});
    const CallWindow call(server);
    program.awaitPrompt(facts);
    Keyboard(client).stroke({key::returnKey});
    require("the mirror is shown", [&] { return !program.prompt(facts) && program.panel(facts); });
}

} // namespace
} // namespace mirrolet
