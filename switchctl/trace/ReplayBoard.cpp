#include "switchctl/trace/ReplayBoard.hpp"

#include "reference_host/XmlDocument.hpp"
#include "switchctl/registers/CommandError.hpp"
#include "switchctl/trace/TraceFormat.hpp"

namespace switchctl::trace {

namespace {

/// What any chip has; read when only the failure counts.
constexpr char const* anyRegister = "port 0/0";

std::unique_ptr<Xml> documentOf(TraceChips const& chips) {
    std::string text = "<switches>";
    for (auto const& [id, chip] : chips.getAll()) {
        text += "<switch id='" + std::to_string(id) + "' switchModel='" + chip->getModel() + "'/>";
    }
    return reference_host::XmlDocument::fromText(text + "</switches>", "board");
}

} // namespace

ReplayBoard::ReplayBoard(TraceChips const& chips)
    : _chips(chips),
      _document(documentOf(chips)),
      _board(*_document),
      _clock(_board.getClock()),
      _reach(_board) {}

TraceAccess ReplayBoard::perform(TraceAccess const& access) {
    ChipCatalogue const& chip = *_chips.find(access.switchId);
    RegisterLocation const location =
        access.address ? TraceFormat::locate(chip, *access.address) : chip.find(anyRegister);
    TraceAccess result = access;
    result.succeeded = true;
    try {
        RegisterTransport& transport = transportTo(access.switchId);
        if (access.isWrite) {
            transport.write(location, access.value.value_or(0));
        } else {
            result.value = transport.read(location);
        }
    } catch (CommandError const&) {
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

RegisterTransport& ReplayBoard::transportTo(unsigned switchId) {
    auto& transport = _transports[switchId];
    if (transport == nullptr) {
        transport = _reach.connect(switchId, _chips.find(switchId)->getModel());
    }
    return *transport;
}

} // namespace switchctl::trace
