#include "switchctl/table/TableText.hpp"

#include "board/HardwareAddress.hpp"
#include "board/Wording.hpp"
#include "switchctl/TextColumns.hpp"

namespace switchctl::table {

using chips::ChipTable;

namespace {

using Members = std::vector<ChipTable::Member>;

constexpr unsigned firstOfTwoReadings = 10;

/// "5", or `20 (0x14, written "14")` where it can be read in two ways.
std::string vlanText(unsigned vid, board::BoardReading const& document) {
    auto const written = document.writtenVlanId(vid);
    std::string const decimal = std::to_string(vid);
    bool const isPlain = vid < firstOfTwoReadings && (!written || *written == decimal);
    return isPlain ? decimal
                   : decimal + " (" + board::hexadecimal(vid) +
                         (written ? ", written \"" + *written + "\")" : ")");
}

std::string vlansText(ChipTable::Row const& row, board::BoardReading const& document) {
    std::string text;
    for (unsigned const vid : row.vlans) {
        text += (text.empty() ? "" : ", ") + vlanText(vid, document);
    }
    return text;
}

/// "0-3 10"; numbers come in order.
std::string rangesText(std::vector<unsigned> const& ports) {
    std::string text;
    for (std::size_t first = 0; first < ports.size();) {
        std::size_t last = first;
        while (last + 1 < ports.size() && ports[last + 1] == ports[last] + 1) {
            ++last;
        }
        text += (text.empty() ? "" : " ") + std::to_string(ports[first]);
        if (last > first) {
            text += (last == first + 1 ? " " : "-") + std::to_string(ports[last]);
        }
        first = last + 1;
    }
    return text;
}

/// "untagged 1 2, tagged 10": what is said of ports in the order of the first of each.
std::string membersText(Members const& members) {
    std::vector<std::pair<std::string, std::vector<unsigned>>> groups;
    for (ChipTable::Member const& member : members) {
        auto group = groups.begin();
        while (group != groups.end() && group->first != member.what) {
            ++group;
        }
        if (group == groups.end()) {
            group = groups.insert(groups.end(), {member.what, {}});
        }
        group->second.push_back(member.port);
    }
    std::string text;
    for (auto const& [what, ports] : groups) {
        text += (text.empty() ? "" : ", ") + what + (what.empty() ? "" : " ") + rangesText(ports);
    }
    return text.empty() ? "-" : text;
}

std::string factsText(ChipTable::Row const& row) {
    std::string text;
    for (auto const& [name, value] : row.facts) {
        text += (text.empty() ? "" : ", ");
        text += name;
        text += " " + value;
    }
    return text;
}

} // namespace

void TableText::print(BoardTable const& table, board::BoardReading const& document, std::ostream& out) {
    for (BoardTable::Part const& part : table.parts) {
        out << (&part == &table.parts.front() ? "" : "\n") << "switch " << part.switchId << "  " << part.model
            << "  " << (part.table ? part.table->unit : "unread") << '\n';
        if (!part.table) {
            continue;
        }
        print(part.table->rows, document, out);
        if (part.table->rows.empty() && part.leftOut != 0) {
            out << "no entry that is asked for, " << part.leftOut << " other"
                << (part.leftOut == 1 ? "" : "s") << '\n';
        } else if (part.table->rows.empty()) {
            out << "no entries\n";
        }
        for (std::string const& note : part.table->notes) {
            out << TextColumns::wrap(note) << '\n';
        }
    }
}

void TableText::print(std::vector<ChipTable::Row> const& rows, board::BoardReading const& document,
                      std::ostream& out) {
    if (rows.empty()) {
        return;
    }
    bool const isRoute = rows.front().from.has_value();
    TextColumns columns({"entry", "address", isRoute ? "from" : "", "VLAN", "kind", "details",
                         isRoute ? "to ports" : "ports"});
    for (ChipTable::Row const& row : rows) {
        columns.add({row.name, row.address ? board::HardwareAddress::toText(*row.address) : "",
                     row.from ? std::to_string(*row.from) : "", vlansText(row, document),
                     !row.isStatic   ? ""
                     : *row.isStatic ? "static"
                                     : "learnt",
                     factsText(row), membersText(row.members)});
    }
    columns.print(out);
}

std::string TableText::describe(ChipTable::Row const& row, board::BoardReading const& document) {
    return board::HardwareAddress::toText(*row.address) +
           (row.vlans.empty() ? "" : ", VLAN " + vlansText(row, document)) + ", port " +
           membersText(row.members);
}

} // namespace switchctl::table
