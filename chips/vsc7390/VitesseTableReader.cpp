#include "chips/vsc7390/VitesseTableReader.hpp"

#include <algorithm>
#include <tuple>

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace chips {

using simulation::UnitKind;
using simulation::Vsc7390TestSide;

namespace {

namespace analyser = simulation::vitesse::analyser;
namespace mac = simulation::vitesse::mac;
namespace port = simulation::vitesse::port;
namespace vlan = simulation::vitesse::vlan;

constexpr unsigned bitsInLow = 32;
/// In the entry of a group: its ports above the low bytes of its address.
constexpr unsigned bitsOfIpGroup = 24;
constexpr std::uint64_t groupBytes = 0xFFFFFF;
constexpr std::uint64_t ipGroups = std::uint64_t{0x01005E} << bitsOfIpGroup;

std::string word(bool isSet) {
    return isSet ? "yes" : "no";
}

} // namespace

ChipTable VitesseTableReader::read(ChipTable::Kind kind, std::optional<unsigned> vlan) {
    switch (kind) {
    case ChipTable::Kind::addresses:
        return readMacTable(false);
    case ChipTable::Kind::groups:
        return readMacTable(true);
    case ChipTable::Kind::vlans:
        return readVlans(vlan);
    case ChipTable::Kind::routes:
        return readRoutes();
    case ChipTable::Kind::trunks:
        return readTrunks();
    case ChipTable::Kind::spanningTree:
        break;
    }
    return {"no such table",
            {},
            {"a VSC7390 has no spanning-tree states; its masks open and close ports in all VLANs"}};
}

ChipTable VitesseTableReader::readMacTable(bool groups) {
    ChipTable table;
    table.unit = "MAC table";
    std::vector<std::uint32_t> const destinations =
        readMasks(analyser::destinationMasks, analyser::numberOfDestinationMasks);
    for (unsigned row = 0; row < Vsc7390TestSide::numberOfRows; ++row) {
        for (unsigned place = 0; place < Vsc7390TestSide::numberOfBuckets; ++place) {
            auto const bucket = _tables.readBucket(row, place, getTransport());
            if (!bucket) {
                continue;
            }
            ChipTable::Row const entry = rowOf(*bucket, destinations);
            if (isGroup(*entry.address) == groups) {
                table.rows.push_back(entry);
            }
        }
    }
    // Rows of the table are made of bits of both.
    std::sort(table.rows.begin(), table.rows.end(), [](auto const& one, auto const& other) {
        return std::tie(one.vlans, one.address) < std::tie(other.vlans, other.address);
    });
    return table;
}

// Locked and aged together mark a group of IP, which has its ports where others have the bytes that all such
// groups share.
ChipTable::Row VitesseTableReader::rowOf(VitesseTables::Bucket const& bucket,
                                         std::vector<std::uint32_t> const& destinations) const {
    std::uint64_t const address = std::uint64_t{mac::highBytes.get(bucket.high)} << bitsInLow | bucket.low;
    bool const isLocked = mac::locked.isSet(bucket.access);
    bool const isAged = mac::aged.isSet(bucket.access);
    ChipTable::Row row;
    row.vlans = {mac::vid.get(bucket.high)};
    row.isStatic = isLocked;
    if (isLocked && isAged) {
        row.address = ipGroups | (address & groupBytes);
        row.members = portsOfMask(static_cast<std::uint32_t>(address >> bitsOfIpGroup));
    } else {
        unsigned const destination = mac::destination.get(bucket.access);
        row.address = address;
        row.members = portsOfMask(destinations.at(destination));
        row.facts.emplace_back("destination", std::to_string(destination));
        if (!isLocked) {
            row.facts.emplace_back("age", isAged ? "aged" : "fresh");
        }
    }
    for (simulation::Field const& flag : {mac::ignoreVlan, mac::forwardKill, mac::cpuCopy}) {
        if (flag.isSet(bucket.access)) {
            row.facts.emplace_back(flag.name, "yes");
        }
    }
    return row;
}

ChipTable VitesseTableReader::readVlans(std::optional<unsigned> vlan) {
    ChipTable table;
    table.unit = "VLAN table";
    std::vector<std::uint32_t> tagging;
    for (unsigned number = 0; number < Vsc7390TestSide::numberOfPorts; ++number) {
        tagging.push_back(read(UnitKind::port, number, port::transmitUpdate));
    }
    unsigned cleared = 0;
    for (unsigned vid = vlan.value_or(0); vid < (vlan ? *vlan + 1 : Vsc7390TestSide::numberOfVids); ++vid) {
        std::uint32_t const entry = _tables.readVlan(vid, getTransport());
        bool const isCleared = entry == vlan::mask.placed(simulation::vitesse::allPorts);
        cleared += isCleared ? 1U : 0U;
        if (vlan || !isCleared) {
            ChipTable::Row row;
            row.vlans = {vid};
            row.members = membersOf(vid, vlan::mask.get(entry), tagging);
            row.facts = {{"source check", word(vlan::sourceCheck.isSet(entry))},
                         {"learning", word(!vlan::learnDisabled.isSet(entry))}};
            table.rows.push_back(row);
        }
    }
    if (!vlan) {
        table.notes.push_back(std::to_string(cleared) +
                              " other VLANs have all ports as members, as after a clear");
    }
    return table;
}

std::vector<ChipTable::Member>
VitesseTableReader::membersOf(unsigned vid, std::uint32_t mask,
                              std::vector<std::uint32_t> const& tagging) const {
    std::vector<ChipTable::Member> members = portsOfMask(mask);
    for (ChipTable::Member& member : members) {
        if (member.port < tagging.size()) {
            std::uint32_t const update = tagging[member.port];
            bool const isLeftOut =
                port::untaggedVidEnable.isSet(update) && port::untaggedVid.get(update) == vid;
            member.what = !port::insertTag.isSet(update) ? "unmodified" : isLeftOut ? "untagged" : "tagged";
        }
    }
    return members;
}

ChipTable VitesseTableReader::readRoutes() {
    ChipTable table;
    table.unit = "source masks";
    for (unsigned number = 0; number <= Vsc7390TestSide::cpuPort; ++number) {
        std::uint32_t const mask = read(UnitKind::analyser, 0, analyser::sourceMasks + number);
        ChipTable::Row row;
        row.from = number;
        row.members = portsOfMask(simulation::vitesse::ports.get(mask));
        for (simulation::Field const& flag : {analyser::cpuCopy, analyser::mirror}) {
            if (flag.isSet(mask)) {
                row.facts.emplace_back(flag.name, "yes");
            }
        }
        table.rows.push_back(row);
    }
    return table;
}

// What the members of a trunk have in common is their destination mask.
ChipTable VitesseTableReader::readTrunks() {
    ChipTable table;
    table.unit = "destination and aggregation masks";
    std::vector<std::uint32_t> const masks =
        readMasks(analyser::destinationMasks, analyser::numberOfDestinationMasks);
    for (unsigned number = 0; number < masks.size(); ++number) {
        bool const isPort = number <= Vsc7390TestSide::cpuPort;
        if (masks[number] != (isPort ? simulation::bit(number) : 0)) {
            ChipTable::Row row;
            row.name = "destination " + std::to_string(number);
            row.members = portsOfMask(masks[number]);
            table.rows.push_back(row);
        }
    }
    std::vector<std::uint32_t> const codes =
        readMasks(analyser::aggregationMasks, analyser::numberOfAggregationMasks);
    for (unsigned code = 0; code < codes.size(); ++code) {
        ChipTable::Row row;
        row.name = "code " + std::to_string(code);
        row.members = portsOfMask(codes[code]);
        table.rows.push_back(row);
    }
    table.notes.emplace_back(
        "destinations that are not shown lead to the port of their number alone, from 25 on nowhere");
    return table;
}

std::vector<std::uint32_t> VitesseTableReader::readMasks(unsigned first, unsigned count) {
    std::vector<std::uint32_t> masks;
    for (unsigned number = 0; number < count; ++number) {
        masks.push_back(simulation::vitesse::ports.get(read(UnitKind::analyser, 0, first + number)));
    }
    return masks;
}

std::vector<ChipTable::Member> VitesseTableReader::portsOfMask(std::uint32_t mask) {
    std::vector<ChipTable::Member> ports = portsOf(mask);
    if (!ports.empty() && ports.back().port == Vsc7390TestSide::cpuPort) {
        ports.back().what = "processor";
    }
    return ports;
}

// What the flush command does is not known for sure, so each address is forgotten by itself.
void VitesseTableReader::flush(Scope const& /*scope*/, std::vector<ChipTable::Row> const& learnt) {
    for (ChipTable::Row const& row : learnt) {
        auto const high = static_cast<std::uint32_t>(*row.address >> bitsInLow);
        _tables.forget(mac::vid.placed(row.vlans.front()) | mac::highBytes.placed(high),
                       static_cast<std::uint32_t>(*row.address), getTransport());
    }
}

} // namespace chips
