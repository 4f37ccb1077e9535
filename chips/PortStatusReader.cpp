#include "chips/PortStatusReader.hpp"

#include <fmt/format.h>

#include "chips/ChipKind.hpp"
#include "chips/ToolError.hpp"
#include "simulation/PhyControl.hpp"

namespace chips {

using simulation::UnitKind;

PortStatusReader::PortStatusReader(ChipKind const& kind, ChipCatalogue const& catalogue,
                                   RegisterTransport& transport)
    : _kind(kind),
      _catalogue(catalogue),
      _transport(transport),
      _counters(kind.makeCounterReader(catalogue, transport)) {}

PortStatus PortStatusReader::read(PortAddress const& port, std::vector<std::string>& unread) {
    _port = port.getText();
    _unread = &unread;
    _isLost = false;
    PortStatus status;
    readInto(port.portId, status);
    status.errors = readErrors(port);
    return status;
}

std::optional<std::uint32_t> PortStatusReader::tryRead(UnitKind unit, unsigned number, unsigned address) {
    _isPhyAbsent = false;
    if (_isLost) {
        return std::nullopt;
    }
    try {
        return _transport.read(_catalogue.at(unit, number, address));
    } catch (ToolError const& error) {
        complain(unit == UnitKind::phy, error.what());
        return std::nullopt;
    }
}

/// A chip that does not answer will not do so for the next register, either.
void PortStatusReader::complain(bool isPhy, std::string const& reason) {
    try {
        _isLost = !_kind.answers(_catalogue, _transport);
        _isPhyAbsent = isPhy && !_isLost && isPhyAbsent(_transport, _catalogue);
    } catch (ToolError const&) {
        _isLost = true;
    }
    if (!_isPhyAbsent) {
        _unread->push_back("port " + _port + ": " + reason);
    }
}

PortStatus::Fact<std::string> PortStatusReader::readIdentity(unsigned phy) {
    constexpr std::uint32_t nobody = 0xFFFF;
    auto const first = tryRead(UnitKind::phy, phy, simulation::phy::identifier1);
    if (wasPhyAbsent() || first == nobody) {
        return std::string("none");
    }
    auto const second = first ? tryRead(UnitKind::phy, phy, simulation::phy::identifier2) : std::nullopt;
    return PortStatus::Fact<std::string>::of(
        second, [&](std::uint32_t word) { return fmt::format("{:04x}:{:04x}", *first, word); });
}

PortStatus::Fact<std::uint64_t> PortStatusReader::readErrors(PortAddress const& port) {
    if (_isLost) {
        return PortStatus::Fact<std::uint64_t>::unread();
    }
    std::uint64_t sum = 0;
    PortCounters const counters =
        _counters->read(port, *_unread, [](Counter const& counter) { return counter.isError; });
    for (std::size_t index = 0; index < counters.values.size(); ++index) {
        if (!counters.getCounters()[index].isError) {
            continue;
        }
        if (!counters.values[index]) {
            return PortStatus::Fact<std::uint64_t>::unread();
        }
        sum += *counters.values[index];
    }
    return sum;
}

} // namespace chips
