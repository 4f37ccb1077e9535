#pragma once

#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

/// `switchctl register diff`.
class RegisterDiffAction : public RegisterAction {
public:
    explicit RegisterDiffAction(CLI::App& command);

    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const override;

private:
    std::string _first;
    std::string _second;
    bool _json = false;
};

} // namespace switchctl::registers
