#pragma once

#include <string>

namespace mirrolet::platform {

enum class ComparisonResult { orderedAscending = -1, orderedSame = 0, orderedDescending = 1 };

/// Compares two UTF-8 texts by the order of the user's language, ignoring case. Any thread.
ComparisonResult localizedCaseInsensitiveCompare(const std::string& first, const std::string& second);

} // namespace mirrolet::platform
