#pragma once

#include <libxml/tree.h>

#include <functional>
#include <string>

#include "switchctl/check/Severity.hpp"

namespace board {
class BoardReading;
}

namespace switchctl::check {

/// Takes a finding: the element, what the library will do with it, how to write it instead.
using Report = std::function<void(xmlNodePtr element, std::string const& effect, std::string const& advice)>;

/// One question that is asked of every document.
struct Check {
    /// Short, stable, in small letters and dashes.
    char const* name;
    Severity severity;
    /// One line for the list of all checks.
    char const* summary;
    void (*run)(board::BoardReading const& board, Report const& report);
};

} // namespace switchctl::check
