#include "switchctl/status/StatusTable.hpp"

#include <fmt/format.h>

#include <algorithm>

namespace switchctl::status {

namespace {

using Line = std::vector<std::string>;

std::vector<std::size_t> widthsOf(std::vector<Line> const& lines) {
    std::vector<std::size_t> widths;
    for (Line const& line : lines) {
        widths.resize(std::max(widths.size(), line.size()));
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths[column] = std::max(widths[column], line[column].size());
        }
    }
    return widths;
}

std::string aligned(Line const& line, std::vector<std::size_t> const& widths) {
    std::string text;
    for (std::size_t column = 0; column < line.size(); ++column) {
        text += fmt::format("{}{:{}}", column == 0 ? "" : " ", line[column], widths[column]);
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

} // namespace

void StatusTable::print(StatusSample const& sample, board::BoardReading const& document, std::ostream& out) {
    std::vector<Line> lines = {{"port", "type"}};
    for (StatusFacts::Fact const& fact : StatusFacts::of(chips::PortStatus(), document)) {
        lines.front().push_back(fact.heading);
    }
    for (StatusSample::Row const& row : sample.rows) {
        Line line = {row.port.address.getText(), row.port.connectedTo.empty() ? "-" : row.port.connectedTo};
        for (StatusFacts::Fact const& fact : StatusFacts::of(row.status, document)) {
            line.push_back(fact.text);
        }
        lines.push_back(line);
    }
    std::vector<std::size_t> const widths = widthsOf(lines);
    for (std::size_t row = 0; row < sample.rows.size(); ++row) {
        board::PortSelection::Port const& port = sample.rows[row].port;
        if (row == 0 || sample.rows[row - 1].port.address.switchId != port.address.switchId) {
            out << (row == 0 ? "" : "\n") << "switch " << port.address.switchId << "  " << port.model << '\n'
                << aligned(lines.front(), widths) << '\n';
        }
        out << aligned(lines[row + 1], widths) << '\n';
    }
}

} // namespace switchctl::status
