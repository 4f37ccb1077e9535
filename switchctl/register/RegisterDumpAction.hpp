#pragma once

#include "chips/RegisterTransport.hpp"
#include "switchctl/register/RegisterAction.hpp"
#include "switchctl/register/RegisterDump.hpp"

namespace switchctl::registers {

/// `switchctl register dump`.
class RegisterDumpAction : public RegisterAction {
public:
    RegisterDumpAction(CLI::App& command, std::string memoryDevice);

    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const override;

private:
    /// \return false when a PHY did not answer; its registers are then missing.
    bool readAll(chips::RegisterTransport& transport, RegisterDump& dump, std::ostream& errors) const;

    std::string _memoryDevice;
    TransportOptions _transport;
    bool _json = false;
};

} // namespace switchctl::registers
