#pragma once

namespace switchctl {

/// The three streams that a program begins with.
class StandardStreams {
public:
    /// Fills the place of each one that was closed, as otherwise the next file that the program opens would
    /// become its input or get its output. Reading or writing it fails as it would have. Call it first.
    static void keepClosed();
};

} // namespace switchctl
