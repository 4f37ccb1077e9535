#pragma once

#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

/// `switchctl register read`.
class RegisterRead : public RegisterAction {
public:
    RegisterRead(CLI::App& command, std::string memoryDevice);

    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const override;

private:
    std::string _memoryDevice;
    TransportOptions _transport;
    std::vector<std::string> _locations;
    bool _json = false;
};

} // namespace switchctl::registers
