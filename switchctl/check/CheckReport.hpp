#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "switchctl/check/DocumentCheck.hpp"

namespace switchctl::check {

/// \name What `switchctl check` prints
/// @{

/// Findings for people: "FILE:LINE: SEVERITY: text [name]", as compilers write it, so that editors can
/// jump to the line; then the numbers of findings.
void printFindings(std::ostream& out, std::string const& file, DocumentCheck const& check);

/// The same as one JSON object.
nlohmann::ordered_json findingsAsJson(std::string const& file, DocumentCheck const& check);

/// All checks, one a line.
void printChecks(std::ostream& out);
nlohmann::ordered_json checksAsJson();
/// @}

} // namespace switchctl::check
