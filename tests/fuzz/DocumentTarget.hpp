#pragma once

#include <string>

namespace fuzz {

/// A configuration document of any shape: a simulated board of that description is brought up, asked
/// for everything that a host can ask for, and taken down.
struct DocumentTarget {
    /// Throws std::logic_error when something was promised that did not happen.
    static void run(std::string const& input);
};

} // namespace fuzz
