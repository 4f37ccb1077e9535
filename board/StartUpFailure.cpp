#include "board/StartUpFailure.hpp"

#include <array>

namespace board {

namespace {

struct Explanation {
    char const* libraryText;
    char const* meaning;
};

/// The texts stand in model/SwitchDocument.cpp, manager/SwitchManagerAssembly.cpp and
/// vitesse/VitesseParallelCommunication.cpp.
constexpr std::array<Explanation, 5> explanations = {{
    {"Roting xml or other catastrophic error", "several <switch> elements have the same id"},
    {"Duplicate switch response", "several switches answered with the same id"},
    {"switch timed out after attempted to read a register",
     "the VSC7390 does not answer on the parallel bus"},
    {"PHY Read timed out", "a PHY of the VSC7390 does not answer"},
    {"No reply from phy", "a PHY of the VSC7390 does not answer"},
}};

std::string meaningOf(std::string const& reason) {
    for (Explanation const& entry : explanations) {
        if (reason.find(entry.libraryText) != std::string::npos) {
            return entry.meaning;
        }
    }
    return "the library gave up";
}

} // namespace

std::string startUpFailureText(std::string const& document, std::string const& reason) {
    return document + ": start-up failed: " + meaningOf(reason) + "; \"switchctl check " + document +
           "\" tells what is wrong with the document" +
           (reason.empty() ? "" : " (the library: \"" + reason + "\")");
}

} // namespace board
