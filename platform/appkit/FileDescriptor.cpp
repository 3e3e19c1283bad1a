#include "platform/appkit/FileDescriptor.h"

#include <unistd.h>
#include <utility>

namespace mirrolet::platform {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (number >= 0)
        close(number);
}

int FileDescriptor::release() {
    return std::exchange(number, -1);
}

} // namespace mirrolet::platform
