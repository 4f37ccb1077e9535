#include "switchctl/draw/MatrixDrawing.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "board/Wording.hpp"

namespace switchctl::draw {

namespace {

// In units of the picture, which are pixels where nobody zooms.
constexpr unsigned cellSize = 24;
constexpr unsigned left = 150;
constexpr unsigned lineHeight = 28;
constexpr unsigned firstTop = 50;
// Of a switch above its cells: its name and the columns' numbers.
constexpr unsigned headHeight = 50;
constexpr unsigned gap = 20;
constexpr unsigned legendWidth = 420;

constexpr char const* wrongColour = "#E00000";
constexpr char const* noVlanColour = "#999999";
constexpr char const* taggedOpacity = "1";
constexpr char const* untaggedOpacity = "0.45";

SvgWriter::Attributes boxOf(unsigned x, unsigned y, unsigned width, unsigned height, std::string const& fill,
                            char const* opacity = taggedOpacity) {
    return {{"x", std::to_string(x)},           {"y", std::to_string(y)}, {"width", std::to_string(width)},
            {"height", std::to_string(height)}, {"fill", fill},           {"fill-opacity", opacity}};
}

SvgWriter::Attributes at(unsigned x, unsigned y, char const* anchor = "start") {
    return {{"x", std::to_string(x)}, {"y", std::to_string(y)}, {"text-anchor", anchor}};
}

void addWrong(SvgWriter& svg, unsigned x, unsigned y) {
    svg.add("rect", boxOf(x, y, cellSize, cellSize, wrongColour));
    svg.add("path", {{"d", fmt::format("M{} {}l14 14m0 -14l-14 14", x + 5, y + 5)},
                     {"stroke", "white"},
                     {"stroke-width", "2"}});
}

void addMissing(SvgWriter& svg, unsigned x, unsigned y) {
    svg.add("rect", boxOf(x, y, cellSize, cellSize, "url(#missing)"));
}

} // namespace

std::string MatrixDrawing::colourOf(std::optional<unsigned> vlan) const {
    auto const found = vlan ? _colours.find(*vlan) : _colours.end();
    return found == _colours.end() ? noVlanColour : found->second;
}

unsigned MatrixDrawing::getLegendTop() const {
    unsigned top = firstTop;
    for (auto const& [id, ports] : _sizes) {
        top += headHeight + ports * cellSize + gap;
    }
    return top;
}

std::string MatrixDrawing::getSvg(std::string const& title) const {
    unsigned most = 0;
    for (auto const& [id, ports] : _sizes) {
        most = std::max(most, ports);
    }
    constexpr unsigned fixedLines = 5;
    auto const legendLines = static_cast<unsigned>(_board.getVlans().size()) + fixedLines;
    unsigned const width = std::max(left + most * cellSize + gap, legendWidth);
    unsigned const height = getLegendTop() + legendLines * lineHeight;
    SvgWriter svg;
    svg.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                     {"width", std::to_string(width)},
                     {"height", std::to_string(height)},
                     {"viewBox", fmt::format("0 0 {} {}", width, height)},
                     {"font-family", "Helvetica, sans-serif"},
                     {"font-size", "12"}});
    svg.add("title", {}, "Who reaches whom: " + title);
    svg.add("desc", {},
            "For each switch a row for each port that sends and a column for each port that gets; each cell "
            "in which there is something has a title that says what.");
    addPatterns(svg);
    svg.add("rect", boxOf(0, 0, width, height, "white"));
    SvgWriter::Attributes heading = at(gap, firstTop / 2);
    heading.emplace_back("font-weight", "bold");
    svg.add("text", heading, title + ": who reaches whom");
    unsigned top = firstTop;
    for (auto const& [id, ports] : _sizes) {
        addSwitch(svg, id, ports, top);
        top += headHeight + ports * cellSize + gap;
    }
    addLegend(svg, top);
    return svg.finish();
}

void MatrixDrawing::addPatterns(SvgWriter& svg) const {
    svg.open("defs");
    svg.open("pattern", {{"id", "missing"},
                         {"width", "6"},
                         {"height", "6"},
                         {"patternUnits", "userSpaceOnUse"},
                         {"patternTransform", "rotate(45)"}});
    svg.add("rect", {{"width", "2"}, {"height", "6"}, {"fill", "black"}});
    svg.close();
    svg.close();
}

