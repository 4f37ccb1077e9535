#include "switchctl/draw/BoardJson.hpp"

#include <nlohmann/json.hpp>

#include "board/Element.hpp"
#include "chips/PortAddress.hpp"
#include "switchctl/VlanIds.hpp"

namespace switchctl::draw {

namespace {

using Json = nlohmann::ordered_json;
using Reading = board::BoardReading;

Json portsOf(Reading::Switch const& owner, board::Labels const& labels) {
    Json ports = Json::array();
    for (auto const& [id, port] : owner.ports) {
        bool const hasNumber = id != static_cast<unsigned int>(Reading::noNumber);
        ports.push_back({{"port", hasNumber ? Json(id) : Json()},
                         {"connectedTo", port.connectedTo},
                         {"portStatus", port.portStatus}});
        labels.addTo(ports.back(), chips::PortAddress{owner.id, id}.getText());
    }
    return ports;
}

Json trunksOf(Reading::Switch const& owner) {
    Json trunks = Json::array();
    for (Reading::Trunk const& trunk : owner.trunks) {
        Json members = Json::array();
        for (xmlNodePtr const member : trunk.members) {
            int const port = board::numberOr(member, "id", Reading::noNumber);
            if (port != Reading::noNumber) {
                members.push_back(port);
            }
        }
        trunks.push_back({{"trunk", trunk.id}, {"ports", members}});
    }
    return trunks;
}

/// As in a drawing, without those that the library would not take.
Json membersOf(Reading::Vlan const& vlan) {
    Json members = Json::array();
    for (Reading::Member const& member : vlan.members) {
        if (member.outcome == Reading::Outcome::added && (!vlan.tagBased || member.hasKnownTags())) {
            bool const isTagged =
                vlan.tagBased && board::attribute(member.element, "egress").value_or("") != "stripTag";
            members.push_back({{"switch", member.switchId}, {"port", member.portId}, {"tagged", isTagged}});
        }
    }
    return members;
}

} // namespace

Json BoardJson::of(Reading const& board, board::Cables const& cables, std::string const& file) {
    Json switches = Json::array();
    for (auto const& [id, owner] : board.getSwitches()) {
        switches.push_back({{"switch", id},
                            {"chip", owner.chipName()},
                            {"ports", portsOf(owner, board.getLabels())},
                            {"trunks", trunksOf(owner)}});
        board.getLabels().addTo(switches.back(), std::to_string(id));
    }
    Json vlans = Json::array();
    for (auto const& [id, vlan] : board.getVlans()) {
        Json entry = vlanIds(id, board::attribute(vlan.element, "id"));
        entry.update({{"tagBased", vlan.tagBased}, {"members", membersOf(vlan)}});
        vlans.push_back(entry);
    }
    return {{"file", file}, {"switches", switches}, {"cables", cables.getTexts()}, {"vlans", vlans}};
}

} // namespace switchctl::draw
