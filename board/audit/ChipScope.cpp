#include "board/audit/ChipScope.hpp"

#include "chips/ChipKinds.hpp"
#include "simulation/AccessLog.hpp"

namespace board {

using simulation::AccessLog;
using simulation::Register;

namespace {

constexpr char const* partsOfRegisters = "bits that only show something or clear themselves";
constexpr char const* unwritten = "registers that start-up does not write";
constexpr char const* nameless = "registers without a name that start-up writes";
constexpr char const* addressTables = "address tables";
constexpr char const* otherPhys = "registers of PHYs that are no part of the chip";

std::uint32_t comparedBitsOf(Register const& description) {
    std::uint32_t bits = 0;
    for (Register::Field const& field : description.getFields()) {
        bits |= description.keeps(field) ? field.getMask() : 0;
    }
    return bits;
}

} // namespace

ChipScope::ChipScope(ModelBringUp& bringUp, unsigned switchId, Extent extent)
    : _switchId(switchId),
      _catalogue(bringUp.getModel(switchId)),
      _tables(chips::ChipKinds::get(_catalogue.getModel(), "audit").makeTables(_catalogue)),
      _hasOwnPhys(chips::ChipKinds::get(_catalogue.getModel(), "audit").getFacts().hasOwnPhys) {
    takeLog(bringUp);
    if (extent == Extent::everything) {
        _tables->takeAll();
    }
    for (chips::RegisterLocation const& location : _catalogue.getAll()) {
        takeRegister(location, extent);
    }
    for (std::string const& table : _tables->getLeftOut()) {
        _leftOut.add(addressTables, table);
    }
}

std::vector<chips::ChipImage::Field> ChipScope::Item::fieldsOf(std::uint32_t value) const {
    std::vector<chips::ChipImage::Field> fields;
    for (Register::Field const& field : location.description->getFields()) {
        if (location.description->keeps(field)) {
            fields.push_back({field.name, field.get(value)});
        }
    }
    return fields;
}

std::string ChipScope::getChip() const {
    return "switch " + std::to_string(_switchId);
}

std::uint32_t ChipScope::getComparedBits(chips::RegisterLocation const& location) const {
    for (Item const& item : _registers) {
        if (item.location.address.isSameUnit(location.address) &&
            item.location.address.address == location.address.address) {
            return comparedBitsOf(*item.location.description);
        }
    }
    return 0;
}

void ChipScope::takeLog(ModelBringUp& bringUp) {
    std::string const chip = getChip();
    for (AccessLog::Entry const& entry : bringUp.getBoard().getLog().getEntries()) {
        if (entry.chip != chip) {
            continue;
        }
        _tables->take(entry);
        simulation::UnitIdentity const& unit = *entry.identity;
        if (entry.kind != AccessLog::Kind::write || unit.kind == simulation::UnitKind::unknown) {
            continue;
        }
        _unitsWritten.insert(unit.place);
        bool const isNew = _written.emplace(unit.place, entry.address).second;
        chips::RegisterLocation const location = _catalogue.locate({unit.place, entry.address});
        // What is at a number that nobody knows may change by being read.
        if (isNew && location.description == nullptr) {
            _leftOut.add(nameless, location.getText());
        }
    }
}

void ChipScope::takeRegister(chips::RegisterLocation const& location, Extent extent) {
    bool const written = isWritten(location.address);
    Register const& description = *location.description;
    std::string const reason = whyNot(location);
    if (!reason.empty()) {
        _leftOut.add(reason, reason == otherPhys ? location.unit : location.name);
        return;
    }
    if (extent == Extent::written && !written) {
        _leftOut.add(unwritten, location.name);
        return;
    }
    _registers.push_back({location, written});
    for (Register::Field const& field : description.getFields()) {
        if (!description.keeps(field)) {
            _leftOut.add(partsOfRegisters, location.name + ":" + field.name);
        }
    }
}

std::string ChipScope::whyNot(chips::RegisterLocation const& location) const {
    Register const& description = *location.description;
    if (location.address.space == chips::RegisterAddress::Space::phy && !_hasOwnPhys &&
        _unitsWritten.count(location.address) == 0) {
        return otherPhys;
    }
    switch (description.getKind()) {
    case Register::Kind::counter:
        return "counters";
    case Register::Kind::staging:
        return "registers of commands and their data";
    case Register::Kind::unstable:
        return "registers that do not keep still";
    case Register::Kind::setting:
        break;
    }
    if (description.isChangedByRead()) {
        return "registers that a read may change";
    }
    if (comparedBitsOf(description) == 0) {
        return "registers that only show something";
    }
    if (!description.isResetKnown() && !isWritten(location.address)) {
        return "registers of which nobody told what a reset leaves";
    }
    return "";
}

bool ChipScope::isWritten(chips::RegisterAddress const& address) const {
    return _written.count({simulation::UnitPlace(address), address.address}) != 0;
}

} // namespace board
