#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "board/paths/WatchedStartUp.hpp"
#include "switchctl/paths/PathsWording.hpp"

namespace switchctl::paths {

/// What is open while a board starts and no document allows, for people and for programs.
class StartingReport {
public:
    /// \param oldFile the document that the chips were brought up by before; empty without one.
    /// \param startUp must outlive the object.
    StartingReport(std::string file, std::string oldFile, board::WatchedStartUp const& startUp);

    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    /// Intervals are warnings; what is left open in the end is as bad as `paths` finds it.
    std::size_t count(Severity severity) const;

private:
    using Interval = board::OpenPaths::Interval;
    using Write = board::OpenPaths::Write;

    void printInterval(std::ostream& out, Interval const& interval) const;
    nlohmann::ordered_json intervalToJson(Interval const& interval) const;
    nlohmann::ordered_json writeToJson(Write write) const;
    nlohmann::ordered_json lineToJson(board::PathLine const& line) const;

    std::string begin() const;
    std::string writeText(Write write) const;
    /// Since the bring-up began.
    std::uint64_t timeOf(Write write) const;
    std::uint64_t lengthOf(Interval const& interval) const;
    std::uint64_t getLongest() const;
    std::size_t countPairs() const;

    std::string _file;
    std::string _oldFile;
    board::WatchedStartUp const& _startUp;
    std::vector<Interval> const _intervals;
    std::vector<board::PathLine> const _left;
};

} // namespace switchctl::paths
