#pragma once

#include <stdexcept>

namespace mirrolet::harness {

/// What the test machine itself could not do: a missing program, a server that did not start. A test that
/// meets one fails with its message.
class HarnessError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace mirrolet::harness
