#pragma once

#include <map>
#include <optional>
#include <string>

#include "board/intent/IntendedBoard.hpp"
#include "switchctl/draw/PathMatrix.hpp"
#include "switchctl/draw/SvgWriter.hpp"

namespace switchctl::draw {

/// Who reaches whom as a picture in SVG: for each switch a square of cells, a row for each port that sends
/// and a column for each that gets. A cell has the colours of its VLANs; what is wrong is red and crossed
/// out, what is missing hatched. What can be seen of a cell can also be read, in its title.
class MatrixDrawing {
public:
    /// By switch, how many ports it has.
    using Sizes = std::map<unsigned, unsigned>;

    /// All of them must outlive the object.
    /// \param colours of VLANs.
    MatrixDrawing(PathMatrix const& matrix, Sizes const& sizes, board::IntendedBoard const& board,
                  std::map<unsigned, std::string> const& colours)
        : _matrix(matrix), _sizes(sizes), _board(board), _colours(colours) {}

    /// \param title what stands above the picture.
    std::string getSvg(std::string const& title) const;

private:
    void addPatterns(SvgWriter& svg) const;
    void addSwitch(SvgWriter& svg, unsigned id, unsigned ports, unsigned top) const;
    void addLabels(SvgWriter& svg, unsigned id, unsigned ports, unsigned top) const;
    void addCell(SvgWriter& svg, PathMatrix::Place const& place, PathMatrix::Cell const& cell,
                 unsigned top) const;
    void addLegend(SvgWriter& svg, unsigned top) const;
    /// A port with its label.
    std::string nameOf(unsigned switchId, unsigned port) const;
    std::string colourOf(std::optional<unsigned> vlan) const;
    unsigned getLegendTop() const;

    PathMatrix const& _matrix;
    Sizes const& _sizes;
    board::IntendedBoard const& _board;
    std::map<unsigned, std::string> const& _colours;
};

} // namespace switchctl::draw
