#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace reference_host {

/// What is read as a whole: a file, or the standard input.
class InputFile {
public:
    static constexpr std::size_t usualLimit = 64U << 20U;

    /// Why it cannot be read; what() does not name it.
    class Error : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    /// The content of a file; of the standard input when the path is "-". That can be read once, so it is
    /// kept for whoever asks again. Any thread. Throws Error, also as soon as more than the limit has been
    /// read.
    static std::string read(std::string const& path);

    /// \param bytes how long an input may be from now on, in this process.
    static void setLimit(std::size_t bytes);
};

} // namespace reference_host
