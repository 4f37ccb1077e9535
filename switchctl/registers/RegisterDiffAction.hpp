#pragma once

#include "switchctl/registers/RegisterAction.hpp"

namespace switchctl {

/// `switchctl register diff`.
class RegisterDiffAction : public RegisterAction {
public:
    explicit RegisterDiffAction(CLI::App& command);

    ExitStatus run(std::ostream& out, std::ostream& errors) const override;

private:
    std::string _first;
    std::string _second;
    bool _json = false;
};

} // namespace switchctl
