#pragma once

#include <map>
#include <sstream>
#include <string>

#include "board/BoardReading.hpp"
#include "board/paths/Cables.hpp"

namespace switchctl::draw {

/// A board as a graph in Graphviz's language: each switch a table of its ports with type, state and
/// trunk, the VLANs beside them, and an edge for each membership in the VLAN's colour, solid where
/// frames leave with a tag, dashed where they leave without one.
class BoardDrawing {
public:
    /// The reading and the cables must outlive the drawing.
    /// \param title what stands above the picture.
    BoardDrawing(board::BoardReading const& board, board::Cables const& cables, std::string title);

    /// The same text for the same board.
    std::string getDot();

private:
    using Reading = board::BoardReading;

    void addSwitch(Reading::Switch const& owner);
    void addPort(Reading::Switch const& owner, Reading::Port const& port);
    void addCables();
    void addInterlinks();
    void addVlan(Reading::Vlan const& vlan, std::string const& colour);
    void addMember(Reading::Vlan const& vlan, Reading::Member const& member, std::string const& colour);
    void addLegend();

    bool isCpuPort(Reading::Switch const& owner, Reading::Port const& port) const;

    Reading const& _board;
    board::Cables const& _cables;
    std::string _title;
    std::ostringstream _out;
};

} // namespace switchctl::draw
