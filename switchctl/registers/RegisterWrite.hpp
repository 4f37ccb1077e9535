#pragma once

#include "switchctl/registers/RegisterAction.hpp"
#include "switchctl/registers/RegisterAssignment.hpp"
#include "switchctl/registers/RegisterTransport.hpp"

namespace switchctl {

/// `switchctl register write`.
class RegisterWrite : public RegisterAction {
public:
    RegisterWrite(CLI::App& command, std::string memoryDevice);

    ExitStatus run(std::ostream& out, std::ostream& errors) const override;

private:
    void requireConsent(std::vector<RegisterAssignment> const& assignments) const;
    static RegisterReading write(RegisterTransport& transport, RegisterAssignment const& assignment);
    void print(std::ostream& out, std::vector<RegisterReading> const& written,
               std::vector<RegisterReading> const& read) const;

    std::string _memoryDevice;
    TransportOptions _transport;
    std::vector<std::string> _assignments;
    std::vector<std::string> _thenRead;
    bool _yes = false;
    bool _json = false;
};

} // namespace switchctl
