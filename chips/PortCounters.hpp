#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "chips/Counter.hpp"
#include "chips/PortAddress.hpp"

namespace chips {

/// What was read of one port's counters.
struct PortCounters {
    PortAddress port;
    /// As in configuration documents.
    std::string model;
    /// In the order of getCounters(); nothing for a counter that could not be read.
    std::vector<std::optional<std::uint64_t>> values;
    /// What people call the port; empty when they do not.
    std::string label = {};

    /// `0.1`, or `0.1 "uplink"`.
    std::string getName() const { return port.getText() + (label.empty() ? "" : " \"" + label + "\""); }

    /// Those of the chip; throws ToolError (badDocument) when tools do not know it.
    std::vector<Counter> const& getCounters() const;

    /// Whether there is any value.
    bool isRead() const;

    /// Whether all values are there.
    bool isComplete() const;
};

/// What was read of a board's ports at one time.
struct CounterSample {
    std::vector<PortCounters> ports;
    /// What could not be read and why, one line each.
    std::vector<std::string> unread;
};

} // namespace chips
