#pragma once

#include <ostream>
#include <string>

#include "chips/PortCounters.hpp"

namespace switchctl::statistics {

/// A sample as JSON: for each port the counters that could be read, with value and unit.
struct SampleJson {
    /// \param file the document.
    /// \param source what was read, in words.
    static void print(chips::CounterSample const& sample, std::string const& file, std::string const& source,
                      std::ostream& out);
};

} // namespace switchctl::statistics
