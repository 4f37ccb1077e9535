#pragma once

#include "switchctl/status/StatusFacts.hpp"
#include "switchctl/status/StatusSample.hpp"

namespace switchctl::status {

/// A sample for programs: null is what a chip does not tell; what could not be read is missing, and named.
struct StatusJson {
    static nlohmann::ordered_json of(StatusSample const& sample, board::BoardReading const& document,
                                     std::string const& file, std::string const& source);

    /// Switch, port and chip, and the facts in them.
    static nlohmann::ordered_json of(StatusSample::Row const& row, board::BoardReading const& document);

    /// Switch, port and chip.
    static nlohmann::ordered_json of(board::PortSelection::Port const& port);
};

} // namespace switchctl::status
