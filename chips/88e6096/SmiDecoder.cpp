#include "chips/88e6096/SmiDecoder.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace chips {

namespace {

namespace marvell = simulation::marvell;
namespace smi = simulation::marvell::smi;

/// The library gives up after a second, of which a few frames are not seen here.
constexpr std::uint64_t longestWait = 999'000'000;

RegisterAddress addressIn(std::uint16_t word) {
    return {{RegisterAddress::Space::device, 0, smi::device.get(word)}, smi::address.get(word)};
}

} // namespace

SmiDecoder::SmiDecoder(unsigned switchId, chips::TraceSink& sink) : _switchId(switchId), _sink(sink) {}

void SmiDecoder::frameRead(std::uint64_t nanoseconds, unsigned registerNumber, std::uint16_t value,
                           bool succeeded) {
    if (registerNumber == smi::command) {
        look(nanoseconds, value, succeeded);
    } else if (registerNumber == smi::data && _read) {
        bool const isGood = succeeded && _isReadSent;
        emit(nanoseconds, false, _read, isGood ? std::optional<std::uint32_t>(value) : std::nullopt, isGood);
        _read.reset();
    }
}

void SmiDecoder::frameWritten(std::uint64_t nanoseconds, unsigned registerNumber, std::uint16_t value,
                              bool succeeded) {
    if (registerNumber == smi::data) {
        _data = value;
        _isDataSent = succeeded;
    } else if (registerNumber == smi::command && marvell::busy.isSet(value)) {
        start(nanoseconds, value, succeeded);
    }
}

void SmiDecoder::finish() {
    giveUp();
    if (_read) {
        emit(_lastLook, false, _read, std::nullopt, false);
        _read.reset();
    }
}

void SmiDecoder::start(std::uint64_t nanoseconds, std::uint16_t word, bool succeeded) {
    if (_read) {
        emit(nanoseconds, false, _read, std::nullopt, false);
        _read.reset();
    }
    unsigned const operation = smi::operation.get(word);
    if (operation == smi::write) {
        emit(nanoseconds, true, addressIn(word), _data, succeeded && _isDataSent);
    } else if (operation == smi::read) {
        _read = addressIn(word);
        _isReadSent = succeeded;
        _lastLook = nanoseconds;
    }
}

// Each access waits for the chip first, and a read waits once more for its data. When a wait is given
// up, the next look is for another access.
void SmiDecoder::look(std::uint64_t nanoseconds, std::uint16_t word, bool succeeded) {
    giveUp();
    if (succeeded && !marvell::busy.isSet(word)) {
        _busySince.reset();
    } else if (!_busySince) {
        _busySince = nanoseconds;
    }
    _lastLook = nanoseconds;
    _lastWord = word;
}

void SmiDecoder::giveUp() {
    if (!_busySince || _lastLook - *_busySince < longestWait) {
        return;
    }
    if (_read) {
        emit(_lastLook, false, _read, std::nullopt, false);
        _read.reset();
    } else {
        emit(_lastLook, false, std::nullopt, _lastWord, false);
    }
    _busySince.reset();
}

void SmiDecoder::emit(std::uint64_t nanoseconds, bool isWrite, std::optional<RegisterAddress> const& address,
                      std::optional<std::uint32_t> value, bool succeeded) {
    _sink.add({nanoseconds, _switchId, TraceAccess::Transport::smi, isWrite, address, value, succeeded});
}

} // namespace chips
