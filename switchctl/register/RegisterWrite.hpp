#pragma once

#include "chips/RegisterAssignment.hpp"
#include "chips/RegisterTransport.hpp"
#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

/// `switchctl register write`.
class RegisterWrite : public RegisterAction {
public:
    explicit RegisterWrite(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    void requireConsent(std::vector<chips::RegisterAssignment> const& assignments) const;
    static RegisterReading write(chips::RegisterTransport& transport,
                                 chips::RegisterAssignment const& assignment);
    void print(std::ostream& out, std::vector<RegisterReading> const& written,
               std::vector<RegisterReading> const& read) const;

    std::string _memoryDevice;
    TransportOptions _transport;
    std::vector<std::string> _assignments;
    std::vector<std::string> _thenRead;
    bool _yes = false;
};

} // namespace switchctl::registers
