#include "platform/combine/ObservableObjectPublisher.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/fake/VirtualTime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform {
namespace {

using testing::ElementsAre;

TEST(ObservableObjectPublisherTest, CallsSubscribersInOrderUntilTheyCancel) {
    ObservableObjectPublisher publisher;
    std::vector<std::string> calls;
    AnyCancellable second;
    const auto first = publisher.sink([&] {
        calls.emplace_back("first");
        second.cancel();
    });
    second = publisher.sink([&] { calls.emplace_back("second"); });
    AnyCancellable third;
    third = publisher.sink([&] {
        calls.emplace_back("third");
        third.cancel(); // Cancels the subscription while its function runs.
        calls.emplace_back("third goes on");
    });
    publisher.send();
    publisher.send();
    EXPECT_THAT(calls, ElementsAre("first", "third", "third goes on", "first"));
}

TEST(ObservableObjectPublisherTest, ASubscriptionMayOutliveItsPublisher) {
    auto publisher = std::make_unique<ObservableObjectPublisher>();
    const auto subscription = publisher->sink([&publisher] { publisher.reset(); });
    publisher->send();
    EXPECT_EQ(publisher, nullptr);
}

TEST(ObservableObjectPublisherTest, OnAQueueACallComesLaterAndNotAfterCancelling) {
    dispatch::VirtualTime time;
    ObservableObjectPublisher publisher;
    int calls = 0;
    auto subscription = publisher.sinkOn(DispatchQueue::main(), [&calls] { ++calls; });
    publisher.send();
    EXPECT_EQ(calls, 0);
    time.run();
    EXPECT_EQ(calls, 1);
    publisher.send();
    subscription.cancel();
    time.run();
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace mirrolet::platform
