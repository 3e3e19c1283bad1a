#include "platform/appkit/NSRunningApplication.h"

#include "platform/desktop/Desktop.h"

#include <utility>

namespace mirrolet::platform {

NSRunningApplication::NSRunningApplication(std::int32_t processIdentifier,
                                           std::optional<std::string> bundleIdentifier,
                                           std::string localizedName)
    : number(processIdentifier), identifier(std::move(bundleIdentifier)), name(std::move(localizedName)) {}

std::optional<NSRunningApplication>
NSRunningApplication::withProcessIdentifier(std::int32_t processIdentifier) {
    auto found = desktop::Desktop::current().applications().running(processIdentifier);
    if (!found)
        return std::nullopt;
    return NSRunningApplication(found->pid, std::move(found->identifier), std::move(found->name));
}

} // namespace mirrolet::platform
