#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "reference_host/XmlDocument.hpp"

namespace switchctl::bringup {

/// How many findings the checks of `switchctl check` have about a document.
struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;

    /// In one line, with the command that shows them.
    /// \param path of the document.
    void print(std::ostream& out, std::string const& path) const;

    nlohmann::ordered_json toJson() const;
};

/// What runs the checks: the program, since no verb knows another.
using DocumentChecks = std::function<FindingCounts(reference_host::XmlDocument&)>;

} // namespace switchctl::bringup
