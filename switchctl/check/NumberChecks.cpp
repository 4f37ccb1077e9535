#include <array>
#include <cstdint>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "simulation/DocumentNumber.hpp"
#include "switchctl/check/CheckTable.hpp"

namespace switchctl::check {

namespace {

using simulation::DocumentNumber;

/// What the library keeps of a decimal number, as a text behind "becomes".
std::string asInt(DocumentNumber const& number) {
    return std::to_string(number.toInt());
}

std::string asSixteenBits(DocumentNumber const& number) {
    return std::to_string(static_cast<std::uint16_t>(number.toInt())) + " (the low 16 bits of " +
           asInt(number) + ")";
}

/// An attribute that holds a decimal number, and what becomes of one.
struct Place {
    char const* query;
    char const* attribute;
    std::string (*kept)(DocumentNumber const& number);
};

constexpr std::array<Place, 7> places{{{"//switches/switch[@switchModel]", "id", asSixteenBits},
                                       {"//switches/switch[@switchModel]", "atuAgeTime", asSixteenBits},
                                       {"//switch/port", "id", asInt},
                                       {"//switch/trunk", "id", asInt},
                                       {"//trunk/port", "id", asInt},
                                       {"//vlan[@typeOfVlan]/port", "switchId", asInt},
                                       {"//vlan[@typeOfVlan]/port", "portId", asInt}}};

void reportNumber(Report const& report, xmlNodePtr element, char const* name, std::string const& kept) {
    report(element,
           std::string("The number in ") + name + " does not fit: " + board::quotedAttribute(element, name) +
               " becomes " + kept + ".",
           "Write the number that is meant.");
}

void doesNotFit(board::BoardReading const& board, Report const& report) {
    for (Place const& place : places) {
        for (xmlNodePtr const element : board.find(place.query)) {
            auto const number =
                DocumentNumber::decimal(board::attribute(element, place.attribute).value_or(""));
            if (number && !number->fitsInt()) {
                reportNumber(report, element, place.attribute, place.kept(*number));
            }
        }
    }
    for (xmlNodePtr const element : board.find("//vlan[@typeOfVlan]")) {
        auto const number = DocumentNumber::hexadecimal(board::attribute(element, "id").value_or(""));
        if (number && !number->fitsUnsigned()) {
            reportNumber(report, element, "id",
                         board::vlanName(number->toUnsigned()) + ", which finds no members");
        }
    }
}

} // namespace

std::vector<Check> numberChecks() {
    return {{"number-does-not-fit", Severity::error, "a number of more than 32 bits", doesNotFit}};
}

} // namespace switchctl::check
