#include "simulation/RegisterFile.hpp"

#include <fmt/format.h>

#include <utility>

namespace simulation {

RegisterFile::RegisterFile(Services& services, UnitIdentity identity, RegisterTable table, Logging logging)
    : _services(services), _identity(std::make_shared<UnitIdentity>(std::move(identity))), _logging(logging) {
    define(std::move(table));
}

void RegisterFile::define(RegisterTable table) {
    _identity->registers = std::move(table);
    reset();
}

std::uint32_t RegisterFile::read(unsigned address, unsigned transfer) {
    std::uint32_t const value = peek(address);
    if (_logging == Logging::on) {
        _services.log.addRead(_identity, address, transfer, value);
    }
    Register const* const description = _identity->registers.find(address);
    if (description == nullptr) {
        report(MisuseReport::Kind::unknownRegister, address, "read");
    } else {
        description->wasRead();
    }
    return value;
}

void RegisterFile::write(unsigned address, std::uint32_t value, unsigned transfer) {
    Register const* const description = _identity->registers.find(address);
    std::uint32_t const before = peek(address);
    std::uint32_t const writable = description == nullptr ? ~std::uint32_t{0} : description->getWritable();
    store(address, (getStored(address) & ~writable) | (value & writable));
    if (_logging == Logging::on) {
        _services.log.addWrite(_identity, address, transfer, value, before, peek(address));
    }
    if (description == nullptr) {
        report(MisuseReport::Kind::unknownRegister, address, fmt::format("write of 0x{:04x}", value));
    } else {
        reportUnwritable(*description, value, before);
        description->written(getStored(address), value);
    }
    notifyChange(address);
}

std::uint32_t RegisterFile::getStored(unsigned address) const {
    auto const found = _values.find(address);
    return withStuckBits(address, found == _values.end() ? 0 : found->second);
}

std::uint32_t RegisterFile::getStored(unsigned address, Field const& field) const {
    return field.get(getStored(address));
}

void RegisterFile::store(unsigned address, std::uint32_t value) {
    _values[address] = value;
}

void RegisterFile::onChange(std::function<void(unsigned address)> changed) {
    _changed = std::move(changed);
}

void RegisterFile::report(MisuseReport::Kind kind, unsigned address, std::string const& text) const {
    _services.misuse.add(kind, _identity->chip, _identity->unit, _identity->registerName(address), text);
}

void RegisterFile::reset() {
    _values.clear();
    for (auto const& [address, description] : _identity->registers.getRegisters()) {
        _values[address] = description.getReset();
    }
}

std::uint32_t RegisterFile::peek(unsigned address) const {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    Register const* const description = _identity->registers.find(address);
    std::uint32_t const stored = getStored(address);
    return withStuckBits(address, description == nullptr ? stored : description->shown(stored));
}

// Read first: a result that is due by now would otherwise replace the value at the next read.
void RegisterFile::poke(unsigned address, std::uint32_t value) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    peek(address);
    store(address, value);
    notifyChange(address);
}

void RegisterFile::stick(unsigned address, std::uint32_t ones, std::uint32_t zeros) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    if (ones == 0 && zeros == 0) {
        _stuckBits.erase(address);
    } else {
        _stuckBits[address] = {ones, zeros};
    }
    notifyChange(address);
}

void RegisterFile::notifyChange(unsigned address) const {
    if (_changed) {
        _changed(address);
    }
}

std::uint32_t RegisterFile::withStuckBits(unsigned address, std::uint32_t value) const {
    auto const found = _stuckBits.find(address);
    return found == _stuckBits.end() ? value : (value | found->second.ones) & ~found->second.zeros;
}

// A driver that changes some bits of a register writes back the others as it found them: only what
// it did not find there is its own doing.
void RegisterFile::reportUnwritable(Register const& description, std::uint32_t value,
                                    std::uint32_t shown) const {
    std::uint32_t const refused = value & ~description.getWritable() & ~description.getIgnored() & ~shown;
    if (refused != 0) {
        report(
            MisuseReport::Kind::unwritableBits, description.getAddress(),
            fmt::format("write of 0x{:04x} tries to set 0x{:04x}, which cannot be written", value, refused));
    }
}

} // namespace simulation
