#include "switchctl/status/StatusTable.hpp"

#include "switchctl/TextColumns.hpp"

namespace switchctl::status {

namespace {

/// Without what goes without saying: no port is connected to a switch otherwise.
std::string typeOf(std::string const& connectedTo) {
    return connectedTo.empty() ? "-" : connectedTo == "switchInterlink" ? "interlink" : connectedTo;
}

TextColumns startTable(board::BoardReading const& document) {
    std::vector<std::string> headings = {"port", "type"};
    for (StatusFacts::Fact const& fact : StatusFacts::of(chips::PortStatus(), document)) {
        headings.emplace_back(fact.heading);
    }
    return TextColumns(headings);
}

} // namespace

void StatusTable::print(StatusSample const& sample, board::BoardReading const& document, std::ostream& out) {
    for (std::size_t row = 0; row < sample.rows.size();) {
        board::PortSelection::Port const& first = sample.rows[row].port;
        out << (row == 0 ? "" : "\n") << "switch " << first.address.switchId << "  " << first.model << '\n';
        TextColumns columns = startTable(document);
        for (; row < sample.rows.size() && sample.rows[row].port.address.switchId == first.address.switchId;
             ++row) {
            board::PortSelection::Port const& port = sample.rows[row].port;
            std::vector<std::string> line = {port.address.getText(), typeOf(port.connectedTo)};
            for (StatusFacts::Fact const& fact : StatusFacts::of(sample.rows[row].status, document)) {
                line.push_back(fact.text);
            }
            columns.add(line);
        }
        columns.print(out);
    }
}

} // namespace switchctl::status
