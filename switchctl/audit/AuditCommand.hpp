#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "chips/ExitStatus.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/audit/AuditRun.hpp"

namespace switchctl::audit {

/// `switchctl audit`: whether a board's chips are as a document determines.
class AuditCommand {
public:
    /// Adds the command to the program's.
    /// \param memoryDevice where hardware is reached.
    explicit AuditCommand(CLI::App& program,
                          std::string memoryDevice = reference_host::DeviceMemory::defaultDevicePath);

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// \param out gets the deviations.
    /// \param errors gets what could not be read or done, and what the library prints.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    chips::ExitStatus audit(std::ostream& out, std::ostream& errors) const;
    std::unique_ptr<AuditRun> makeRun(std::ostream& errors) const;
    void compareSimulated(AuditRun& run) const;
    std::string getSimulatedPath() const;
    std::string getAudited() const;

    CLI::App* _command;
    std::string _memoryDevice;
    std::string _path;
    std::string _simulate;
    std::vector<std::string> _deviations;
    bool _json = false;
};

} // namespace switchctl::audit
