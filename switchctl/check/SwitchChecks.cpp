#include "switchctl/check/CheckTable.hpp"

#include <algorithm>
#include <map>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"

namespace switchctl::check {

namespace {

constexpr unsigned int mdioAddresses = 32;

std::string oneIdEach() {
    return "Give every switch an id of its own, in decimal digits.";
}

void noSwitches(board::BoardReading const& board, Report const& report) {
    if (!board.find("//switches/switch").empty()) {
        return;
    }
    report(board.find("/*").front(), "The library finds no switch and starts up without any.",
           "Write <switches> with a <switch> for each chip of the board.");
}

void outsideSwitches(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//switch[not(parent::switches)]")) {
        report(
            element,
            "The library looks for chips in //switches/switch and never finds this one. Its ports and its id "
            "still count in the other queries: a VSC7390 takes the ports for its own.",
            "Move it into the element <switches>.");
    }
}

void modelAbsent(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//switches/switch[not(@switchModel)]")) {
        report(element, "The library reports that the switch has no attribute switchModel and skips it.",
               R"(Write switchModel="88e6096" or switchModel="vsc7390".)");
    }
}

void modelUnknown(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//switches/switch[@switchModel]")) {
        if (!board::BoardReading::chipOf(element)) {
            report(element,
                   "No driver knows this model, which is compared letter by letter: the library skips the "
                   "switch "
                   "and says nothing.",
                   R"(Write switchModel="88e6096" or switchModel="vsc7390", in small letters.)");
        }
    }
}

void idDuplicate(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, entry] : board.getSwitches()) {
        for (std::size_t index = 1; index < entry.found.size(); ++index) {
            report(entry.found[index],
                   "Switch " + std::to_string(id) +
                       " finds more than one element of its id; start-up ends with \"Roting xml or other "
                       "catastrophic error\" and nothing is configured.",
                   oneIdEach());
        }
    }
}

void idTaken(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//switches/switch")) {
        unsigned int const id = board::BoardReading::switchIdOf(element);
        board::BoardReading::Switch const* const first = board.getSwitch(static_cast<int>(id));
        bool const reported = first != nullptr && std::count(first->found.begin(), first->found.end(),
                                                             element) != 0; // by switch-id-duplicate
        if (!board::BoardReading::chipOf(element) || first == nullptr || first->element == element ||
            reported) {
            continue;
        }
        report(element,
               first->chip == *board::BoardReading::chipOf(element)
                   ? "Its id is " + std::to_string(id) +
                         " like another switch's: the library ignores this one."
                   : "Its id is " + std::to_string(id) +
                         " like another model's: start-up ends with \"Duplicate switch response\".",
               oneIdEach());
    }
}

void idReadsDifferently(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, entry] : board.getSwitches()) {
        if (std::count(entry.found.begin(), entry.found.end(), entry.element) != 0) {
            continue;
        }
        report(entry.element,
               "Discovery reads the id (" + board::quotedAttribute(entry.element, "id") + ") as " +
                   std::to_string(id) + ", but //switch[@id=" + std::to_string(id) +
                   "] does not find the element: switch " + std::to_string(id) +
                   (entry.found.empty() ? " comes up without ports and trunks."
                                        : " takes another element's ports."),
               "Write the id as decimal digits, at most 65535.");
    }
}

void idIsNoMdioAddress(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, entry] : board.getSwitches()) {
        if (entry.isMarvell() && id >= mdioAddresses) {
            report(entry.element,
                   "The id of an 88E6096 is its address on the MDIO bus, which has five bits: " +
                       std::to_string(id) + " does not fit, and the library will not find the chip.",
                   "Write the address that the chip is strapped to, 0 to 31.");
        }
    }
}

void secondVitesse(board::BoardReading const& board, Report const& report) {
    bool first = true;
    for (auto const& [id, entry] : board.getSwitches()) {
        if (!entry.isVitesse()) {
            continue;
        }
        if (!first) {
            report(entry.element,
                   "The library reaches every VSC7390 at one place of the parallel bus: this switch is the "
                   "same chip as the one before, which is then set up twice.",
                   "Describe one VSC7390 only.");
        }
        first = false;
    }
}

} // namespace

std::vector<Check> switchChecks() {
    return {
        {"switch-none", Severity::error, "no switch in the document", noSwitches},
        {"switch-outside-switches", Severity::error, "a switch that discovery does not see", outsideSwitches},
        {"switch-model-absent", Severity::error, "a switch without a model", modelAbsent},
        {"switch-model-unknown", Severity::error, "a model that no driver knows", modelUnknown},
        {"switch-id-duplicate", Severity::error, "an id that two switch elements share", idDuplicate},
        {"switch-id-taken", Severity::error, "ids of other texts that come to the same number", idTaken},
        {"switch-id-reads-differently", Severity::error, "an id by which the switch does not find its ports",
         idReadsDifferently},
        {"switch-id-no-mdio-address", Severity::error, "an 88E6096 whose id is no MDIO address",
         idIsNoMdioAddress},
        {"switch-second-vsc7390", Severity::error, "more than one VSC7390", secondVitesse},
    };
}

} // namespace switchctl::check
