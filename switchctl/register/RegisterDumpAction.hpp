#pragma once

#include "board/dump/RegisterDump.hpp"
#include "chips/RegisterTransport.hpp"
#include "switchctl/register/RegisterAction.hpp"

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
    bool readAll(chips::RegisterTransport& transport, board::RegisterDump& dump, std::ostream& errors) const;
    void readTables(chips::RegisterTransport& transport, board::RegisterDump& dump,
                    std::ostream& errors) const;

    std::string _memoryDevice;
    bool _tables = false;
    TransportOptions _transport;
};

} // namespace switchctl::registers
