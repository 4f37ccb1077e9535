#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "board/audit/AuditRun.hpp"

/// A document that was brought up twice: what is expected was taken from the first models, and a test
/// may disturb the second.
class AuditBench {
public:
    /// \param example name of a document in examples/, without ".xml".
    explicit AuditBench(std::string const& example);

    simulation::SimulatedBoard& getBoard();
    board::ModelBringUp& getBringUp();

    /// The deviations, one line each.
    std::vector<std::string> audit();

    /// What the last audit could not read.
    std::vector<std::string> const& getUnread() const;
    /// The last audit.
    board::AuditRun const& getRun() const { return *_run; }

    static std::string pathOf(std::string const& example);

private:
    std::string _path;
    std::unique_ptr<board::ModelBringUp> _chips;
    std::unique_ptr<board::AuditRun> _run;
};
