#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "board/audit/AuditRun.hpp"

namespace switchctl::audit {

/// An audit for people and for programs.
class AuditReport {
public:
    /// `run` must outlive the report.
    /// \param document its path.
    /// \param audited what was read, in words.
    AuditReport(board::AuditRun const& run, std::string document, std::string audited);

    /// A line for each deviation and for each switch that was not read, then how much was compared, and what
    /// never is.
    void print(std::ostream& out) const;
    /// Without a list of deviations when none was found and not everything was read.
    nlohmann::ordered_json toJson() const;

private:
    board::AuditRun const& _run;
    std::string _document;
    std::string _audited;
};

} // namespace switchctl::audit
