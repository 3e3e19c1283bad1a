#pragma once

namespace mirrolet::platform {

/// Owns a file descriptor and closes it in the destructor.
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

} // namespace mirrolet::platform
