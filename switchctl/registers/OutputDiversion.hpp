#pragma once

#include <ostream>

namespace switchctl {

/// Sends what the library prints on the standard output elsewhere, so that it does not get between the
/// results.
class OutputDiversion {
public:
    /// `elsewhere` must outlive the diversion.
    explicit OutputDiversion(std::ostream& elsewhere);
    ~OutputDiversion();
    OutputDiversion(OutputDiversion const&) = delete;
    OutputDiversion& operator=(OutputDiversion const&) = delete;

private:
    std::streambuf* _before;
};

} // namespace switchctl
