#pragma once

#include "platform/appkit/FileDescriptor.h"

#include <chrono>
#include <string>

namespace mirrolet::platform {

/// A socket at an address in the kernel that the running program of one user and display has. A process that
/// connects asks the program to activate. The program answers with one byte once it has activated.
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
    /// Returns the connection of the next process that asks. Returns no descriptor if no process of this user
    /// asks.
    [[nodiscard]] FileDescriptor accept() const;
    static void answer(const FileDescriptor& asker);

  private:
    FileDescriptor listening;
};

} // namespace mirrolet::platform
