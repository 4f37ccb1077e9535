#include "switchctl/check/CheckTable.hpp"

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace switchctl::check {

namespace {

using Port = board::BoardReading::Port;
using Switch = board::BoardReading::Switch;

std::string whereToPutIt() {
    return "Write the VSC7390's element before all other switches and list all of its 24 ports, or give it a "
           "document without other switches.";
}

template <typename Use> void forEachVitesse(board::BoardReading const& board, Use use) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        if (owner.isVitesse() && !owner.found.empty()) {
            use(owner);
        }
    }
}

void besideOtherPorts(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const& owner) {
        std::size_t const all = board.find("//switch/port").size();
        std::size_t const own = board::children(owner.element, "port").size();
        if (all != own) {
            report(owner.element,
                   "A VSC7390 takes the ports of all switches of the document for its own, in document "
                   "order, and "
                   "keeps the first of each number: this one counts " +
                       std::to_string(all) + " ports, " + std::to_string(own) + " of them its own.",
                   whereToPutIt());
        }
    });
}

void ownPortDisplaced(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const& owner) {
        for (xmlNodePtr const element : owner.droppedPorts) {
            auto const id = static_cast<unsigned int>(board::numberOr(element, "id", -1));
            Port const& kept = owner.ports.at(id);
            if (element->parent == owner.element && kept.element->parent != owner.element) {
                report(element,
                       "The VSC7390 drops its own port " + std::to_string(id) +
                           " and takes another switch's element of that number, line " +
                           std::to_string(xmlGetLineNo(kept.element)) + ": connected to \"" +
                           kept.connectedTo + "\", \"" + kept.portStatus + "\".",
                       whereToPutIt());
            }
        }
    });
}

void foreignPortAdded(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const& owner) {
        for (auto const& [id, port] : owner.ports) {
            bool ownNumber = false;
            for (xmlNodePtr const element : board::children(owner.element, "port")) {
                ownNumber = ownNumber || static_cast<unsigned int>(board::numberOr(element, "id", -1)) == id;
            }
            if (port.element->parent != owner.element && !ownNumber) {
                report(port.element,
                       "The VSC7390 " + std::to_string(owner.id) + " does not list port " + port.getName() +
                           " and takes this one for its own: it sets its port " + port.getName() +
                           " up as connected to \"" + port.connectedTo + "\", \"" + port.portStatus + "\".",
                       whereToPutIt());
            }
        }
    });
}

void masksOverrun(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const& owner) {
        if (owner.entryCount > owner.portsOfChip()) {
            report(
                owner.element,
                "The library counts " + std::to_string(owner.entryCount) +
                    " ports and trunks and clears as many source masks, though the chip has " +
                    std::to_string(owner.portsOfChip()) +
                    ": it also writes 0 to what comes behind them, beginning with the mask of the chip's own "
                    "CPU "
                    "port.",
                "Nothing to do as long as no frames go through the chip's own CPU port; fewer port and trunk "
                "elements avoid it.");
        }
    });
}

} // namespace

std::vector<Check> vitessePortChecks() {
    return {
        {"vsc7390-beside-other-ports", Severity::warning, "a VSC7390 beside other switches' ports",
         besideOtherPorts},
        {"vsc7390-own-port-displaced", Severity::error,
         "a VSC7390 that takes another switch's port for its own", ownPortDisplaced},
        {"vsc7390-foreign-port-added", Severity::error, "a VSC7390 that gets ports which it does not list",
         foreignPortAdded},
        {"vsc7390-masks-overrun", Severity::note, "more ports and trunks than source masks", masksOverrun},
    };
}

} // namespace switchctl::check
