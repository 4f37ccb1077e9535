#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

/// Port 1 of a switch, with the connectsTo.
std::string linked(std::string const& id, std::string const& connectsTo, std::string const& port = "1") {
    return "<switch id='" + id + "' switchModel='88e6096'>\n<port id='" + port +
           "' connectedTo='switchInterlink' portStatus='forwarding' connectsTo='" + connectsTo + "'/>";
}

std::string endOfBoard() {
    return "</switch>\n";
}

} // namespace

std::vector<CheckCase> cableCases() {
    std::string const paired = boardOf(linked("0", "1.1") + endOfBoard() + linked("1", "0.1") + endOfBoard());
    return {
        {"cable-leads-nowhere",
         boardOf(linked("0", "1.2") + here + endOfBoard() + linked("1", "0.1") + endOfBoard()), paired},
        {"cable-leads-nowhere", boardOf(linked("0", "4.1") + here + endOfBoard()), paired},
        {"cable-leads-nowhere", boardOf(linked("0", "0.1") + here + endOfBoard()), paired},
        {"cable-leads-nowhere", boardOf(linked("0", "port 3") + here + endOfBoard()), paired},
        {"cable-not-answered",
         boardOf(linked("0", "1.1") + here + endOfBoard() + "<switch id='1' switchModel='88e6096'>" +
                 port("1") + endOfBoard()),
         paired},
        {"cable-not-answered",
         boardOf(linked("0", "1.1") + here + endOfBoard() + linked("1", "2.1") + endOfBoard() +
                 linked("2", "1.1") + endOfBoard()),
         paired},
        {"cable-shared",
         boardOf(linked("0", "1.1") + endOfBoard() + linked("1", "0.1") + endOfBoard() + linked("2", "1.1") +
                 here + endOfBoard()),
         paired},
    };
}
