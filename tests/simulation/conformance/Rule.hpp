#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>
#include <vector>

#include "simulation/network/Decision.hpp"
#include "tests/simulation/Frames.hpp"

namespace simulation_test {

/// One line of a chip's data sheet: what the registers say, the frame, and what becomes of it.
/// \tparam Step what a test does to the chip before the frame comes.
template <typename Step> struct Rule {
    std::string number;
    std::string question;
    /// In their order, after what all rules of the chip start from.
    std::vector<Step> steps;
    Frames::Frame frame;
    std::string outcome;

    friend void PrintTo(Rule const& rule, std::ostream* stream) {
        *stream << rule.number << ": " << rule.question << ": " << rule.frame.describe();
    }

    /// For a test's name: "M5", "a tagged frame" -> "M5ATaggedFrame".
    std::string getName() const {
        std::string name = number;
        bool startsWord = true;
        for (char const letter : question) {
            auto const code = static_cast<unsigned char>(letter);
            if (std::isalnum(code) != 0) {
                name += static_cast<char>(startsWord ? std::toupper(code) : code);
            }
            startsWord = std::isalnum(code) == 0;
        }
        return name;
    }
};

template <typename Step> std::string nameOf(testing::TestParamInfo<Rule<Step>> const& info) {
    return info.param.getName();
}

/// The VLAN, and the copies by port: `r` as received, `u` untagged, `t` tagged, `a` with a tag added; then
/// the tags of one that has another number of them, or others, than it came with, each VID.priority, with a d
/// when it may be dropped. Or who had the last say: "VLAN 5: 2r 3u 4t5.0", "VLAN 1: dropped by M10". A `!` is
/// a copy that is not what its form says.
std::string outcomeOf(simulation::Decision const& decision, Frames::Frame const& received);

} // namespace simulation_test
