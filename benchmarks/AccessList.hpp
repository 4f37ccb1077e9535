#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "benchmarks/Access.hpp"

namespace benchmarks {

/// The accesses of a board's operations. A list has a section for each operation, its name in brackets, and
/// then lines: `r:ADDRESS:VALUE` and `w:ADDRESS:VALUE` are a read and a write, numbers being hexadecimal. The
/// lists in benchmarks/accesses/ are shorter; scripts/measure/access-lists spells them out.
class AccessList {
public:
    struct Section {
        std::string name;
        std::vector<Access> accesses;
    };

    /// Throws std::runtime_error when there is something else in it, or nothing.
    static std::vector<Section> read(std::istream& file);

    /// As above, of a file that has to be there.
    static std::vector<Section> readFile(std::string const& path);

    /// What `read` reads.
    static std::string textOf(std::vector<Section> const& sections);

    /// Where two lists begin to differ, in words for people; empty when they do not.
    static std::string differenceOf(std::vector<Section> const& made, std::vector<Section> const& listed);
};

} // namespace benchmarks
