#pragma once

#include <string>

namespace fuzz {

/// What `switchctl` reads besides documents: the first character chooses the reader, the rest is read.
struct ReaderTarget {
    /// Lets through what is not a proper refusal.
    static void run(std::string const& input);
};

} // namespace fuzz
