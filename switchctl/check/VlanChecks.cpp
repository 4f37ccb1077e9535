#include "switchctl/check/CheckTable.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "switchctl/check/VlanSpelling.hpp"

namespace switchctl::check {

namespace {

std::string smallIds() {
    return "Write ids of one decimal digit where all readings are to agree; otherwise the hexadecimal digits "
           "of "
           "the VLAN, as long as they are all decimal digits.";
}

/// How to write what may have been meant by an id that is read as `id`.
std::string spellings(std::string const& text, unsigned int id) {
    std::optional<int> const decimal = board::decimalPrefix(text);
    bool const mayBeDecimal = board::isDigits(text) && decimal != static_cast<int>(id);
    return (mayBeDecimal ? vlanSpelling(static_cast<unsigned int>(*decimal)) + "; " : "") + vlanSpelling(id);
}

bool hasGroups(xmlNodePtr vlan) {
    std::vector<xmlNodePtr> const ports = board::children(vlan, "port");
    return std::any_of(ports.begin(), ports.end(), [](xmlNodePtr port) {
        return !board::children(port, "forwardedMulticastGroup").empty();
    });
}

bool isTagBased(xmlNodePtr vlan) {
    return board::attribute(vlan, "typeOfVlan") == std::optional<std::string>("tagBasedVlan");
}

void typeAbsent(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[not(@typeOfVlan)]")) {
        report(element, "The library reports that the vlan has no attribute typeOfVlan and skips it.",
               R"(Write typeOfVlan="tagBasedVlan" or typeOfVlan="portBasedVlan".)");
    }
}

void typeUnknown(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[@typeOfVlan]")) {
        std::string const type = board::attribute(element, "typeOfVlan").value_or("");
        if (type != "tagBasedVlan" && type != "portBasedVlan") {
            report(element,
                   R"(Whatever is not "tagBasedVlan" is a port-based VLAN: ")" + type + R"(" is one.)",
                   R"(Write typeOfVlan="tagBasedVlan" or typeOfVlan="portBasedVlan".)");
        }
    }
}

void idNotANumber(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan")) {
        if (!board::hexadecimalPrefix(board::attribute(element, "id").value_or(""))) {
            report(element,
                   "The id is " + board::quotedAttribute(element, "id") + ": the library makes it " +
                       board::vlanName(std::numeric_limits<unsigned int>::max()) +
                       ", which finds no members.",
                   smallIds());
        }
    }
}

void idReadsDifferently(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[@typeOfVlan]")) {
        std::string const text = board::attribute(element, "id").value_or("");
        std::optional<unsigned int> const id = board::hexadecimalPrefix(text);
        bool const groups = hasGroups(element);
        std::int64_t const decimal = board::decimalPrefix(text).value_or(0);
        bool const prefixed = text.find_first_of("xX") != std::string::npos; // so meant as it is read
        bool const matters = groups || (isTagBased(element) && !prefixed);
        if (!id || decimal == static_cast<std::int64_t>(*id) || !matters) {
            continue;
        }
        report(element,
               "The library reads the VLAN's id as hexadecimal: \"" + text + "\" is " + board::vlanName(*id) +
                   (groups ? "; for the multicast groups under it the same text is decimal: " +
                                 board::vlanName(static_cast<std::uint16_t>(decimal)) + "."
                           : "; as a decimal number it would be " + std::to_string(decimal) + "."),
               spellings(text, *id) + (groups ? ". A VLAN and its groups agree on 1 to 9 only." : "."));
    }
}

void membersLost(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[@typeOfVlan]")) {
        std::vector<xmlNodePtr> const members = board::children(element, "port");
        std::string const query = board::BoardReading::memberQuery(board::BoardReading::vlanIdOf(element));
        std::vector<xmlNodePtr> const found = board.find(query);
        if (members.empty() || std::count(found.begin(), found.end(), members.front()) != 0) {
            continue;
        }
        report(element,
               "The library looks for the members with " + query + ", which does not find those of id " +
                   board::quotedAttribute(element, "id") + ": the VLAN has none of its " +
                   std::to_string(members.size()) + ".",
               vlanSpelling(board::BoardReading::vlanIdOf(element)) + ".");
    }
}

