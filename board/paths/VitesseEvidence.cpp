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
        {"V1", Side::from, "", "MAC_CFG", "RX_EN"},
        {"V1", Side::from, "", "MAC_CFG", "PORT_RST"},
        {"V1", Side::from, "", "MAC_CFG", "MAC_RX_RST"},
        {"V2", Side::from, "", "MAXLEN", "Length"},
        {"V2", Side::from, "", "MAC_CFG", "VLAN_AWR"},
        {"V3", Side::from, "", "CAT_DROP", "FWD_PAUSE"},
        {"V3", Side::from, "", "CAT_DROP", "FWD_CTRL"},
        {"V4", Side::from, "", "CAT_DROP", "TAGGED_ENA"},
        {"V4", Side::from, "", "CAT_DROP", "UNTAGGED_ENA"},
        {"V5", Side::from, "", "CAT_VLAN_MISC", "TCI_IGNORE_ENA"},
        {"V5", Side::from, "", "CAT_VLAN_MISC", "KEEP_TAG_ENA"},
        {"V5", Side::from, "", "CAT_PORT_VLAN", "VID"},
        {"V6", Side::chip, analyserUnit, "RECVMASK", "Ports"},
        {"V7", Side::chip, analyserUnit, "VLANMASK", "Ports"},
        {"V8", Side::chip, analyserUnit, "LEARNMASK", "Ports"},
        {"V9", Side::chip, analyserUnit, "UFLODMASK", "Ports"},
        {"V9", Side::chip, analyserUnit, "MFLODMASK", "Ports"},
        {"V9", Side::chip, analyserUnit, "IFLODMSK", "Ports"},
        {"V10", Side::chip, analyserUnit, "SRCMASKS_", "Ports"},
        {"V11", Side::to, "", "MAC_CFG", "TX_EN"},
        {"V11", Side::to, "", "MAC_CFG", "PORT_RST"},
        {"V11", Side::to, "", "MAC_CFG", "MAC_TX_RST"},
        {"V12", Side::to, "", "TXUPDCFG", "TX_INSERT_TAG"},
        {"V12", Side::to, "", "TXUPDCFG", "TX_UNTAGGED_VID_ENA"},
        {"V12", Side::to, "", "TXUPDCFG", "TX_UNTAGGED_VID"},
    };
    std::vector<Fact> facts;
    for (Row const& row : rows) {
        if (row.rule == rule) {
            facts.push_back(factOf(row));
        }
    }
    if (rule == "V7" || rule == "V10") {
        unsigned const vid = getQuestion().vid;
        facts.push_back(
            {fmt::format("VLAN table/VID {}:ports", vid), hexadecimal(_chip.getVlanEntry(vid).ports)});
    }
    return facts;
}

ChipEvidence::Change VitesseEvidence::startOf(Side side) const {
    std::vector<Change> const parts = {
        changeOf({"", side, "", "MAC_CFG", "PORT_RST"}, 0),
        changeOf({"", side, "", "MAC_CFG", "MAC_RX_RST"}, 0),
        changeOf({"", side, "", "MAC_CFG", "MAC_TX_RST"}, 0),
        changeOf({"", side, "", "MAC_CFG", "RX_EN"}, 1),
        changeOf({"", side, "", "MAC_CFG", "TX_EN"}, 1),
    };
    std::string const unit = unitOf({"", side, "", "", ""});
    return {unit + "/MAC_CFG: receiver and transmitter on, out of reset", [parts] { return makeAll(parts); }};
}

ChipEvidence::Change VitesseEvidence::floodOf() const {
    std::vector<Change> parts;
    for (char const* const mask : {"UFLODMASK", "MFLODMASK", "IFLODMSK"}) {
        parts.push_back(additionOf({"", Side::chip, analyserUnit, mask, "Ports"}, 1U << getQuestion().to));
    }
    return {fmt::format("analyser: port {} in the flood masks", getQuestion().to),
            [parts] { return makeAll(parts); }};
}

ChipEvidence::Change VitesseEvidence::aggregationOf() const {
    std::vector<Change> parts;
    for (unsigned code = 0; code < aggregationMasks; ++code) {
        std::string const name = fmt::format("AGGRMSKS_{}", code);
        std::uint32_t const ports = getFields().get(analyserUnit, name, "Ports") | 1U << getQuestion().to;
        parts.push_back(
            {"", [this, name, ports] { return getFields().set(analyserUnit, name, "Ports", ports); }});
    }
    return {fmt::format("analyser: port {} in the aggregation masks", getQuestion().to),
            [parts] { return makeAll(parts); }};
}

ChipEvidence::Change VitesseEvidence::membershipOf() const {
    unsigned const vid = getQuestion().vid;
    std::uint32_t const ports =
        _chip.getVlanEntry(vid).ports | 1U << getQuestion().from | 1U << getQuestion().to;
    return {fmt::format("VLAN table/VID {}:ports={}", vid, hexadecimal(ports)), [this, vid, ports] {
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
        startOf(Side::to),
        additionOf({"", Side::chip, analyserUnit, "RECVMASK", "Ports"}, 1U << question.from),
        additionOf({"", Side::chip, analyserUnit, "SRCMASKS_", "Ports"}, 1U << question.to),
        changeOf({"", Side::from, "", "CAT_DROP", "TAGGED_ENA"}, 0),
        changeOf({"", Side::from, "", "CAT_DROP", "UNTAGGED_ENA"}, 0),
        floodOf(),
        aggregationOf(),
        membershipOf(),
    };
    for (unsigned const vid : question.vids) {
        changes.push_back(changeOf({"", Side::from, "", "CAT_PORT_VLAN", "VID"}, vid));
    }
    return changes;
}

} // namespace board
