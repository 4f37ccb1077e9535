#pragma once

#include <string>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"

namespace switchctl::audit {

/// A write to a simulated board that makes it deviate: SWITCH/LOCATION=VALUE or
/// SWITCH/LOCATION:FIELD=VALUE[,FIELD=VALUE]....
struct SeededWrite {
    /// Makes the write over the board's bus. Throws CommandError: usage when the text is wrong or the
    /// board has no such switch.
    static void make(std::string const& text, board::ModelBringUp const& bringUp, board::BoardAccess& board);
};

} // namespace switchctl::audit
