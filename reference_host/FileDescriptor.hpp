#pragma once

#include <string>

namespace reference_host {

/// An open file of the system, closed at the end.
class FileDescriptor {
public:
    /// Opens `path` with the flags of open(2); isOpen() and error() tell the outcome.
    FileDescriptor(std::string const& path, int flags);
    ~FileDescriptor();
    FileDescriptor(FileDescriptor const&) = delete;
    FileDescriptor& operator=(FileDescriptor const&) = delete;

    bool isOpen() const;
    int get() const;

    /// Why it is not open, in the system's words.
    std::string const& error() const;

private:
    int _descriptor;
    std::string _error;
};

/// The system's words for an errno.
std::string systemErrorText(int error);

} // namespace reference_host
