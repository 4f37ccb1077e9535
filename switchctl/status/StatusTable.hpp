#pragma once

#include <ostream>

#include "switchctl/status/StatusFacts.hpp"
#include "switchctl/status/StatusSample.hpp"

namespace switchctl::status {

/// A sample for people: a row a port, below the name of its switch.
struct StatusTable {
    static void print(StatusSample const& sample, board::BoardReading const& document, std::ostream& out);
};

} // namespace switchctl::status