void takesOthersMembers(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, vlan] : board.getVlans()) {
        for (board::BoardReading::Member const& member : vlan.members) {
            xmlNodePtr const owner = member.element->parent;
            if (board::BoardReading::vlanIdOf(owner) != id) {
                report(member.element,
                       "The members of " + vlan.getName() + " are found by " +
                           board::BoardReading::memberQuery(id) +
                           ", whose number XPath reads in its own way: this member of the VLAN with id " +
                           board::quotedAttribute(owner, "id") + " becomes a member of " + vlan.getName() +
                           ", too.",
                       R"(Write VLAN ids in decimal digits only; "1e" is 1 to XPath, and "1e2" is 100.)");
            }
        }
    }
}

void idDuplicate(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[@typeOfVlan]")) {
        unsigned int const id = board::BoardReading::vlanIdOf(element);
        auto const first = board.getVlans().find(id);
        if (first != board.getVlans().end() && first->second.element != element) {
            report(element,
                   "The library reports a duplicate vlan, " + first->second.getName() +
                       ", and ignores this element's type; the members that its query finds go to the first "
                       "one, "
                       "line " +
                       std::to_string(xmlGetLineNo(first->second.element)) + ".",
                   "Give every VLAN an id of its own, port-based ones too.");
        }
    }
}

void idOutOfRange(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, vlan] : board.getVlans()) {
        bool const hasId =
            board::hexadecimalPrefix(board::attribute(vlan.element, "id").value_or("")).has_value();
        if (vlan.tagBased && hasId && (id == 0 || id > board::BoardReading::highestVlanId)) {
            report(vlan.element,
                   "No frame can carry " + vlan.getName() +
                       ": a tag has 12 bits, 0 and 0xfff are reserved. The chips keep the low 12 bits, " +
                       board::vlanName(id & 0xFFFU) +
                       (id > 0xFFFU
                            ? ", and an 88E6096 starts the VLAN anew with each member, so that only the "
                              "last one stays in it."
                            : "."),
                   "Write an id from 1 to ffe, hexadecimal.");
        }
    }
}

void idCut(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, vlan] : board.getVlans()) {
        bool const hasId =
            board::hexadecimalPrefix(board::attribute(vlan.element, "id").value_or("")).has_value();
        auto const kept = static_cast<std::uint16_t>(id);
        if (vlan.tagBased && hasId && kept != id) {
            report(vlan.element,
                   "The library hands 16 bits of the id to the chips: " + vlan.getName() + " becomes " +
                       board::vlanName(kept) + ".",
                   "Write an id from 1 to ffe, hexadecimal.");
        }
    }
}

void groupVlanCut(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[port/forwardedMulticastGroup]")) {
        int const number = board::numberOr(element, "id", 0);
        if (number != static_cast<std::uint16_t>(number)) {
            report(element,
                   "The library keeps 16 bits of a group's VLAN id: " + std::to_string(number) + " becomes " +
                       board::vlanName(static_cast<std::uint16_t>(number)) +
                       " for the groups under this VLAN.",
                   smallIds());
        }
    }
}

void withoutMembers(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//vlan[@typeOfVlan and not(port)]")) {
        report(element, "The library builds a VLAN without members, of which no chip learns.",
               "Write a <port> for each member, or leave the VLAN out.");
    }
}

} // namespace

std::vector<Check> vlanChecks() {
    return {
        {"vlan-type-absent", Severity::error, "a VLAN without a type", typeAbsent},
        {"vlan-type-unknown", Severity::warning, "a type that makes a port-based VLAN", typeUnknown},
        {"vlan-id-not-a-number", Severity::error, "a VLAN id that is not a number", idNotANumber},
        {"vlan-id-reads-differently", Severity::warning,
         "a VLAN id that means one number in hexadecimal and another in decimal", idReadsDifferently},
        {"vlan-members-lost", Severity::error, "a VLAN id by which the members are not found", membersLost},
        {"vlan-takes-others-members", Severity::error, "a VLAN id that finds another VLAN's members",
         takesOthersMembers},
        {"vlan-id-duplicate", Severity::error, "an id that two VLANs share", idDuplicate},
        {"vlan-id-out-of-range", Severity::error, "an id that no tag can carry", idOutOfRange},
        {"vlan-id-cut", Severity::error, "a VLAN id of more than 16 bits", idCut},
        {"group-vlan-cut", Severity::error, "a VLAN id of more than 16 bits above a group", groupVlanCut},
        {"vlan-without-members", Severity::warning, "a VLAN without members", withoutMembers},
    };
}

} // namespace switchctl::check
