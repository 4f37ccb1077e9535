#include "chips/88e6096/MarvellTableReader.hpp"

#include <algorithm>
#include <array>

#include "chips/88e6096/MarvellTables.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

namespace chips {

using simulation::UnitKind;

namespace {

namespace atu = simulation::marvell::atu;
namespace global1 = simulation::marvell::global1;
namespace global2 = simulation::marvell::global2;
namespace marvell = simulation::marvell;
namespace port = simulation::marvell::port;

using simulation::Marvell88E6096TestSide;

constexpr std::uint32_t lastPart = 0xFFFF;
constexpr unsigned bitsOfPart = 16;
constexpr unsigned firstStaticState = 8;
constexpr unsigned newestAge = 7;
constexpr unsigned bitsOfLowFid = 4;
/// A look takes at least a hundred microseconds, an operation hardly one.
constexpr unsigned looksAtAtu = 1000;

constexpr std::array<char const*, 4> memberTags = {"unmodified", "untagged", "tagged", ""};
constexpr std::array<char const*, 4> namesOfStates = {"port's own", "blocking", "learning", "forwarding"};
constexpr std::array<char const*, 4> ownStates = {"disabled", "blocking", "learning", "forwarding"};

unsigned numberBehind(std::string const& prefix, std::string const& text) {
    return static_cast<unsigned>(std::stoul(text.substr(prefix.size())));
}

unsigned fidOf(ChipTable::Row const& row) {
    return static_cast<unsigned>(std::stoul(row.facts.front().second));
}

/// Registers have ports in another order.
void sortByPort(std::vector<ChipTable::Member>& members) {
    std::sort(members.begin(), members.end(),
              [](auto const& one, auto const& other) { return one.port < other.port; });
}

bool beginsWith(std::string const& text, std::string const& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

} // namespace

ChipTable MarvellTableReader::read(ChipTable::Kind kind, std::optional<unsigned> /*vlan*/) {
    switch (kind) {
    case ChipTable::Kind::addresses:
        return readAddresses(false);
    case ChipTable::Kind::groups:
        return readAddresses(true);
    case ChipTable::Kind::vlans:
        return readVtu();
    case ChipTable::Kind::spanningTree:
        return readStu();
    case ChipTable::Kind::routes:
        return readRoutes();
    case ChipTable::Kind::trunks:
        break;
    }
    return readTrunks();
}

ChipTable MarvellTableReader::readAddresses(bool groups) {
    ChipTable table;
    table.unit = "ATU";
    Vlans databases = vlansBy("FID");
    for (unsigned const fid : fidsOfPorts()) {
        databases[fid];
    }
    std::string searched;
    for (auto const& [fid, vlans] : databases) {
        readDatabase(fid, vlans, groups, table);
        searched += (searched.empty() ? "" : ", ") + std::to_string(fid);
    }
    table.notes.push_back("searched are the databases (FIDs) that a VLAN or a port has: " + searched);
    if (std::any_of(table.rows.begin(), table.rows.end(),
                    [](ChipTable::Row const& row) { return row.members.empty(); })) {
        table.notes.emplace_back("addresses at trunks have no port of their own");
    }
    return table;
}

void MarvellTableReader::readDatabase(unsigned fid, std::vector<unsigned> const& vlans, bool groups,
                                      ChipTable& table) {
    setGlobal(global1::atuFid, fid);
    for (unsigned const address : {global1::atuMac01, global1::atuMac23, global1::atuMac45}) {
        setGlobal(address, lastPart);
    }
    std::optional<std::uint64_t> last;
    while (true) {
        operate(atu::getNext);
        std::uint32_t const data = global(global1::atuData);
        std::uint64_t address = 0;
        for (unsigned const part : {global1::atuMac01, global1::atuMac23, global1::atuMac45}) {
            address = address << bitsOfPart | global(part);
        }
        unsigned const state = atu::entryState.get(data);
        if (state == 0 || (last && address <= *last)) {
            return;
        }
        last = address;
        if (isGroup(address) != groups) {
            continue;
        }
        ChipTable::Row row;
        row.vlans = vlans;
        row.address = address;
        row.isStatic = groups || state >= firstStaticState;
        row.facts = {{"FID", std::to_string(fid)}};
        row.facts.emplace_back(*row.isStatic ? "state" : "age",
                               std::to_string(state) +
                                   (*row.isStatic ? "" : " of " + std::to_string(newestAge)));
        if (atu::trunk.isSet(data)) {
            row.facts.emplace_back("trunk", std::to_string(atu::trunkId.get(data)));
        } else {
            row.members = portsOf(atu::portVector.get(data));
        }
        table.rows.push_back(row);
    }
}

ChipTable MarvellTableReader::readVtu() {
    ChipTable table;
    table.unit = "VTU";
    MarvellTables tables(getCatalogue());
    tables.takeAll();
    ChipImage image;
    tables.read(getTransport(), image);
    for (ChipImage::Item const& item : image.getItems()) {
        if (item.unit != "VTU") {
            continue;
        }
        ChipTable::Row row;
        row.vlans = {numberBehind("VID ", item.name)};
        for (ChipImage::Field const& field : item.fields) {
            if (beginsWith(field.name, "MemberTag")) {
                if (field.value != simulation::marvell::vtu::notMember) {
                    row.members.push_back(
                        {numberBehind("MemberTag", field.name), memberTags.at(field.value)});
                }
            } else {
                row.facts.emplace_back(field.name, std::to_string(field.value));
            }
        }
        sortByPort(row.members);
        table.rows.push_back(row);
    }
    return table;
}

ChipTable MarvellTableReader::readStu() {
    ChipTable table;
    table.unit = "STU";
    Vlans const vlans = vlansBy("SID");
    ChipTable::Row own;
    own.name = "ports' own";
    for (unsigned number = 0; number < Marvell88E6096TestSide::numberOfPorts; ++number) {
        unsigned const state = port::state.get(read(UnitKind::port, number, port::portControl));
        own.members.push_back({number, ownStates.at(state)});
    }
    table.rows.push_back(own);
    MarvellTables tables(getCatalogue());
    tables.takeAll();
    ChipImage image;
    tables.read(getTransport(), image);
    for (ChipImage::Item const& item : image.getItems()) {
        if (item.unit != "STU") {
            continue;
        }
        ChipTable::Row row;
        row.name = item.name;
        auto const found = vlans.find(numberBehind("SID ", item.name));
        if (found != vlans.end()) {
            row.vlans = found->second;
        }
        for (ChipImage::Field const& field : item.fields) {
            row.members.push_back({numberBehind("PortState", field.name), namesOfStates.at(field.value)});
        }
        sortByPort(row.members);
        table.rows.push_back(row);
    }
    return table;
}

ChipTable MarvellTableReader::readRoutes() {
    ChipTable table;
    table.unit = "port-based VLAN maps";
    for (unsigned number = 0; number < Marvell88E6096TestSide::numberOfPorts; ++number) {
        ChipTable::Row row;
        row.from = number;
        row.members = portsOf(port::vlanTable.get(read(UnitKind::port, number, port::portBasedVlanMap)));
        table.rows.push_back(row);
    }
    table.notes.emplace_back(
        "not read: where frames that come from other chips with a tag of the maker's may go");
    return table;
}

ChipTable MarvellTableReader::readTrunks() {
    ChipTable table;
    table.unit = "trunk tables";
    std::map<unsigned, std::uint32_t> ports;
    for (unsigned number = 0; number < Marvell88E6096TestSide::numberOfPorts; ++number) {
        std::uint32_t const control = read(UnitKind::port, number, port::portControl1);
        if (port::trunkPort.isSet(control)) {
            ports[port::trunkId.get(control)] |= simulation::bit(number);
        }
    }
    for (unsigned trunk = 0; trunk <= global2::trunkId.get(~0U); ++trunk) {
        std::uint32_t const mapped =
            global2::trunkMembers.get(readPointed(global2::trunkMapping, global2::trunkId.placed(trunk)));
        if ((mapped | ports[trunk]) != 0) {
            ChipTable::Row row;
            row.name = "trunk " + std::to_string(trunk);
            for (ChipTable::Member member : portsOf(mapped | ports[trunk])) {
                bool const isMapped = (mapped >> member.port & 1U) != 0;
                bool const isSet = (ports[trunk] >> member.port & 1U) != 0;
                member.what = isMapped && isSet ? "" : isMapped ? "in the mapping only" : "in the port only";
                row.members.push_back(member);
            }
            table.rows.push_back(row);
        }
    }
    for (unsigned mask = 0; mask <= global2::trunkMaskNumber.get(~0U); ++mask) {
        ChipTable::Row row;
        row.name = "mask " + std::to_string(mask);
        row.members = portsOf(
            global2::trunkPorts.get(readPointed(global2::trunkMask, global2::trunkMaskNumber.placed(mask))));
        table.rows.push_back(row);
    }
    return table;
}

// Static ones stay by the choice of the operation. The one that flushes a port takes the number of a trunk
// for ports, so addresses of a port are forgotten one by one.
void MarvellTableReader::flush(Scope const& scope, std::vector<ChipTable::Row> const& learnt) {
    setGlobal(global1::atuData, 0);
    if (scope.port) {
        for (ChipTable::Row const& row : learnt) {
            if (std::any_of(row.members.begin(), row.members.end(),
                            [&](auto const& member) { return member.port == *scope.port; })) {
                forget(row);
            }
        }
        return;
    }
    if (!scope.vlan) {
        operate(atu::flushNonStatic);
        return;
    }
    std::set<unsigned> fids;
    for (ChipTable::Row const& row : learnt) {
        fids.insert(fidOf(row));
    }
    for (unsigned const fid : fids) {
        setGlobal(global1::atuFid, fid);
        operate(atu::flushFidNonStatic);
    }
}

void MarvellTableReader::forget(ChipTable::Row const& row) {
    setGlobal(global1::atuFid, fidOf(row));
    unsigned bits = 3 * bitsOfPart;
    for (unsigned const address : {global1::atuMac01, global1::atuMac23, global1::atuMac45}) {
        bits -= bitsOfPart;
        setGlobal(address, static_cast<std::uint32_t>(*row.address >> bits) & lastPart);
    }
    operate(atu::loadEntry);
}

MarvellTableReader::Vlans MarvellTableReader::vlansBy(std::string const& fact) {
    Vlans vlans;
    for (ChipTable::Row const& row : readVtu().rows) {
        for (auto const& [name, value] : row.facts) {
            if (name == fact) {
                vlans[static_cast<unsigned>(std::stoul(value))].push_back(row.vlans.front());
            }
        }
    }
    return vlans;
}

std::set<unsigned> MarvellTableReader::fidsOfPorts() {
    std::set<unsigned> fids;
    for (unsigned number = 0; number < Marvell88E6096TestSide::numberOfPorts; ++number) {
        fids.insert(port::fidHigh.get(read(UnitKind::port, number, port::portControl1)) << bitsOfLowFid |
                    port::fidLow.get(read(UnitKind::port, number, port::portBasedVlanMap)));
    }
    return fids;
}

/// The entry of a table that a register shows once its number was written there.
std::uint32_t MarvellTableReader::readPointed(unsigned address, std::uint32_t pointer) {
    getTransport().write(at(UnitKind::global, 2, address), pointer);
    return read(UnitKind::global, 2, address);
}

void MarvellTableReader::operate(unsigned operation) {
    setGlobal(global1::atuOperation, marvell::busy.getMask() | marvell::globalOperation.placed(operation));
    getTransport().waitUntilClear(at(UnitKind::global, 1, global1::atuOperation), marvell::busy, looksAtAtu,
                                  "the ATU stays busy");
}

std::uint32_t MarvellTableReader::global(unsigned address) {
    return read(UnitKind::global, 1, address);
}

void MarvellTableReader::setGlobal(unsigned address, std::uint32_t value) {
    getTransport().write(at(UnitKind::global, 1, address), value);
}

} // namespace chips
