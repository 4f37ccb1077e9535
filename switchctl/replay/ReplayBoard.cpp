#include "switchctl/replay/ReplayBoard.hpp"

#include "chips/ToolError.hpp"
#include "reference_host/XmlDocument.hpp"

namespace switchctl::replay {

namespace {

std::unique_ptr<Xml> documentOf(board::TraceChips const& chips) {
    std::string text = "<switches>";
    for (auto const& [id, chip] : chips.getAll()) {
        text += "<switch id='" + std::to_string(id) + "' switchModel='" + chip->getModel() + "'/>";
    }
    return reference_host::XmlDocument::fromText(text + "</switches>", "board");
}

} // namespace

ReplayBoard::ReplayBoard(board::TraceChips const& chips)
    : _chips(chips),
      _document(documentOf(chips)),
      _board(*_document),
      _clock(_board.getClock()),
      _reach(_board) {}

chips::TraceAccess ReplayBoard::perform(chips::TraceAccess const& access) {
    chips::ChipCatalogue const& chip = *_chips.find(access.switchId);
    // Where only the failure counts, any register that all chips have.
    chips::RegisterLocation const location =
        access.address ? chip.locate(*access.address) : chip.at(simulation::UnitKind::port, 0, 0);
    chips::TraceAccess result = access;
    result.succeeded = true;
    try {
        chips::RegisterTransport& transport = transportTo(access.switchId);
        if (access.isWrite) {
            transport.write(location, access.value.value_or(0));
        } else {
            result.value = transport.read(location);
        }
    } catch (chips::ToolError const&) {
        result.succeeded = false;
        if (!access.isWrite) {
            result.value.reset();
        }
    }
    result.nanoseconds = getNanoseconds();
    return result;
}

std::uint64_t ReplayBoard::getNanoseconds() {
    return _board.getClock().getNanoseconds();
}

void ReplayBoard::waitUntil(std::uint64_t nanoseconds) {
    std::uint64_t const now = getNanoseconds();
    if (nanoseconds > now) {
        _board.getClock().advanceNanoseconds(nanoseconds - now);
    }
}

chips::RegisterTransport& ReplayBoard::transportTo(unsigned switchId) {
    auto& transport = _transports[switchId];
    if (transport == nullptr) {
        transport = _reach.connect(switchId, _chips.find(switchId)->getModel());
    }
    return *transport;
}

} // namespace switchctl::replay
