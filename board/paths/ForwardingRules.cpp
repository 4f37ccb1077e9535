#include "board/paths/ForwardingRules.hpp"

#include <sstream>
#include <stdexcept>

namespace board {

namespace {

using Mark = ForwardingRules::Mark;

constexpr ForwardingRules::Rule forwardingRules[] = {
    {"M1", "link", Mark::assumed, "a link that is plugged in and not forced is up"},
    {"M2", "length and pause", Mark::likely, "which lengths of frames a port takes"},
    {"M3", "port state", Mark::sure, "a disabled port takes nothing"},
    {"M4", "frame mode", Mark::sure, "the port's frame mode"},
    {"M5", "tag", Mark::assumed, "a tag with VID 0 counts as none"},
    {"M6", "bridges' protocols", Mark::sure, "frames of bridges' protocols to the processor"},
    {"M7", "VLAN", Mark::likely,
     "DefaultVID is forced in 802.1Q modes only; a port without 802.1Q mode reaches secure ports"},
    {"M8", "database and states", Mark::assumed,
     "a port state 0 goes before the VLAN's, and a VLAN without states has the ports' own"},
    {"M9", "learning", Mark::likely, "which addresses are learned"},
    {"M10", "state in the VLAN", Mark::likely, "a port whose state is below forwarding passes nothing on"},
    {"M11", "destination", Mark::sure, "the address table, and whom unknown addresses are flooded to"},
    {"M12", "masks", Mark::likely, "VLANTable, the VLAN's members and the trunk mask each take ports away"},
    {"M13", "sending ports", Mark::likely, "a port sends with link and in the state forwarding only"},
    {"M14", "tags when sent", Mark::sure, "tags at the sending port"},
    {"V1", "receiver", Mark::sure, "the receiver is on"},
    {"V2", "length", Mark::likely, "which lengths of frames a port takes"},
    {"V3", "reserved addresses", Mark::likely, "frames of bridges' protocols go nowhere"},
    {"V4", "drops", Mark::sure, "frames that the port drops for their tag or source"},
    {"V5", "VLAN", Mark::assumed, "a port's VID is 1 until it is written, and an ignored tag is removed"},
    {"V6", "receive mask", Mark::sure, "the receive mask"},
    {"V7", "member at ingress", Mark::likely,
     "entries of the VLAN table that were never written hold all ports"},
    {"V8", "learning", Mark::likely, "which addresses are learned"},
    {"V9", "destination", Mark::assumed,
     "broadcasts go where groups do, and which entries of the MAC table are groups"},
    {"V10", "masks", Mark::likely, "VLAN, source and aggregation mask each take ports away"},
    {"V11", "transmitter", Mark::sure, "the transmitter is on"},
    {"V12", "tags when sent", Mark::likely, "tags at the sending port"},
};

} // namespace

ForwardingRules::Rule const& ForwardingRules::get(std::string_view number) {
    for (Rule const& rule : forwardingRules) {
        if (rule.number == number) {
            return rule;
        }
    }
    throw std::out_of_range("no forwarding rule " + std::string(number));
}

char const* ForwardingRules::name(Mark mark) {
    switch (mark) {
    case Mark::sure:
        return "sure";
    case Mark::likely:
        return "likely";
    case Mark::assumed:
        return "assumed";
    }
    return "";
}

std::vector<ForwardingRules::Rule const*> ForwardingRules::unsureOf(std::string const& numbers) {
    std::vector<Rule const*> unsure;
    std::istringstream stream(numbers);
    for (std::string number; stream >> number;) {
        Rule const& rule = get(number);
        if (rule.mark != Mark::sure) {
            unsure.push_back(&rule);
        }
    }
    return unsure;
}

} // namespace board
