#pragma once

#include <string>
#include <vector>

namespace fuzz {

/// Something that must stand any input. What run() throws, and what a sanitizer reports, is a finding.
struct FuzzTarget {
    char const* name;
    void (*run)(std::string const& input);

    /// Whether inputs are documents, which can be changed by elements and attributes.
    bool takesDocuments;

    static std::vector<FuzzTarget> const& getAll();

    /// Throws std::out_of_range.
    static FuzzTarget const& find(std::string const& name);
};

} // namespace fuzz
