#include "switchctl/table/TableJson.hpp"

#include "board/HardwareAddress.hpp"
#include "switchctl/VlanIds.hpp"

namespace switchctl::table {

using Json = nlohmann::ordered_json;

Json TableJson::of(BoardTable const& table, board::BoardReading const& document) {
    Json switches = Json::array();
    for (BoardTable::Part const& part : table.parts) {
        Json json = {{"switch", part.switchId}, {"chip", part.model}, {"unread", !part.table.has_value()}};
        if (part.table) {
            json["unit"] = part.table->unit;
            json["entries"] = Json::array();
            for (chips::ChipTable::Row const& row : part.table->rows) {
                json["entries"].push_back(of(row, document));
            }
            json["leftOut"] = part.leftOut;
            json["notes"] = part.table->notes;
        }
        switches.push_back(json);
    }
    return switches;
}

Json TableJson::of(chips::ChipTable::Row const& row, board::BoardReading const& document) {
    Json json = Json::object();
    if (!row.name.empty()) {
        json["name"] = row.name;
    }
    if (row.address) {
        json["address"] = board::HardwareAddress::toText(*row.address);
    }
    if (row.isStatic) {
        json["static"] = *row.isStatic;
    }
    if (row.from) {
        json["from"] = *row.from;
    }
    json["vlans"] = Json::array();
    for (unsigned const vid : row.vlans) {
        json["vlans"].push_back(vlanIds(vid, document.writtenVlanId(vid)));
    }
    json["ports"] = Json::array();
    for (chips::ChipTable::Member const& member : row.members) {
        json["ports"].push_back({{"port", member.port}, {"what", member.what}});
    }
    json["facts"] = Json::object();
    for (auto const& [name, value] : row.facts) {
        json["facts"][name] = value;
    }
    return json;
}

} // namespace switchctl::table
