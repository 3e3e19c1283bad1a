#include "platform/desktop/x11/server/ExpectErrors.h"
#include "tests/desktop/harness/Wait.h"
#include "tests/desktop/harness/XClient.h"
#include "tests/desktop/harness/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <xcb/damage.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::x11 {
namespace {

using namespace harness;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class ConnectionTest : public testing::Test {
  protected:
    ConnectionTest() {
        std::string problem;
        connection = X11Connection::open(server.display(), problem);
        changes = connection->subscribe<xcb_property_notify_event_t>(connection->ownWindow(),
                                                                     [this](const auto&) { ++changesSeen; });
        connection->start();
    }

    /// Waits until the event thread has handled all events and errors that the X server has sent so far.
    void awaitEvents() {
        const int before = changesSeen;
        xcb_change_property(connection->xcb(), XCB_PROP_MODE_APPEND, connection->ownWindow(),
                            XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
        connection->flush();
        require("an event arrives", [&] { return changesSeen > before; });
    }

    /// Runs the action and returns the log lines that it causes. Outside this function a log line fails the
    /// test.
    std::vector<std::string> loggedAfter(const std::function<void()>& action) {
        testing::TestPartResultArray failures;
        {
            const testing::ScopedFakeTestPartResultReporter reporter(
                testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &failures);
            action();
            awaitEvents();
        }
        std::vector<std::string> lines;
        for (int i = 0; i < failures.size(); ++i)
            lines.emplace_back(failures.GetTestPartResult(i).message());
        return lines;
    }

    void mapNoWindow() { xcb_map_window(connection->xcb(), noWindow); }

    static constexpr xcb_window_t noWindow = 1;
    XServer server;
    XClient client{server};
    std::unique_ptr<X11Connection> connection;
    std::atomic<int> changesSeen = 0;
    X11Connection::Subscription changes;
};

TEST_F(ConnectionTest, OnlyItsOwnEndEndsTheEventThread) {
    awaitEvents(); // Waits until the X server has made the connection's window.
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = connection->ownWindow();
    for (const char* type : {"MANAGER", "WM_PROTOCOLS"}) {
        message.type = client.atom(type);
        xcb_send_event(client.xcb(), 0, message.window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
    }
    client.sync();
    awaitEvents();
}

TEST_F(ConnectionTest, AnErrorThatNoRequestAnnouncedIsLoggedOnceByName) {
    const auto logged = loggedAfter([this] {
        mapNoWindow();
        mapNoWindow();
        xcb_damage_subtract(connection->xcb(), noWindow, XCB_NONE, XCB_NONE);
        connection->reply<xcb_get_geometry_reply>(xcb_get_geometry(connection->xcb(), noWindow),
                                                  {XError::match});
        connection->succeeds(xcb_map_window_checked(connection->xcb(), noWindow), {});
    });
    EXPECT_THAT(logged, UnorderedElementsAre(HasSubstr("BadWindow from MapWindow"),
                                             HasSubstr("BadDamage from DAMAGE Subtract"),
                                             HasSubstr("BadDrawable from GetGeometry")));
}

TEST_F(ConnectionTest, AnAnnouncementHoldsForItsScopeAndItsErrorsOnly) {
    const auto inScopes = loggedAfter([this] {
        const ExpectErrors gone(*connection, windowGone);
        mapNoWindow();
        const auto before = xcb_no_operation(connection->xcb()).sequence;
        { const ExpectErrors again(*connection, {XError::window}); }
        EXPECT_EQ(xcb_no_operation(connection->xcb()).sequence, before + 1) << "costs no request";
        {
            const ExpectErrors damageGone(*connection, {XError::damage});
            xcb_damage_subtract(connection->xcb(), noWindow, XCB_NONE, XCB_NONE);
        }
        // The errors that `gone` names must stay expected even after the event thread has handled an event.
        awaitEvents();
        mapNoWindow();
    });
    EXPECT_THAT(inScopes, IsEmpty());
    const auto afterScope = loggedAfter([this] {
        { const ExpectErrors gone(*connection, windowGone); }
        mapNoWindow();
        const ExpectErrors gone(*connection, windowGone);
        xcb_damage_subtract(connection->xcb(), noWindow, XCB_NONE, XCB_NONE);
    });
    EXPECT_THAT(afterScope, UnorderedElementsAre(HasSubstr("BadWindow from MapWindow"),
                                                 HasSubstr("BadDamage from DAMAGE Subtract")));
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
