#include "reference_host/FileDescriptor.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace reference_host {

FileDescriptor::FileDescriptor(std::string const& path, int flags)
    : _descriptor(::open(path.c_str(), flags | O_CLOEXEC)) {
    if (_descriptor < 0) {
        _error = systemErrorText(errno);
    }
}

FileDescriptor::~FileDescriptor() {
    if (isOpen()) {
        ::close(_descriptor);
    }
}

bool FileDescriptor::isOpen() const {
    return _descriptor >= 0;
}

int FileDescriptor::get() const {
    return _descriptor;
}

std::string const& FileDescriptor::error() const {
    return _error;
}

std::string systemErrorText(int error) {
    return std::generic_category().message(error);
}

} // namespace reference_host
