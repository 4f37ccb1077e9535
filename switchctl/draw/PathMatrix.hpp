#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "board/paths/PathComparison.hpp"

namespace switchctl::draw {

/// Who reaches whom, cell by cell: for each pair of ports of a switch in which VLANs, with or without tags,
/// and what of it is not as the document wants it.
class PathMatrix {
public:
    /// The VLAN that the document puts frames in, or none; whether they leave with a tag.
    using Colour = std::pair<std::optional<unsigned>, bool>;

    struct Cell {
        std::set<Colour> colours;
        /// Frames get there that must not, with wrong tags, or twice.
        bool isWrong = false;
        /// Frames do not get there that must.
        bool isMissing = false;
        /// What frames do, for people, for example "VLAN 5 (0x5): untagged, leave tagged 5".
        std::vector<std::string> texts;
    };

    /// A switch and a port that sends, and a port that gets.
    struct Place {
        unsigned switchId;
        unsigned from;
        unsigned to;

        bool operator<(Place const& other) const;
    };

    /// The comparison is not needed afterwards.
    explicit PathMatrix(board::PathComparison const& comparison);

    /// Those in which there is something.
    std::map<Place, Cell> const& getCells() const { return _cells; }

private:
    template <typename Action> void forEachCell(board::PathLine const& line, Action const& action);
    void addPath(board::PathLine const& line, board::AskedFrames const& frames);
    void addDifference(board::PathLine const& line, board::AskedFrames const& frames);

    std::map<Place, Cell> _cells;
};

} // namespace switchctl::draw
