#include "simulation/RegisterTable.hpp"

#include <utility>

namespace simulation {

Register::Register(unsigned address, std::string name, std::uint32_t reset)
    : _address(address), _name(std::move(name)), _reset(reset) {}

Register& Register::field(Field const& field) {
    _writable |= field.getMask();
    return readOnly(field);
}

Register& Register::readOnly(Field const& field) {
    _fields.push_back(field);
    return *this;
}

Register& Register::ignored(Field const& field) {
    _ignored |= field.getMask();
    return *this;
}

Register& Register::selfClearing(Field const& field) {
    _selfClearing |= field.getMask();
    return this->field(field);
}

Register& Register::staging() {
    _kind = Kind::staging;
    return *this;
}

Register& Register::counter() {
    _kind = Kind::counter;
    return *this;
}

Register& Register::unstable() {
    _kind = Kind::unstable;
    return *this;
}

Register& Register::changedByRead() {
    _isChangedByRead = true;
    return *this;
}

Register& Register::unknownReset() {
    _isResetKnown = false;
    return *this;
}

Register& Register::onWrite(WriteHook hook) {
    _writeHook = std::move(hook);
    return *this;
}

Register& Register::onAttempt(WriteHook hook) {
    _attemptHook = std::move(hook);
    return *this;
}

Register& Register::onRead(ReadHook hook) {
    _readHook = std::move(hook);
    return *this;
}

Register& Register::afterRead(std::function<void()> hook) {
    _afterRead = std::move(hook);
    return *this;
}

bool Register::keeps(Field const& field) const {
    return (field.getMask() & (~_writable | _selfClearing)) == 0;
}

std::uint32_t Register::shown(std::uint32_t stored) const {
    return _readHook ? _readHook(stored) : stored;
}

void Register::written(std::uint32_t stored, std::uint32_t attempted) const {
    if (_writeHook) {
        _writeHook(stored);
    }
    if (_attemptHook) {
        _attemptHook(attempted);
    }
}

void Register::wasRead() const {
    if (_afterRead) {
        _afterRead();
    }
}

RegisterTable::RegisterTable(std::initializer_list<Register> registers) {
    for (Register const& description : registers) {
        add(description);
    }
}

void RegisterTable::add(Register const& description) {
    _registers.emplace(description.getAddress(), description);
}

Register const* RegisterTable::find(unsigned address) const {
    auto const found = _registers.find(address);
    return found == _registers.end() ? nullptr : &found->second;
}

} // namespace simulation
