#pragma once

#include <nlohmann/json_fwd.hpp>

#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"

namespace switchctl::bringup {

/// What became of a board, for programs.
class SummaryJson {
public:
    using Json = nlohmann::ordered_json;

    /// Both must outlive the object.
    SummaryJson(board::BoardReading const& document, board::BoardSession& session);

    /// \param outcome of the session's bring-up.
    Json get(board::StartUpMonitor::Outcome const& outcome) const;

private:
    Json getSwitches() const;
    Json getPorts() const;
    Json getVlans() const;
    Json getTrunks() const;
    Json getGroups() const;
    Json getCpuPort() const;
    Json getEffort() const;
    Json getComplaints() const;
    void addMembers(Json& json, std::vector<board::BoardReading::Member> const& members, bool withTags) const;

    board::BoardReading const& _document;
    board::BoardSession& _session;
};

} // namespace switchctl::bringup
