#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "benchmarks/Access.hpp"

namespace benchmarks {

/// The accesses of a board's operations, as they are kept in benchmarks/accesses/. A file has a section for
/// each operation, its name in brackets, and then words: `r:ADDRESS:VALUE` and `w:ADDRESS:VALUE` are a read
/// and a write, numbers being hexadecimal and addresses below 80000000 counted from the start of the parallel
/// bus. `WORD*N` is a word N times. Other words stand for several; AccessList.cpp has them.
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

    /// The only text for these accesses.
    static std::string textOf(std::vector<Section> const& sections);

    /// Where two lists begin to differ, in words for people; empty when they do not.
    static std::string differenceOf(std::vector<Section> const& made, std::vector<Section> const& listed);
};

} // namespace benchmarks
