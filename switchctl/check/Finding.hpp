#pragma once

#include <string>

#include "switchctl/check/Severity.hpp"

namespace switchctl::check {

/// One thing that a check has found in a document.
struct Finding {
    /// The check's short name.
    std::string check;
    Severity severity = Severity::note;
    std::string file;
    /// Where the element begins, from 1.
    int line = 0;
    /// The element's start tag as text.
    std::string element;
    /// What the document calls the switch or port that the element is or names; empty when it does not.
    std::string label;
    /// What the library will do with it.
    std::string effect;
    /// How to write it instead.
    std::string advice;
};

} // namespace switchctl::check
