#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"

namespace switchctl::bringup {

/// Prints what became of a board: what the document asks for beside what is there.
class BoardSummary {
public:
    /// Both must outlive the summary; the session's switches are ready.
    BoardSummary(board::BoardReading const& document, board::BoardSession& session);

    void print(std::ostream& out) const;

    /// The library's warnings and errors so far.
    void printComplaints(std::ostream& out) const;

private:
    chips::ChipKind const* kindOf(unsigned switchId) const;
    void printSwitches(std::ostream& out) const;
    void printPorts(std::ostream& out) const;
    void printVlans(std::ostream& out) const;
    void printMembers(std::ostream& out, std::string const& heading,
                      std::vector<board::BoardReading::Member> const& members, bool withTags) const;
    void printTrunks(std::ostream& out) const;
    void printMulticastGroups(std::ostream& out) const;
    void printCpuPort(std::ostream& out) const;
    void printEffort(std::ostream& out) const;

    board::BoardReading const& _document;
    board::BoardSession& _session;
};

} // namespace switchctl::bringup
