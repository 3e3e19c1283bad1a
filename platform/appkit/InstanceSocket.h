#pragma once

#include "platform/appkit/FileDescriptor.h"

#include <chrono>
#include <string>

namespace mirrolet::platform {

/// A socket through which a new process of the program finds the process that runs already. The kernel keeps
/// the socket's address. Each user has one address for each display. A new process asks the running process
/// to show itself by connecting to the address. The running process then answers with one byte.
class InstanceSocket {
  public:
    enum class Claim {
        first,      ///< This process owns the address now.
        handedOver, ///< Another process owns the address and has shown itself.
        noAnswer,   ///< Another process owns the address but has not answered in time.
    };

    /// Takes the address. If another process owns the address, asks that process to show itself and waits for
    /// the answer.
    Claim claim(const std::string& display, std::chrono::milliseconds patience);
    [[nodiscard]] int listener() const { return listening.get(); }
    /// Returns the connection of the next process that asks. Returns an empty descriptor if no process of
    /// this user asks.
    [[nodiscard]] FileDescriptor accept() const;
    static void answer(const FileDescriptor& asker);

  private:
    FileDescriptor listening;
};

} // namespace mirrolet::platform
