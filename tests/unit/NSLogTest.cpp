#include "platform/foundation/NSLog.h"

#include <gtest/gtest.h>

namespace mirrolet::platform {
namespace {

TEST(NSLogTest, WritesAMessageFromOutsideAsOneLineThatCannotControlATerminal) {
    testing::internal::CaptureStderr();
    NSLog("a\nb\tc\x1b[2Jd\x7f é");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a b c [2Jd  é\n");
}

} // namespace
} // namespace mirrolet::platform
