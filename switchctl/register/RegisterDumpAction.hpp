#pragma once

#include "chips/RegisterTransport.hpp"
#include "switchctl/register/RegisterAction.hpp"
#include "switchctl/register/RegisterDump.hpp"

namespace switchctl::registers {

/// `switchctl register dump`.
class RegisterDumpAction : public RegisterAction {
public:
    explicit RegisterDumpAction(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    /// \return false when a PHY did not answer; its registers are then missing.
    bool readAll(chips::RegisterTransport& transport, RegisterDump& dump, std::ostream& errors) const;

    std::string _memoryDevice;
    TransportOptions _transport;
};

} // namespace switchctl::registers
