#pragma once

#include <stdexcept>
#include <string>

#include "chips/ExitStatus.hpp"

namespace chips {

/// Why a command ends early: what() is for people, without the program's name.
class ToolError : public std::runtime_error {
public:
    ToolError(ExitStatus status, std::string const& text) : std::runtime_error(text), _status(status) {}

    ExitStatus getStatus() const { return _status; }

private:
    ExitStatus _status;
};

} // namespace chips
