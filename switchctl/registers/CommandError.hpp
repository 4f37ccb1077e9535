#pragma once

#include <stdexcept>
#include <string>

#include "switchctl/ExitStatus.hpp"

namespace switchctl {

/// Why a command ends early: what() is for people, without the program's name.
class CommandError : public std::runtime_error {
public:
    CommandError(ExitStatus status, std::string const& text) : std::runtime_error(text), _status(status) {}

    ExitStatus getStatus() const { return _status; }

private:
    ExitStatus _status;
};

} // namespace switchctl
