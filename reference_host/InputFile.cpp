#include "reference_host/InputFile.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

#include "reference_host/FileDescriptor.hpp"

namespace reference_host {

namespace {

constexpr std::size_t mebibyte = 1U << 20U;

std::atomic<std::size_t> limit{InputFile::usualLimit};

std::string sizeText(std::size_t bytes) {
    return bytes % mebibyte == 0 ? std::to_string(bytes / mebibyte) + " MiB"
                                 : std::to_string(bytes) + " bytes";
}

// A device may have no end, so the size is not asked for but met.
std::string contentOf(int descriptor) {
    std::string content;
    std::array<char, 65536> buffer{};
    ssize_t count = 0;
    while ((count = ::read(descriptor, buffer.data(), buffer.size())) != 0) {
        if (count > 0) {
            content.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw InputFile::Error(systemErrorText(errno));
        }
        if (content.size() > limit) {
            throw InputFile::Error("larger than the limit of " + sizeText(limit));
        }
    }
    return content;
}

} // namespace

std::string InputFile::read(std::string const& path) {
    if (path == "-") {
        static std::string const standardInput = contentOf(STDIN_FILENO);
        return standardInput;
    }
    FileDescriptor const file(path, O_RDONLY);
    if (!file.isOpen()) {
        throw Error(file.error());
    }
    return contentOf(file.get());
}

void InputFile::setLimit(std::size_t bytes) {
    limit = bytes;
}

} // namespace reference_host
