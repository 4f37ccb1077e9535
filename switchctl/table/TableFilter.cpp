#include "switchctl/table/TableFilter.hpp"

#include <algorithm>

#include "board/HardwareAddress.hpp"
#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::table {

using chips::ChipTable;

namespace {

constexpr unsigned mostOfVid = 4095;

std::string complainOfPort(std::string const& text) {
    return chips::PortAddress::fromText(text) ? "" : "\"" + text + "\": not of the form SWITCH.PORT";
}

std::string complainOfVlan(std::string const& text) {
    auto const vid = chips::NumberText::parse(text);
    return vid && *vid <= mostOfVid ? ""
                                    : "\"" + text + "\": no VLAN id, which is 0 to 4095, or 0x0 to 0xfff";
}

std::string complainOfAddress(std::string const& text) {
    return board::HardwareAddress::fromText(text)
               ? ""
               : "\"" + text + "\": neither an address, 02:00:00:00:00:01, nor an IPv4 group, 239.1.2.3";
}

bool hasMember(ChipTable::Row const& row, unsigned port) {
    return std::any_of(row.members.begin(), row.members.end(),
                       [&](ChipTable::Member const& member) { return member.port == port; });
}

} // namespace

std::vector<std::string> const& TableFilter::getNames() {
    static std::vector<std::string> const names = {"addresses", "vlans",  "spanning-tree",
                                                   "groups",    "routes", "trunks"};
    return names;
}

TableFilter::Kind TableFilter::kindOf(std::string const& name) {
    auto const& names = getNames();
    return static_cast<Kind>(std::find(names.begin(), names.end(), name) - names.begin());
}

void TableFilter::addTo(Arguments& arguments) {
    auto const port =
        arguments.option("--port", _port, "Only entries with this port; of spanning-tree, only its states")
            .type("SWITCH.PORT")
            .check(complainOfPort);
    arguments.option("--switch", _switch, "Only this switch").type("ID").excludes(port);
    arguments.option("--vlan", _vlan, "Only entries of this VLAN; decimal, or hexadecimal after 0x")
        .type("VID")
        .check(complainOfVlan);
    arguments.option("--address", _address, "Only entries of this address, or of this IPv4 group")
        .type("MAC|GROUP")
        .check(complainOfAddress);
}

void TableFilter::requireUse(std::string const& name) const {
    Kind const kind = kindOf(name);
    if (!_vlan.empty() && (kind == Kind::routes || kind == Kind::trunks)) {
        throw Arguments::Wrong("--vlan: is not for " + name + ", which are the same in all VLANs");
    }
    if (hasAddress() && kind != Kind::addresses && kind != Kind::groups) {
        throw Arguments::Wrong("--address: is not for " + name + ", which have no addresses");
    }
}

void TableFilter::requireThere(board::BoardReading const& document, std::string const& path) const {
    auto const port = chips::PortAddress::fromText(_port);
    if (!_switch && !port) {
        return;
    }
    unsigned const id = port ? port->switchId : *_switch;
    std::string const option = port ? "--port " + _port : "--switch " + std::to_string(id);
    auto const entry = document.getSwitches().find(id);
    if (entry == document.getSwitches().end()) {
        throw chips::ToolError(chips::ExitStatus::usage,
                               option + ": " + path + " has no switch " + std::to_string(id));
    }
    if (port && port->portId >= entry->second.portsOfChip()) {
        throw chips::ToolError(chips::ExitStatus::usage, option + ": switch " + std::to_string(id) + " (" +
                                                             entry->second.kind->getFacts().model +
                                                             ") has the ports 0 to " +
                                                             std::to_string(entry->second.portsOfChip() - 1));
    }
}

bool TableFilter::takesSwitch(unsigned switchId) const {
    auto const port = chips::PortAddress::fromText(_port);
    return port ? port->switchId == switchId : !_switch || *_switch == switchId;
}

std::optional<unsigned> TableFilter::getVlan() const {
    return chips::NumberText::parse(_vlan);
}

std::optional<unsigned> TableFilter::getPort() const {
    auto const port = chips::PortAddress::fromText(_port);
    return port ? std::optional(port->portId) : std::nullopt;
}

void TableFilter::apply(Kind kind, BoardTable::Part& part) const {
    auto& rows = part.table->rows;
    auto const end = std::remove_if(rows.begin(), rows.end(), [&](auto const& row) { return !takes(row); });
    part.leftOut = static_cast<std::size_t>(rows.end() - end);
    rows.erase(end, rows.end());
    auto const port = getPort();
    if (!port || kind != Kind::spanningTree) {
        return;
    }
    for (ChipTable::Row& row : rows) {
        row.members.erase(std::remove_if(row.members.begin(), row.members.end(),
                                         [&](auto const& member) { return member.port != *port; }),
                          row.members.end());
    }
}

bool TableFilter::takes(ChipTable::Row const& row) const {
    auto const vlan = getVlan();
    auto const port = getPort();
    return (!vlan || std::count(row.vlans.begin(), row.vlans.end(), *vlan) != 0) &&
           (!port || row.from == port || hasMember(row, *port)) &&
           (!hasAddress() || row.address == board::HardwareAddress::fromText(_address));
}

} // namespace switchctl::table