void MatrixDrawing::addSwitch(SvgWriter& svg, unsigned id, unsigned ports, unsigned top) const {
    svg.open("g", {{"class", "switch"}});
    addLabels(svg, id, ports, top);
    for (auto const& [place, cell] : _matrix.getCells()) {
        if (place.switchId == id) {
            addCell(svg, place, cell, top + headHeight);
        }
    }
    svg.close();
}

std::string MatrixDrawing::nameOf(unsigned switchId, unsigned port) const {
    return _board.getLabels().nameOf(chips::PortAddress{switchId, port}.getText());
}

void MatrixDrawing::addLabels(SvgWriter& svg, unsigned id, unsigned ports, unsigned top) const {
    auto const& owner = _board.getSwitches().at(id);
    board::Labels const& labels = _board.getLabels();
    svg.add("text", at(gap, top + lineHeight),
            fmt::format("switch {}{}  {}", id, labels.after(std::to_string(id)), owner.model));
    svg.add("text", at(left, top + lineHeight), "to");
    for (unsigned port = 0; port < ports; ++port) {
        unsigned const row = top + headHeight + port * cellSize;
        unsigned const column = left + port * cellSize;
        std::string const status = owner.ports.at(port).isListed ? owner.ports.at(port).status : "not listed";
        svg.open("g");
        svg.add("title", {}, nameOf(id, port));
        svg.add("text", at(left - 6, row + 16, "end"), fmt::format("{}.{}  {}", id, port, status));
        svg.close();
        svg.add("text", at(column + cellSize / 2, top + headHeight - 6, "middle"), std::to_string(port));
    }
    for (unsigned line = 0; line <= ports; ++line) {
        svg.add("path", {{"d", fmt::format("M{} {}h{}M{} {}v{}", left, top + headHeight + line * cellSize,
                                           ports * cellSize, left + line * cellSize, top + headHeight,
                                           ports * cellSize)},
                         {"stroke", "#DDDDDD"}});
    }
}

void MatrixDrawing::addCell(SvgWriter& svg, PathMatrix::Place const& place, PathMatrix::Cell const& cell,
                            unsigned top) const {
    unsigned const x = left + place.to * cellSize;
    unsigned const y = top + place.from * cellSize;
    char const* const kind = cell.isWrong ? "wrong" : cell.isMissing ? "missing" : "path";
    svg.open("g", {{"class", kind}});
    svg.add("title", {},
            fmt::format("{} to {}: {}", nameOf(place.switchId, place.from), nameOf(place.switchId, place.to),
                        fmt::join(cell.texts, "; ")));
    if (cell.isWrong) {
        addWrong(svg, x, y);
    } else {
        unsigned number = 0;
        auto const count = static_cast<unsigned>(cell.colours.size());
        for (auto const& [vlan, isTagged] : cell.colours) {
            unsigned const begin = number * cellSize / count;
            unsigned const end = ++number * cellSize / count;
            svg.add("rect", boxOf(x + begin, y, end - begin, cellSize, colourOf(vlan),
                                  isTagged ? taggedOpacity : untaggedOpacity));
        }
    }
    if (cell.isMissing) {
        addMissing(svg, x, y);
    }
    svg.close();
}

void MatrixDrawing::addLegend(SvgWriter& svg, unsigned top) const {
    auto const addText = [&](std::string const& text) {
        svg.add("text", at(gap + 2 * cellSize + 10, top + 16), text);
        top += lineHeight;
    };
    svg.open("g", {{"class", "legend"}});
    for (auto const& [id, vlan] : _board.getVlans()) {
        svg.add("rect", boxOf(gap, top, cellSize, cellSize - 4, colourOf(id)));
        svg.add("rect", boxOf(gap + cellSize, top, cellSize, cellSize - 4, colourOf(id), untaggedOpacity));
        addText(board::vlanName(id, vlan.written) + ", with and without a tag");
    }
    svg.add("rect", boxOf(gap, top, cellSize, cellSize - 4, noVlanColour));
    svg.add("rect", boxOf(gap + cellSize, top, cellSize, cellSize - 4, noVlanColour, untaggedOpacity));
    addText("in no VLAN by tags, with and without a tag");
    addWrong(svg, gap, top);
    addText("frames get there that must not, or not like this");
    addMissing(svg, gap, top);
    addText("frames do not get there that must");
    svg.close();
}

} // namespace switchctl::draw
