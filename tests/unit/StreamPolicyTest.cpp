#include "platform/desktop/wayland/pipewire/StreamPolicy.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

/// Asks the policy at each tick, as a capture does.
class StreamPolicyTest : public testing::Test {
  protected:
    StreamPolicyTest() { policy.opened(now); }

    /// Returns after how long the policy gives up the stream if its progress stays the same. Returns nothing
    /// if the policy does not give up within a minute.
    std::optional<milliseconds> givenUpAfter(const StreamProgress& progress) {
        constexpr milliseconds tick{10};
        for (milliseconds waited{0}; waited < 60s; waited += tick, now += tick)
            if (policy.isGivenUp(progress, now))
                return waited;
        return std::nullopt;
    }

    StreamPolicy policy;
    StreamPolicy::TimePoint now;
};

constexpr StreamProgress none{};
constexpr StreamProgress streaming{.formats = 1, .framesOfFormat = 5};
constexpr StreamProgress newFormat{.formats = 2, .framesOfFormat = 0};
constexpr StreamProgress ended{.formats = 1, .framesOfFormat = 5, .ended = true};

TEST_F(StreamPolicyTest, KeepsAStreamWhoseWindowStandsStill) {
    EXPECT_EQ(givenUpAfter(streaming), std::nullopt);
}

TEST_F(StreamPolicyTest, GivesAStreamUpThatSendsNoFramesInANewFormat) {
    EXPECT_EQ(givenUpAfter(streaming), std::nullopt);
    EXPECT_EQ(givenUpAfter(newFormat), 100ms);
}

TEST_F(StreamPolicyTest, MeasuresTheWaitFromTheFirstOfManyFormats) {
    EXPECT_FALSE(policy.isGivenUp(streaming, now));
    auto progress = newFormat;
    int formats = 0;
    while (!policy.isGivenUp(progress, now) && formats < 100) {
        now += 16ms;
        ++progress.formats;
        ++formats;
    }
    EXPECT_EQ(formats, 7) << "a window that is being resized";
}

TEST_F(StreamPolicyTest, WaitsLongerAfterEachStreamWithoutAFrame) {
    for (const auto patience : std::vector<milliseconds>{500ms, 1s, 2s, 4s, 8s, 16s, 16s}) {
        EXPECT_EQ(givenUpAfter(none), patience);
        policy.opened(now);
    }
    EXPECT_EQ(givenUpAfter(streaming), std::nullopt);
    policy.opened(now);
    EXPECT_EQ(givenUpAfter(none), 500ms);
}

TEST_F(StreamPolicyTest, GivesAStreamUpThatGoesOnRepeatingItsLastFrame) {
    auto progress = streaming;
    progress.repeated = 7;
    EXPECT_EQ(givenUpAfter(progress), std::nullopt);
    progress.repeated = 8;
    EXPECT_EQ(givenUpAfter(progress), 0ms);
    policy.opened(now);
    EXPECT_EQ(givenUpAfter(progress), 2s) << "a window that changes and rests again and again";
}

TEST_F(StreamPolicyTest, OpensAnEndedStreamAgainAtOnceButNotTooOften) {
    EXPECT_EQ(givenUpAfter(streaming), std::nullopt);
    EXPECT_EQ(givenUpAfter(ended), 0ms);
    policy.opened(now);
    EXPECT_EQ(givenUpAfter(ended), 500ms);
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
