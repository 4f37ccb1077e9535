#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "board/paths/AskedFrames.hpp"
#include "board/paths/Cables.hpp"
#include "board/paths/StationComparison.hpp"
#include "switchctl/paths/PathsWording.hpp"

namespace switchctl::paths {

/// Who reaches whom over cables, for people and for programs; empty without cables.
class StationsReport {
public:
    /// All but the last must outlive the object.
    StationsReport(board::Cables const& cables, board::Labels const& labels, board::AskedFrames const& frames,
                   std::vector<board::StationComparison::Line> lines);

    void printPaths(std::ostream& out) const;
    void printDifferences(std::ostream& out, std::string const& file) const;

    /// Adds its members.
    void addTo(nlohmann::ordered_json& json) const;

    std::size_t count(Severity severity) const;

private:
    using Line = board::StationComparison::Line;

    static Severity severityOf(Line const& line);
    std::string reachOf(Line const& line) const;
    nlohmann::ordered_json toJson(Line const& line) const;

    board::Cables const& _cables;
    board::Labels const& _labels;
    board::AskedFrames const& _frames;
    std::vector<Line> const _lines;
};

} // namespace switchctl::paths
