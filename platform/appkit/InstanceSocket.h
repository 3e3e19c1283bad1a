#pragma once

#include "platform/appkit/SingleInstance.h"

#include <chrono>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// A file descriptor with one owner.
class FileDescriptor {
  public:
    explicit FileDescriptor(int number = -1) : number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number(other.release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor();

    [[nodiscard]] int get() const { return number; }
    explicit operator bool() const { return number >= 0; }

  private:
    int release();
    int number;
};

/// The address in the kernel that running programs of one user and display listen at. Whoever connects asks
/// for activation, and is answered by one byte once that has been done.
class InstanceSocket {
  public:
    /// Takes the address, or asks the process that has it to activate.
    SingleInstance::Start claim(const std::string& display, std::chrono::milliseconds patience);
    [[nodiscard]] int listener() const { return listening.get(); }
    /// The next one that asks; none if nobody of this user does.
    [[nodiscard]] FileDescriptor accept() const;
    static void answer(const FileDescriptor& asker);

  private:
    FileDescriptor listening;
};

} // namespace mirrolet::platform
