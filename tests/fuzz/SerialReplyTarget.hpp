#pragma once

#include <string>

namespace fuzz {

/// What comes down a serial line while the VSC7390's registers are read: the input in pieces, which
/// vertical bars separate, 0.7 seconds apart. The first character chooses the command.
struct SerialReplyTarget {
    /// Throws std::logic_error when an access takes longer than the line's time-out allows, or succeeds
    /// with a reply of the wrong length.
    static void run(std::string const& input);
};

} // namespace fuzz
