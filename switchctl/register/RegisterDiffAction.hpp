#pragma once

#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

/// `switchctl register diff`.
class RegisterDiffAction : public RegisterAction {
public:
    RegisterDiffAction();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::string _first;
    std::string _second;
};

} // namespace switchctl::registers
