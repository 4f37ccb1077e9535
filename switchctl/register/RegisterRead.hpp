#pragma once

#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

/// `switchctl register read`.
class RegisterRead : public RegisterAction {
public:
    explicit RegisterRead(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::string _memoryDevice;
    TransportOptions _transport;
    std::vector<std::string> _locations;
};

} // namespace switchctl::registers
