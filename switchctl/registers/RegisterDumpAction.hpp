#pragma once

#include "switchctl/registers/RegisterAction.hpp"
#include "switchctl/registers/RegisterDump.hpp"
#include "switchctl/registers/RegisterTransport.hpp"

namespace switchctl {

/// `switchctl register dump`.
class RegisterDumpAction : public RegisterAction {
public:
    RegisterDumpAction(CLI::App& command, std::string memoryDevice);

    ExitStatus run(std::ostream& out, std::ostream& errors) const override;

private:
    /// \return false when a PHY did not answer; its registers are then missing.
    bool readAll(RegisterTransport& transport, RegisterDump& dump, std::ostream& errors) const;

    std::string _memoryDevice;
    TransportOptions _transport;
    bool _json = false;
};

} // namespace switchctl
