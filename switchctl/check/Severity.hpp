#pragma once

#include <string>

namespace switchctl::check {

/// How bad a finding is, ascending.
enum class Severity {
    /// Worth knowing; the document does what it says.
    note,
    /// The library does something that its author may not have meant.
    warning,
    /// The library skips the item, takes it for another, or gives start-up up.
    error,
};

/// "note", "warning" or "error".
std::string severityName(Severity severity);

} // namespace switchctl::check
