#pragma once

#include "platform/appkit/FileDescriptor.h"

#include <chrono>
#include <string>

namespace mirrolet::platform {

/// The address in the kernel that the running program of one user and display listens at. A process that
/// connects asks for activation, and is answered by one byte once that has been done.
class InstanceSocket {
  public:
    enum class Claim {
        first,      ///< This process has the address now.
        handedOver, ///< Another process has it, and has activated.
        noAnswer,   ///< Another process has it, but has not answered in time.
    };

    /// Takes the address, or asks the process that has it to activate.
    Claim claim(const std::string& display, std::chrono::milliseconds patience);
    [[nodiscard]] int listener() const { return listening.get(); }
    /// The next process that asks; none if no process of this user does.
    [[nodiscard]] FileDescriptor accept() const;
    static void answer(const FileDescriptor& asker);

  private:
    FileDescriptor listening;
};

} // namespace mirrolet::platform
