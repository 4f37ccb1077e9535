#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "switchctl/port/PortChange.hpp"

namespace switchctl::port {

/// What became of a port and of the registers of its chip, as text and as JSON.
class PortReport {
public:
    /// All must outlive the report.
    /// \param examined whose chips they are, for example "the board".
    PortReport(PortChange const& change, chips::PortSettings const& settings, chips::PortAddress const& port,
               std::string const& chip, std::string const& examined);

    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    PortChange const& _change;
    chips::PortSettings const& _settings;
    chips::PortAddress const& _port;
    std::string const& _chip;
    std::string const& _examined;
};

} // namespace switchctl::port
