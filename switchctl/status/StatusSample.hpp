#pragma once

#include <string>
#include <vector>

#include "board/PortSelection.hpp"
#include "chips/PortStatus.hpp"

namespace switchctl::status {

/// What was read of a board's ports at one time.
struct StatusSample {
    struct Row {
        board::PortSelection::Port port;
        chips::PortStatus status;
    };

    std::vector<Row> rows;
    /// What could not be read and why, one line each.
    std::vector<std::string> unread;
};

} // namespace switchctl::status
