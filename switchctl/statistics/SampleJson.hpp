#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "chips/PortCounters.hpp"

namespace switchctl::statistics {

/// A sample as JSON: for each port the counters that could be read, with value and unit.
struct SampleJson {
    /// \param file the document.
    /// \param source what was read, in words.
    static nlohmann::ordered_json of(chips::CounterSample const& sample, std::string const& file,
                                     std::string const& source);
};

} // namespace switchctl::statistics
