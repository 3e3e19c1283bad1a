#include "platform/appkit/SingleInstance.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <future>
#include <optional>
#include <string>
#include <unistd.h>

namespace mirrolet {
namespace {

using platform::SingleInstance;
using Start = SingleInstance::Start;
using namespace std::chrono_literals;

class SingleInstanceTest : public testing::Test {
  protected:
    /// Starts a second instance. This needs another thread, because the first instance answers on the test's
    /// thread.
    Start startAgain(const std::string& where) {
        auto started = std::async(std::launch::async, [&] { return SingleInstance().claim(where, 10s); });
        while (started.wait_for(1ms) != std::future_status::ready)
            QCoreApplication::processEvents();
        return started.get();
    }

    /// The process number keeps this display name apart from real displays and from other test runs.
    const std::string display = ":test-" + std::to_string(getpid());
    int activations = 0;
};

TEST_F(SingleInstanceTest, ALaterStartIsHandedOverToTheFirst) {
    std::optional<SingleInstance> first(std::in_place);
    EXPECT_EQ(first->claim(display), Start::first);
    first->setOnActivate([this] { ++activations; });
    EXPECT_EQ(startAgain(display), Start::handedOver);
    EXPECT_EQ(startAgain(display + ".1"), Start::handedOver) << "another screen of the same display";
    EXPECT_EQ(startAgain("unix" + display), Start::handedOver);
    EXPECT_EQ(activations, 3);
    EXPECT_EQ(startAgain(display + "1"), Start::first) << "another display";
    first.reset();
    EXPECT_EQ(startAgain(display), Start::first) << "nothing is left of one that ended";
}

TEST_F(SingleInstanceTest, AStartThatCameBeforeTheFirstListenedIsAnswered) {
    SingleInstance first;
    ASSERT_EQ(first.claim(display), Start::first);
    auto second = std::async(std::launch::async, [this] { return SingleInstance().claim(display, 10s); });
    ASSERT_EQ(second.wait_for(50ms), std::future_status::timeout);
    first.setOnActivate([this] { ++activations; });
    while (second.wait_for(1ms) != std::future_status::ready)
        QCoreApplication::processEvents();
    EXPECT_EQ(second.get(), Start::handedOver);
    EXPECT_EQ(activations, 1);
}

TEST_F(SingleInstanceTest, AFirstThatHangsDoesNotHangTheNext) {
    SingleInstance first;
    ASSERT_EQ(first.claim(display), Start::first);
    EXPECT_EQ(SingleInstance().claim(display, 100ms), Start::noAnswer);
}

TEST_F(SingleInstanceTest, AFirstThatEndsWhileItIsAskedIsReplaced) {
    std::optional<SingleInstance> first(std::in_place);
    ASSERT_EQ(first->claim(display), Start::first);
    SingleInstance next;
    auto second = std::async(std::launch::async, [&] { return next.claim(display, 10s); });
    ASSERT_EQ(second.wait_for(50ms), std::future_status::timeout);
    first.reset();
    EXPECT_EQ(second.get(), Start::first);
}

} // namespace
} // namespace mirrolet
