#include "simulation/MisuseReport.hpp"

#include <algorithm>
#include <ostream>

namespace simulation {

MisuseReport::MisuseReport(VirtualClock const& clock, AccessLog const& log) : _clock(clock), _log(log) {}

void MisuseReport::add(Kind kind, std::string const& chip, std::string const& unit,
                       std::string const& registerName, std::string const& text) {
    std::size_t const access = _log.getSize();
    std::lock_guard<std::mutex> const lock(_mutex);
    _entries.push_back({kind, _clock.getNanoseconds(), access, chip, unit, registerName, text});
}

std::size_t MisuseReport::getSize() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _entries.size();
}

std::size_t MisuseReport::getSize(Kind kind) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return static_cast<std::size_t>(std::count_if(_entries.begin(), _entries.end(),
                                                  [kind](Entry const& entry) { return entry.kind == kind; }));
}

std::vector<MisuseReport::Entry> MisuseReport::getEntries() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _entries;
}

void MisuseReport::print(std::ostream& out) const {
    for (Entry const& entry : getEntries()) {
        out << entry.chip << ", " << entry.unit << ", " << entry.registerName << ": " << name(entry.kind)
            << ": " << entry.text << '\n';
    }
}

void MisuseReport::clear() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _entries.clear();
}

char const* MisuseReport::name(Kind kind) {
    switch (kind) {
    case Kind::unknownRegister:
        return "unknown register";
    case Kind::unwritableBits:
        return "unwritable bits";
    case Kind::commandWhileBusy:
        return "command while busy";
    case Kind::meaninglessCommand:
        return "meaningless command";
    case Kind::dataNotReady:
        return "data not ready";
    case Kind::absentBlock:
        return "absent block";
    case Kind::malformedCommand:
        return "malformed command";
    }
    return "";
}

} // namespace simulation
