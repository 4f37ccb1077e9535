#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "switchctl/audit/AuditRun.hpp"

namespace switchctl::audit {

/// An audit for people and for programs.
class AuditReport {
public:
    /// `run` must outlive the report.
    /// \param document its path.
    /// \param audited what was read, in words.
    AuditReport(AuditRun const& run, std::string document, std::string audited);

    /// A line for each deviation, then how much was compared.
    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    AuditRun const& _run;
    std::string _document;
    std::string _audited;
};

} // namespace switchctl::audit
