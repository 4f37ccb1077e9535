#include "chips/vsc7390/ParallelDecoder.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace chips {

namespace {

namespace vitesse = simulation::vitesse;

RegisterAddress addressIn(unsigned offset) {
    return {{RegisterAddress::Space::block, vitesse::window::block.get(offset),
             vitesse::window::subBlock.get(offset)},
            vitesse::window::address.get(offset)};
}

bool isReadAtOnce(RegisterAddress const& address) {
    return address.block == vitesse::block::capture || address.block == vitesse::block::system;
}

bool isSame(RegisterAddress const& one, RegisterAddress const& other) {
    return one.isSameUnit(other) && one.address == other.address;
}

} // namespace

ParallelDecoder::ParallelDecoder(unsigned switchId, chips::TraceSink& sink)
    : _switchId(switchId), _sink(sink) {}

void ParallelDecoder::accessed(BusAccess const& access) {
    RegisterAddress const address = addressIn(access.offset);
    if (!address.isInRange()) {
        return;
    }
    if (access.isWrite) {
        fail();
        emit(access.nanoseconds, true, address, access.value, access.succeeded);
    } else if (!isOfFetch(access, address)) {
        read(access, address);
    }
}

void ParallelDecoder::finish() {
    fail();
}

void ParallelDecoder::read(BusAccess const& access, RegisterAddress const& address) {
    // The library starts a read over when its data does not come.
    bool const isRetry = _fetched && isSame(*_fetched, address);
    if (isRetry) {
        _lastSeen = access.nanoseconds;
        return;
    }
    fail();
    if (!access.succeeded) {
        emit(access.nanoseconds, false, address, std::nullopt, false);
    } else if (isReadAtOnce(address)) {
        emit(access.nanoseconds, false, address, access.value, true);
    } else {
        _fetched = address;
        _lastSeen = access.nanoseconds;
    }
}

/// Whether the access is a look for the data of the read that has started.
bool ParallelDecoder::isOfFetch(BusAccess const& access, RegisterAddress const& address) {
    if (!_fetched || address.block != vitesse::block::system || address.unit != 0) {
        return false;
    }
    if (address.address == vitesse::system::indirectStatus) {
        _lastSeen = access.nanoseconds;
        return true;
    }
    if (address.address != vitesse::system::indirectData) {
        return false;
    }
    RegisterAddress const fetched = *_fetched;
    _fetched.reset();
    emit(access.nanoseconds, false, fetched,
         access.succeeded ? std::optional<std::uint32_t>(access.value) : std::nullopt, access.succeeded);
    return true;
}

void ParallelDecoder::fail() {
    if (_fetched) {
        RegisterAddress const fetched = *_fetched;
        _fetched.reset();
        emit(_lastSeen, false, fetched, std::nullopt, false);
    }
}

void ParallelDecoder::emit(std::uint64_t nanoseconds, bool isWrite, RegisterAddress const& address,
                           std::optional<std::uint32_t> value, bool succeeded) {
    _sink.add({nanoseconds, _switchId, TraceAccess::Transport::parallel, isWrite, address, value, succeeded});
}

} // namespace chips
