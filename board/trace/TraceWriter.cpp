#include "board/trace/TraceWriter.hpp"

#include "board/trace/TraceFormat.hpp"

namespace board {

TraceWriter::TraceWriter(std::ostream& out, TraceChips const& chips) : _out(out), _chips(chips) {
    _out << TraceFormat::firstLine << '\n';
    for (auto const& [id, chip] : _chips.getAll()) {
        _out << TraceFormat::chipLine(id, chip->getModel()) << '\n';
    }
}

void TraceWriter::add(chips::TraceAccess const& access) {
    if (_chips.find(access.switchId) == nullptr) {
        return;
    }
    std::lock_guard<std::mutex> const lock(_mutex);
    _out << TraceFormat::line(_chips, access) << '\n';
}

} // namespace board
