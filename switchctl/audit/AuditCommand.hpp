#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "board/audit/AuditRun.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl::audit {

/// `switchctl audit`: whether a board's chips are as a document determines.
class AuditCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit AuditCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::unique_ptr<board::AuditRun> makeRun(std::ostream& errors) const;
    void compareSimulated(board::AuditRun& run) const;
    std::string getAudited() const;

    std::string _memoryDevice;
    std::string _path;
    Simulation _simulation;
    std::vector<std::string> _deviations;
    bool _writtenOnly = false;
};

} // namespace switchctl::audit
