#pragma once

#include <ostream>

namespace switchctl {

/// What a stream or a file descriptor of the program leads to.
struct Terminal {
    struct Size {
        unsigned rows;
        unsigned columns;
    };

    /// The file descriptor behind a standard stream of the program, or -1.
    static int descriptorOf(std::ostream const& stream);

    /// Whether a terminal is there on which text can be erased and written again.
    static bool isAt(int descriptor);

    /// Whether a terminal is there that is to have colours: NO_COLOR is not set.
    static bool hasColoursAt(int descriptor);

    /// Of a terminal that does not know: 24 rows of 80 columns.
    static Size getSize(int descriptor);
};

} // namespace switchctl
