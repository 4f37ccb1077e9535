#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "board/BoardSession.hpp"
#include "board/audit/AuditRun.hpp"
#include "chips/ExitStatus.hpp"
#include "chips/PortSettings.hpp"
#include "host/Xml.hpp"

namespace switchctl::bringup {

/// Looks at what a start-up did: the chips of a session against what start-up leaves in fresh models.
///
/// Simulated chips were fresh, so that all of them is compared; of real ones what start-up writes, since
/// nobody knows what was in them before.
class ReadBack {
public:
    /// Reads the chips. Throws ToolError.
    /// \param session whose switches are all up.
    /// \param path of the document.
    /// \param memoryDevice where real chips are reached.
    /// \param startSpeed of ports that were started afterwards; nothing when none were.
    ReadBack(Xml& document, std::string const& path, board::BoardSession& session,
             std::string const& memoryDevice, std::optional<chips::PortSettings::Speed> const& startSpeed);

    /// One line, and one for each deviation and for each switch that could not be read.
    void print(std::ostream& out) const;

    nlohmann::ordered_json toJson() const;

    /// success, notAsDetermined, or registerFailed when not everything could be read.
    chips::ExitStatus getStatus() const;

private:
    std::unique_ptr<board::AuditRun> _run;
};

} // namespace switchctl::bringup
