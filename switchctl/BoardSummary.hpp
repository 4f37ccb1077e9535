#pragma once

#include <ostream>
#include <vector>

#include "switchctl/BoardDocument.hpp"
#include "switchctl/BoardSession.hpp"

class ManagedSwitchPort;

namespace switchctl {

/// Prints what became of a board: what the document asks for beside what is there.
class BoardSummary {
public:
    /// Both must outlive the summary; the session's switches are ready.
    BoardSummary(BoardDocument const& document, BoardSession& session);

    /// Whether there are switches in the document and each of them came up.
    bool isComplete() const;

    void print(std::ostream& out) const;

    /// The library's warnings and errors so far.
    void printComplaints(std::ostream& out) const;

private:
    bool isUp(BoardDocument::Switch const& entry) const;
    ManagedSwitchPort* portOf(BoardDocument::Member const& member) const;
    void printSwitches(std::ostream& out) const;
    void printPorts(std::ostream& out) const;
    void printVlans(std::ostream& out) const;
    void printMembers(std::ostream& out, std::vector<BoardDocument::Member> const& members,
                      bool withTags) const;
    void printTrunks(std::ostream& out) const;
    void printMulticastGroups(std::ostream& out) const;
    void printCpuPort(std::ostream& out) const;
    void printEffort(std::ostream& out) const;

    BoardDocument const& _document;
    BoardSession& _session;
};

} // namespace switchctl
