#pragma once

#include <cstdio>
#include <ostream>

namespace switchctl {

/// Sends what the library prints on the standard output elsewhere, so that it does not get between the
/// results; but not the line that it has for each time that it opens a serial line, which tells nothing. The
/// library prints by stdio, and ends each line with a flush.
class OutputDiversion {
public:
    /// `elsewhere` must outlive the diversion.
    explicit OutputDiversion(std::ostream& elsewhere);
    ~OutputDiversion();
    OutputDiversion(OutputDiversion const&) = delete;
    OutputDiversion& operator=(OutputDiversion const&) = delete;

private:
    std::FILE* _before;
    std::FILE* _diverted;
};

} // namespace switchctl
