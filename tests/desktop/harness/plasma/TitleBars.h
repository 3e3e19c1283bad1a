#pragma once

#include "tests/desktop/harness/Sandbox.h"

#include <string>

namespace mirrolet::harness {

/// Writes a window decoration into the session's data folder: a plain white title bar of 24 pixels. Returns
/// the text for kwinrc that chooses this decoration. Plasma's own decorations need many packages.
std::string writeTitleBars(const Sandbox& sandbox);

} // namespace mirrolet::harness
