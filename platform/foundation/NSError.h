#pragma once

#include <string>

namespace mirrolet::platform {

/// Describes why an operation failed.
struct NSError {
    std::string localizedDescription; ///< One or two sentences for the user.
};

} // namespace mirrolet::platform
