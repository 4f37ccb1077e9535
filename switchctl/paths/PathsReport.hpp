#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "board/intent/Intent.hpp"
#include "board/paths/PathComparison.hpp"
#include "board/paths/PathLine.hpp"
#include "switchctl/paths/PathsWording.hpp"
#include "switchctl/paths/StationsReport.hpp"

namespace switchctl::paths {

/// Who reaches whom, and where that is not what the document asks for, for people and for programs.
class PathsReport {
public:
    /// All of them must outlive the object.
    PathsReport(std::string file, board::Intent const& intent, board::PathComparison const& comparison,
                StationsReport const& stations);

    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    std::size_t count(Severity severity) const;
    static Severity severityOf(board::PathLine const& line);

private:
    void printBlock(std::ostream& out, std::string const& title, std::optional<unsigned> vlan) const;
    void printDifference(std::ostream& out, board::PathLine const& line) const;
    nlohmann::ordered_json differenceToJson(board::PathLine const& line) const;
    nlohmann::ordered_json lineToJson(board::PathLine const& line) const;

    std::string portsOf(board::PathLine const& line, board::PortSet ports) const;
    std::string reachOf(board::PathLine const& line) const;
    static std::string explanationOf(board::PathLine const& line);
    int lineOf(board::PathLine const& line) const;

    std::string _file;
    board::Intent const& _intent;
    board::AskedFrames const& _frames;
    board::PathComparison const& _comparison;
    StationsReport const& _stations;
    std::vector<board::PathLine> const _paths;
    std::vector<board::PathLine> const _differences;
};

} // namespace switchctl::paths
