#include "switchctl/table/TableFlush.hpp"

#include <algorithm>
#include <iterator>

#include "switchctl/table/TableJson.hpp"
#include "switchctl/table/TableText.hpp"

namespace switchctl::table {

using chips::ChipTable;
using Json = nlohmann::ordered_json;

namespace {

Json jsonOf(std::vector<ChipTable::Row> const& rows, board::BoardReading const& document) {
    Json json = Json::array();
    for (ChipTable::Row const& row : rows) {
        json.push_back(TableJson::of(row, document));
    }
    return json;
}

} // namespace

TableFlush::TableFlush(BoardTable const& before, BoardTable const& after) : _unread(before.unread) {
    for (std::string const& line : after.unread) {
        if (std::count(_unread.begin(), _unread.end(), line) == 0) {
            _unread.push_back(line);
        }
    }
    for (std::size_t index = 0; index < before.parts.size(); ++index) {
        BoardTable::Part const& old = before.parts[index];
        BoardTable::Part const& now = after.parts[index];
        Part part{old.switchId, old.model, !old.table || !now.table, {}, {}};
        if (!part.isUnread) {
            part.flushed = learntOf(old);
            part.there = learntOf(now);
            part.kept = now.table->rows.size() - part.there.size();
        }
        _parts.push_back(part);
    }
}

std::vector<ChipTable::Row> TableFlush::learntOf(BoardTable::Part const& part) {
    std::vector<ChipTable::Row> learnt;
    if (part.table) {
        std::copy_if(part.table->rows.begin(), part.table->rows.end(), std::back_inserter(learnt),
                     [](ChipTable::Row const& row) { return !*row.isStatic; });
    }
    return learnt;
}

void TableFlush::print(board::BoardReading const& document, std::ostream& out) const {
    for (Part const& part : _parts) {
        out << "switch " << part.switchId << "  " << part.model << "  ";
        if (part.isUnread) {
            out << "unread: what is flushed of it is not known\n";
            continue;
        }
        out << part.flushed.size() << " flushed, " << part.kept << " static kept\n";
        TableText::print(part.flushed, document, out);
        if (!part.there.empty()) {
            out << "there afterwards, learnt anew or not flushed: " << part.there.size() << '\n';
            TableText::print(part.there, document, out);
        }
    }
}

Json TableFlush::toJson(board::BoardReading const& document) const {
    Json switches = Json::array();
    for (Part const& part : _parts) {
        Json json = {{"switch", part.switchId}, {"chip", part.model}, {"unread", part.isUnread}};
        if (!part.isUnread) {
            json["flushed"] = jsonOf(part.flushed, document);
            json["there"] = jsonOf(part.there, document);
            json["staticKept"] = part.kept;
        }
        switches.push_back(json);
    }
    return switches;
}

} // namespace switchctl::table
