#pragma once

#include <stdexcept>

namespace mirrolet::harness {

/// Reports a fault of the test machine, such as a missing program or a server that did not start. The
/// exception fails the test and shows the message.
class HarnessError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace mirrolet::harness
