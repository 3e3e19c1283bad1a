#include "platform/foundation/NSLog.h"

#include <algorithm>
#include <string>
#include <syslog.h>
#include <unistd.h>

namespace mirrolet::platform {

void NSLog(std::string_view message) {
    std::string line(message);
    // A message may contain names from other programs. Control characters are replaced, so that the message
    // stays one line and cannot control a terminal.
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, ' ');
    syslog(LOG_USER | LOG_NOTICE, "%s", line.c_str());
    line += '\n';
    // One call writes the whole line, so that the lines of several threads do not mix. A failure is ignored,
    // because standard error may be closed.
    [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
}

} // namespace mirrolet::platform
