#pragma once

#include <string>

namespace mirrolet::platform {

enum class ComparisonResult { orderedAscending = -1, orderedSame = 0, orderedDescending = 1 };

/// The order of two UTF-8 texts in the user's language, whatever their case. Any thread.
ComparisonResult localizedCaseInsensitiveCompare(const std::string& first, const std::string& second);

} // namespace mirrolet::platform
