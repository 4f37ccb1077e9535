#pragma once

#include <string>

#include "switchctl/Arguments.hpp"

namespace switchctl {

/// `--simulate[=DOCUMENT]`: chip models in place of hardware, those of another document where one is given.
class Simulation {
public:
    Arguments::Option
    addTo(Arguments& arguments,
          char const* text = "Read chip models instead of hardware: those of BOARD.xml or of "
                             "another document, after they were brought up",
          char const* type = "[=OTHER.xml]") {
        return arguments.flag("--simulate", _value, text).type(type);
    }

    bool isChosen() const { return !_value.empty(); }

    /// The document whose models they are.
    /// \param own the one that stands for --simulate without a value.
    std::string getPath(std::string const& own) const { return _value == "true" ? own : _value; }

private:
    std::string _value;
};

} // namespace switchctl
