#include <map>
#include <string>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Labels.hpp"
#include "chips/PortAddress.hpp"
#include "switchctl/check/CheckTable.hpp"

namespace switchctl::check {

namespace {

/// Ports that the document lists, by address.
using Ports = std::map<std::string, xmlNodePtr>;

Ports listedPorts(board::BoardReading const& board) {
    Ports ports;
    for (xmlNodePtr const element : board.find("//switches/switch/port")) {
        ports.emplace(board::Labels::placeOf(element), element);
    }
    return ports;
}

/// The address in the port's connectsTo; empty when there is none.
std::string targetOf(xmlNodePtr port) {
    auto const address = chips::PortAddress::fromText(board::attribute(port, "connectsTo").value_or(""));
    return address ? address->getText() : "";
}

std::vector<xmlNodePtr> endsOf(board::BoardReading const& board) {
    return board.find("//switches/switch/port[@connectsTo]");
}

void leadsNowhere(board::BoardReading const& board, Report const& report) {
    Ports const ports = listedPorts(board);
    for (xmlNodePtr const element : endsOf(board)) {
        std::string const target = targetOf(element);
        if (ports.count(target) == 0 || target == board::Labels::placeOf(element)) {
            report(element,
                   "The cable leads to no other port of the document (connectsTo is " +
                       board::quotedAttribute(element, "connectsTo") + "). The library does not look at it.",
                   "Write the switch and the port at the other end, as in connectsTo=\"1.10\".");
        }
    }
}

void isNotAnswered(board::BoardReading const& board, Report const& report) {
    Ports const ports = listedPorts(board);
    for (xmlNodePtr const element : endsOf(board)) {
        std::string const here = board::Labels::placeOf(element);
        auto const other = ports.find(targetOf(element));
        if (other != ports.end() && other->first != here && targetOf(other->second) != here) {
            report(element,
                   "Port " + other->first +
                       ", to which the cable leads, does not say that it is connected to " + here +
                       " (its connectsTo is " + board::quotedAttribute(other->second, "connectsTo") +
                       "). The library does not look at it.",
                   "Write connectsTo=\"" + here + "\" at port " + other->first + ", or correct this one.");
        }
    }
}

void isShared(board::BoardReading const& board, Report const& report) {
    std::map<std::string, std::string> takers;
    for (xmlNodePtr const element : endsOf(board)) {
        std::string const target = targetOf(element);
        auto const [taker, isFirst] = takers.emplace(target, board::Labels::placeOf(element));
        if (!target.empty() && !isFirst) {
            report(element,
                   "Port " + target + ", to which the cable leads, has the cable of port " + taker->second +
                       " already. The library does not look at it.",
                   "Give each port one cable.");
        }
    }
}

} // namespace

std::vector<Check> cableChecks() {
    return {
        {"cable-leads-nowhere", Severity::warning, "a connectsTo that is no other port", leadsNowhere},
        {"cable-not-answered", Severity::warning, "a connectsTo that the other end does not return",
         isNotAnswered},
        {"cable-shared", Severity::warning, "a port that two cables lead to", isShared},
    };
}

} // namespace switchctl::check
