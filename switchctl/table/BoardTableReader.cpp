#include "switchctl/table/BoardTableReader.hpp"

#include "chips/ToolError.hpp"
#include "switchctl/table/TableFlush.hpp"

namespace switchctl::table {

using chips::ChipTable;

BoardTable BoardTableReader::read(ChipTable::Kind kind) {
    BoardTable result;
    for (auto const& [id, entry] : _document.getSwitches()) {
        if (!_filter.takesSwitch(id)) {
            continue;
        }
        BoardTable::Part part{id, entry.kind->getFacts().model, std::nullopt};
        if (with(part, result,
                 [&](chips::TableReader& reader) { part.table = reader.read(kind, _filter.getVlan()); })) {
            _filter.apply(kind, part);
        } else {
            part.table.reset();
        }
        result.parts.push_back(part);
    }
    return result;
}

void BoardTableReader::flush(BoardTable& addresses) {
    for (BoardTable::Part& part : addresses.parts) {
        auto const learnt = TableFlush::learntOf(part);
        if (!learnt.empty() && !with(part, addresses, [&](chips::TableReader& reader) {
                reader.flush({_filter.getVlan(), _filter.getPort()}, learnt);
            })) {
            part.table.reset();
        }
    }
}

bool BoardTableReader::with(BoardTable::Part const& part, BoardTable& table, Work const& work) {
    try {
        Reach& reach = _chips.try_emplace(part.switchId, _board, part).first->second;
        reach.chip.requireAnswer(chips::ExitStatus::registerFailed);
        work(*reach.reader);
        // Where nothing answers any more, zeros may be read, and look like an empty table.
        reach.chip.requireAnswer(chips::ExitStatus::registerFailed);
        return true;
    } catch (chips::ToolError const& error) {
        if (error.getStatus() != chips::ExitStatus::registerFailed) {
            throw;
        }
        std::string const reason = error.what();
        std::string const name = "switch " + std::to_string(part.switchId) + ": ";
        table.unread.push_back((reason.rfind(name, 0) == 0 ? "" : name) + reason);
        return false;
    }
}

BoardTableReader::Reach::Reach(board::BoardAccess& board, BoardTable::Part const& part)
    : chip(board, part.switchId, part.model),
      reader(chip.getKind().makeTableReader(chip.getCatalogue(), chip.getTransport())) {}

} // namespace switchctl::table
