#pragma once

#include <string>

namespace fuzz {

/// Addresses of multicast groups as a document may have them, one a line, written to the MAC table of a
/// VSC7390 and looked up again.
struct MulticastAddressTarget {
    /// Throws std::logic_error when a group that was written is not there.
    static void run(std::string const& input);
};

} // namespace fuzz
