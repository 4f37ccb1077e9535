#include "switchctl/port/PortChange.hpp"

#include "board/PortStart.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::port {

using chips::ChipImage;
using chips::ExitStatus;
using chips::ToolError;
using simulation::Register;

namespace {

constexpr char const* unread = "unread";

/// A setting that can be read without disturbing anything.
bool isComparable(chips::RegisterLocation const& location, bool hasOwnPhys) {
    Register const& description = *location.description;
    bool const isOwn = hasOwnPhys || location.address.space != chips::RegisterAddress::Space::phy;
    return isOwn && description.getKind() == Register::Kind::setting && !description.isChangedByRead();
}

std::vector<ChipImage::Field> fieldsOf(Register const& description, std::uint32_t value) {
    std::vector<ChipImage::Field> fields;
    for (Register::Field const& field : description.getFields()) {
        if (description.keeps(field)) {
            fields.push_back({field.name, field.get(value)});
        }
    }
    return fields;
}

} // namespace

PortChange::PortChange(board::BoardAccess& board, board::BoardReading::Switch const& owner,
                       chips::PortAddress const& port, chips::PortSettings const& settings)
    : _board(board),
      _owner(owner),
      _port(port),
      _catalogue(owner.kind->getFacts().model),
      _transport(board.connect(owner.id, owner.kind->getFacts().model)) {
    _owner.kind->requireChip(_catalogue, *_transport);
    if (settings.startsAsItWas()) {
        requireSpeed();
    }
    _before = readState();
    ChipImage const before = readSettings();
    if (_before == unread || before.isUnread(ChipImage::wholeChip)) {
        throw ToolError(ExitStatus::registerFailed,
                        "nothing was set: " + _port.getText() + " could not be read: " + before.getUnread());
    }
    carryOut(settings);
    _after = readState();
    compare(before, readSettings());
}

/// A dead bus answers each read as well as a chip does.
ChipImage PortChange::readSettings() {
    ChipImage image;
    try {
        readRegisters(image);
        _owner.kind->requireChip(_catalogue, *_transport);
    } catch (ToolError const& error) {
        image = {};
        image.addUnread(ChipImage::wholeChip, error.what());
    }
    return image;
}

/// PHYs may be missing.
void PortChange::readRegisters(ChipImage& image) {
    bool const hasOwnPhys = _owner.kind->getFacts().hasOwnPhys;
    for (chips::RegisterLocation const& location : _catalogue.getAll()) {
        if (!isComparable(location, hasOwnPhys) || image.isUnread(location.unit)) {
            continue;
        }
        try {
            image.addRegister(location.unit, location.name,
                              fieldsOf(*location.description, _transport->read(location)));
        } catch (ToolError const& error) {
            if (location.address.space != chips::RegisterAddress::Space::phy) {
                throw;
            }
            image.addUnread(location.unit, error.what());
        }
    }
}

void PortChange::requireSpeed() {
    chips::ChipKind::Settings const& settings = _owner.kind->getFacts().settings;
    if (!settings.speedRegister) {
        return;
    }
    auto const location = _catalogue.at(simulation::UnitKind::port, _port.portId, *settings.speedRegister);
    if (!settings.speed.isSet(_transport->read(location))) {
        throw ToolError(ExitStatus::usage, "up: port " + _port.getText() +
                                               " has never had a speed; say up speed 10, 100 or 1000");
    }
}

bool PortChange::use(std::function<bool(ManagedSwitchPort&)> const& action) {
    return _owner.kind->usePort({_board.getApplication(), _board.getErrors(), _owner.id},
                                board::PortStart::portsOf(_owner), _port.portId, action);
}

void PortChange::carryOut(chips::PortSettings const& settings) {
    bool isSet = false;
    std::string thrown;
    try {
        isSet = use(
            [&](ManagedSwitchPort& port) { return settings.apply(port, _owner.kind->getFacts().settings); });
    } catch (char const* text) {
        thrown = text;
    }
    _failure = _board.getErrors().take();
    _failure += (_failure.empty() || thrown.empty() ? "" : "; ") + thrown;
    if (!isSet && _failure.empty()) {
        _failure = "a register could not be read or written";
    }
}

std::string PortChange::readState() {
    unsigned short state = 0;
    try {
        use([&state](ManagedSwitchPort& port) {
            state = port.portStatus();
            return true;
        });
    } catch (char const*) {
        _board.getErrors().take();
        return unread;
    }
    // A register that could not be read is 0.
    auto const& states = _owner.kind->getFacts().settings.states;
    return _board.getErrors().take().empty() && state < states.size() ? states[state] : unread;
}

void PortChange::compare(ChipImage const& before, ChipImage const& after) {
    _changes = board::Deviation::between("switch " + std::to_string(_owner.id), before, after);
    for (ChipImage::Item const& item : before.getItems()) {
        _compared += before.covers(item) && after.covers(item) ? 1U : 0U;
    }
    _unread = after.getUnread().empty() ? before.getUnread() : after.getUnread();
    if (after.isUnread(ChipImage::wholeChip)) {
        _after = unread;
    }
}

} // namespace switchctl::port
