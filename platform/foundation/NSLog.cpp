#include "platform/foundation/NSLog.h"

#include <algorithm>
#include <string>
#include <syslog.h>
#include <unistd.h>

namespace mirrolet::platform {

void NSLog(std::string_view message) {
    std::string line(message);
    // Messages carry names from outside. One message has to stay one line and must not control a terminal.
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, ' ');
    syslog(LOG_USER | LOG_NOTICE, "%s", line.c_str());
    line += '\n';
    // One write, so that lines of several threads do not mix. A closed standard error does not matter.
    [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
}

} // namespace mirrolet::platform
