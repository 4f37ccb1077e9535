#include "board/paths/VitesseEvidence.hpp"

#include <fmt/format.h>

#include "board/Wording.hpp"

namespace board {

namespace {

constexpr char const* analyserUnit = "analyser";
constexpr unsigned aggregationMasks = 16;

/// One change after the other, and back.
FieldAccess::Undo makeAll(std::vector<ChipEvidence::Change> const& changes) {
    std::vector<FieldAccess::Undo> undos;
    for (ChipEvidence::Change const& change : changes) {
        undos.insert(undos.begin(), change.make());
    }
    return [undos] {
        for (FieldAccess::Undo const& undo : undos) {
            undo();
        }
    };
}

} // namespace

std::vector<ChipEvidence::Fact> VitesseEvidence::getFacts(std::string_view rule) const {
    static constexpr Row rows[] = {
        {"V1", "", "MAC_CFG", "RX_EN", Side::from},
        {"V1", "", "MAC_CFG", "PORT_RST", Side::from},
        {"V1", "", "MAC_CFG", "MAC_RX_RST", Side::from},
        {"V2", "", "MAXLEN", "Length", Side::from},
        {"V2", "", "MAC_CFG", "VLAN_AWR", Side::from},
        {"V3", "", "CAT_DROP", "FWD_PAUSE", Side::from},
        {"V3", "", "CAT_DROP", "FWD_CTRL", Side::from},
        {"V4", "", "CAT_DROP", "TAGGED_ENA", Side::from},
        {"V4", "", "CAT_DROP", "UNTAGGED_ENA", Side::from},
        {"V5", "", "CAT_VLAN_MISC", "TCI_IGNORE_ENA", Side::from},
        {"V5", "", "CAT_VLAN_MISC", "KEEP_TAG_ENA", Side::from},
        {"V5", "", "CAT_PORT_VLAN", "VID", Side::from},
        {"V6", analyserUnit, "RECVMASK", "Ports", Side::chip, Side::from},
        {"V7", analyserUnit, "VLANMASK", "Ports", Side::chip, Side::from},
        {"V8", analyserUnit, "LEARNMASK", "Ports", Side::chip, Side::from},
        {"V10", analyserUnit, "SRCMASKS_", "Ports", Side::chip, Side::to},
        {"V11", "", "MAC_CFG", "TX_EN", Side::to},
        {"V11", "", "MAC_CFG", "PORT_RST", Side::to},
        {"V11", "", "MAC_CFG", "MAC_TX_RST", Side::to},
        {"V12", "", "TXUPDCFG", "TX_INSERT_TAG", Side::to},
        {"V12", "", "TXUPDCFG", "TX_UNTAGGED_VID_ENA", Side::to},
        {"V12", "", "TXUPDCFG", "TX_UNTAGGED_VID", Side::to},
    };
    std::vector<Fact> facts = factsOf(rule, rows);
    if (rule == "V7") {
        addVlan(Side::from, facts);
    } else if (rule == "V9") {
        addDestination(facts);
    } else if (rule == "V10") {
        addVlan(Side::to, facts);
        addAggregation(facts);
    }
    return facts;
}

void VitesseEvidence::addVlan(Side side, std::vector<Fact>& facts) const {
    unsigned const vid = getQuestion().vid;
    auto const entry = _chip.getVlanEntry(vid);
    std::string const name = fmt::format("VLAN table/VID {}", vid);
    facts.push_back({name + ":Ports", hexadecimal(entry.ports) + describeBit(side, entry.ports)});
    if (side == Side::from) {
        facts.push_back({name + ":VLAN_SRC_CHECK", hexadecimal(entry.sourceCheck ? 1 : 0)});
    }
}

/// The group's entry, else the mask of all that no entry is for.
void VitesseEvidence::addDestination(std::vector<Fact>& facts) const {
    using Class = simulation::EthernetFrame::DestinationClass;
    simulation::EthernetFrame::Address const destination = getQuestion().destination;
    if (auto const ports = _chip.getMulticastPorts(destination, getQuestion().vid)) {
        facts.push_back({fmt::format("MAC table/group {} VID {}:Ports",
                                     simulation::EthernetFrame::format(destination), getQuestion().vid),
                         hexadecimal(*ports) + describeBit(Side::to, *ports)});
        return;
    }
    Class const kind = simulation::EthernetFrame::make(destination, 0, 0).getDestinationClass();
    char const* const mask = kind == Class::unicast       ? "UFLODMASK"
                             : kind == Class::ipMulticast ? "IFLODMSK"
                                                          : "MFLODMASK";
    addFacts({"", analyserUnit, mask, "Ports", Side::chip, Side::to}, facts);
}

/// Of the ports of a trunk, a frame takes one.
void VitesseEvidence::addAggregation(std::vector<Fact>& facts) const {
    if (!getQuestion().to) {
        return;
    }
    unsigned with = 0;
    for (unsigned code = 0; code < aggregationMasks; ++code) {
        with +=
            getFields().get(analyserUnit, fmt::format("AGGRMSKS_{}", code), "Ports") >> *getQuestion().to & 1;
    }
    if (with != aggregationMasks) {
        facts.push_back({"analyser/AGGRMSKS_0 to AGGRMSKS_15:Ports",
                         fmt::format("port {} in {} of {}", *getQuestion().to, with, aggregationMasks)});
    }
}

ChipEvidence::Change VitesseEvidence::startOf(Side side) const {
    std::vector<Change> const parts = {
        changeOf({"", "", "MAC_CFG", "PORT_RST", side}, 0),
        changeOf({"", "", "MAC_CFG", "MAC_RX_RST", side}, 0),
        changeOf({"", "", "MAC_CFG", "MAC_TX_RST", side}, 0),
        changeOf({"", "", "MAC_CFG", "RX_EN", side}, 1),
        changeOf({"", "", "MAC_CFG", "TX_EN", side}, 1),
    };
    return {unitOf(side) + "/MAC_CFG: receiver and transmitter on, out of reset",
            [parts] { return makeAll(parts); }};
}

ChipEvidence::Change VitesseEvidence::floodOf() const {
    std::vector<Change> parts;
    for (char const* const mask : {"UFLODMASK", "MFLODMASK", "IFLODMSK"}) {
        parts.push_back(additionOf({"", analyserUnit, mask, "Ports", Side::chip}, 1U << *getQuestion().to));
    }
    return {fmt::format("analyser: port {} in the flood masks", *getQuestion().to),
            [parts] { return makeAll(parts); }};
}

ChipEvidence::Change VitesseEvidence::aggregationOf() const {
    std::vector<Change> parts;
    for (unsigned code = 0; code < aggregationMasks; ++code) {
        std::string const name = fmt::format("AGGRMSKS_{}", code);
        std::uint32_t const ports = getFields().get(analyserUnit, name, "Ports") | 1U << *getQuestion().to;
        parts.push_back(
            {"", [this, name, ports] { return getFields().set(analyserUnit, name, "Ports", ports); }});
    }
    return {fmt::format("analyser: port {} in the aggregation masks", *getQuestion().to),
            [parts] { return makeAll(parts); }};
}

ChipEvidence::Change VitesseEvidence::membershipOf() const {
    unsigned const vid = getQuestion().vid;
    std::uint32_t const ports = _chip.getVlanEntry(vid).ports | 1U << getQuestion().from |
                                1U << getQuestion().to.value_or(getQuestion().from);
    return {fmt::format("VLAN table/VID {}:Ports={}", vid, hexadecimal(ports)), [this, vid, ports] {
                auto const before = _chip.getVlanEntry(vid);
                auto entry = before;
                entry.ports = ports;
                _chip.setVlanEntry(vid, entry);
                return [this, vid, before] { _chip.setVlanEntry(vid, before); };
            }};
}

std::vector<ChipEvidence::Change> VitesseEvidence::getChanges() const {
    Question const& question = getQuestion();
    std::vector<Change> changes = {
        startOf(Side::from),
        additionOf({"", analyserUnit, "RECVMASK", "Ports", Side::chip}, 1U << question.from),
        changeOf({"", "", "CAT_DROP", "TAGGED_ENA", Side::from}, 0),
        changeOf({"", "", "CAT_DROP", "UNTAGGED_ENA", Side::from}, 0),
        membershipOf(),
    };
    if (question.to) {
        changes.push_back(startOf(Side::to));
        changes.push_back(
            additionOf({"", analyserUnit, "SRCMASKS_", "Ports", Side::chip}, 1U << *question.to));
        changes.push_back(floodOf());
        changes.push_back(aggregationOf());
    }
    for (unsigned const vid : question.vids) {
        changes.push_back(changeOf({"", "", "CAT_PORT_VLAN", "VID", Side::from}, vid));
    }
    return changes;
}

} // namespace board
