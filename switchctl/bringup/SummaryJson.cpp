#include "switchctl/bringup/SummaryJson.hpp"

#include <libxml/tree.h>

#include <nlohmann/json.hpp>

#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/TrunkGroup.hpp"
#include "switchctl/VlanIds.hpp"
#include "switchctl/bringup/MemberList.hpp"

namespace switchctl::bringup {

namespace {

using Json = SummaryJson::Json;
using reference_host::LogMessage;

char const* severityOf(LogMessage const& message) {
    switch (message.operation) {
    case LogMessage::Operation::critical:
        return "critical";
    case LogMessage::Operation::error:
        return "error";
    default:
        return "warning";
    }
}

std::string withoutLineEnd(std::string text) {
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

Json numberOrNull(int number) {
    return number < 0 ? Json() : Json(number);
}

Json nameOf(ManagedSwitchPort const& port) {
    return {{"switch", port.getSwitch().getId()}, {"port", numberOrNull(static_cast<int>(port.getId()))}};
}

} // namespace

SummaryJson::SummaryJson(board::BoardReading const& document, board::BoardSession& session)
    : _document(document), _session(session) {}

Json SummaryJson::get(board::StartUpMonitor::Outcome const& outcome) const {
    Json json{{"populated", outcome.populated},
              {"reason", outcome.populated ? Json() : Json(outcome.reason)}};
    if (outcome.populated) {
        json.update({{"switches", getSwitches()},
                     {"ports", getPorts()},
                     {"vlans", getVlans()},
                     {"trunks", getTrunks()},
                     {"groups", getGroups()},
                     {"cpuPort", getCpuPort()},
                     {"effort", getEffort()}});
    }
    json["complaints"] = getComplaints();
    return json;
}

Json SummaryJson::getSwitches() const {
    Json switches = Json::array();
    for (board::BoardReading::Wanted const& entry : _document.getWanted()) {
        bool const isUp = _session.isUp(entry);
        switches.push_back({{"switch", entry.id}, {"model", entry.model}, {"found", isUp}});
        if (isUp) {
            switches.back()["ports"] = _session.getManager().getManagedSwitch(entry.id)->getPorts().size();
        }
        _document.getLabels().addTo(switches.back(), std::to_string(entry.id));
    }
    return switches;
}

Json SummaryJson::getPorts() const {
    Json ports = Json::array();
    for (auto const& [switchId, managedSwitch] : _session.getManager().getManagedSwitches()) {
        for (auto const& [portId, port] : managedSwitch->getPorts()) {
            Json json = nameOf(*port);
            json["type"] = board::portTypeName(port->getType());
            json["state"] = board::portStateName(port->getState());
            _document.getLabels().addTo(json, chips::PortAddress{switchId, portId}.getText());
            ports.push_back(json);
        }
    }
    return ports;
}

Json SummaryJson::getVlans() const {
    Json vlans = Json::array();
    for (auto const& [id, vlan] : _document.getVlans()) {
        Json json = vlanIds(id, board::attribute(vlan.element, "id"));
        json["tagBased"] = vlan.tagBased;
        addMembers(json, vlan.members, vlan.tagBased);
        vlans.push_back(json);
    }
    return vlans;
}

void SummaryJson::addMembers(Json& json, std::vector<board::BoardReading::Member> const& members,
                             bool withTags) const {
    MemberList const list(members, _session.getManager(), withTags);
    json["members"] = Json::array();
    for (MemberList::Member const& member : list.counted) {
        Json entry{{"switch", member.switchId}, {"port", member.portId}};
        if (withTags) {
            entry["ingress"] = MemberList::tagOf(member, "ingress");
            entry["egress"] = MemberList::tagOf(member, "egress");
        }
        json["members"].push_back(entry);
    }
    json["leftOut"] = Json::array();
    for (MemberList::Member const& member : list.leftOut) {
        json["leftOut"].push_back({{"switch", numberOrNull(member.switchId)},
                                   {"port", numberOrNull(member.portId)},
                                   {"line", xmlGetLineNo(member.element)}});
    }
}

Json SummaryJson::getTrunks() const {
    Json trunks = Json::array();
    for (auto const& [switchId, managedSwitch] : _session.getManager().getManagedSwitches()) {
        for (auto const& [key, trunk] : managedSwitch->getTrunkGroups()) {
            Json members = Json::array();
            for (auto const& [portId, port] : trunk->getTrunkedPorts()) {
                members.push_back({{"port", portId}, {"exists", port != nullptr}});
            }
            xmlNodePtr const element = _document.getSwitches().at(switchId).trunks.at(key).element;
            trunks.push_back({{"switch", switchId},
                              {"trunk", numberOrNull(trunk->getId())},
                              {"line", xmlGetLineNo(element)},
                              {"members", members}});
        }
    }
    return trunks;
}

Json SummaryJson::getGroups() const {
    Json groups = Json::array();
    for (board::BoardReading::Group const& group : _document.getGroups()) {
        Json json{{"address", group.address}};
        auto const vlan = _document.getVlans().find(group.vlanId);
        json.update(vlanIds(group.vlanId, vlan == _document.getVlans().end()
                                              ? std::nullopt
                                              : board::attribute(vlan->second.element, "id")));
        addMembers(json, group.members, false);
        groups.push_back(json);
    }
    return groups;
}

Json SummaryJson::getCpuPort() const {
    ManagedSwitchPort const* const port = _session.getManager().getCpuPort();
    return port == nullptr ? Json() : nameOf(*port);
}

Json SummaryJson::getEffort() const {
    simulation::SimulatedBoard* const board = _session.getBoard();
    if (board == nullptr) {
        return nullptr;
    }
    board::BoardSession::Effort const& effort = _session.getEffort();
    return {{"registerAccesses", effort.registerAccesses},
            {"busAccesses", effort.busAccesses},
            {"busNanoseconds", effort.busNanoseconds},
            {"elapsedNanoseconds", effort.elapsedNanoseconds},
            {"misuse", board->getMisuse().getSize()}};
}

Json SummaryJson::getComplaints() const {
    Json complaints = Json::array();
    for (LogMessage const& message : _session.getLog().getComplaints()) {
        complaints.push_back({{"severity", severityOf(message)}, {"text", withoutLineEnd(message.text)}});
    }
    return complaints;
}

} // namespace switchctl::bringup
