#include "switchctl/draw/PathMatrix.hpp"

#include <fmt/format.h>

#include <tuple>

#include "board/Wording.hpp"
#include "board/paths/PathWording.hpp"

namespace switchctl::draw {

using board::PathLine;

bool PathMatrix::Place::operator<(Place const& other) const {
    return std::tie(switchId, from, to) < std::tie(other.switchId, other.from, other.to);
}

PathMatrix::PathMatrix(board::PathComparison const& comparison) {
    for (PathLine const& line : comparison.getDifferences()) {
        addDifference(line, comparison.getFrames());
    }
    for (PathLine const& line : comparison.getPaths()) {
        addPath(line, comparison.getFrames());
    }
}

template <typename Action> void PathMatrix::forEachCell(PathLine const& line, Action const& action) {
    for (PathLine::Reach const& reach : line.reach) {
        for (unsigned const from : board::numbersOf(line.from)) {
            for (unsigned const to : board::numbersOf(line.receiversOf(from, reach.to))) {
                action(_cells[{line.key.switchId, from, to}], reach.form);
            }
        }
    }
}

void PathMatrix::addDifference(PathLine const& line, board::AskedFrames const& frames) {
    using Kind = PathLine::Kind;
    std::string const what = fmt::format("{}: {}: {}", PathLine::name(line.key.kind),
                                         board::framesText(frames, line.frames, line.destinations),
                                         board::Intent::describe(line.key.reason));
    forEachCell(line, [&](Cell& cell, PathLine::Form const&) {
        cell.isMissing = cell.isMissing || line.key.kind == Kind::missing;
        cell.isWrong = cell.isWrong || (line.key.kind != Kind::missing && line.key.kind != Kind::ambiguous);
        cell.texts.push_back(what);
    });
}

void PathMatrix::addPath(PathLine const& line, board::AskedFrames const& frames) {
    std::string const vlan = line.key.vlan ? board::vlanName(*line.key.vlan) : "in no VLAN";
    std::string const text = board::framesText(frames, line.frames, line.destinations);
    forEachCell(line, [&](Cell& cell, PathLine::Form const& form) {
        cell.colours.emplace(line.key.vlan, form.isAsReceived || form.tags.count != 0);
        cell.texts.push_back(fmt::format("{}: {}, leave {}", vlan, text, form.describe()));
    });
}

} // namespace switchctl::draw
