#include "tests/faults/SerialTalk.hpp"

#include <algorithm>

namespace fault_test {

namespace {

using simulation::VirtualClock;
using MiiController = VitesseManagementCommunications::MiiManagementLocation;

/// Past the time that a driver waits for an answer.
constexpr std::uint64_t enoughNanoseconds = 7'000'000'000;
/// A driver that looks for an answer in vain pauses for that long.
constexpr std::uint64_t pauseNanoseconds = 10'000;
/// When answers come: after several looks.
constexpr std::uint64_t answerNanoseconds = 100'000;
/// After that long, a driver that still waits has looked at everything that was there.
constexpr std::uint64_t severalLooksNanoseconds = 200'000;

} // namespace

SerialTalk::SerialTalk(Application& application, simulation::SerialController& controller)
    : _controller(controller), _driver(application, false, controller.getDevicePath()) {
    _controller.delayAnswers(_clock, answerNanoseconds);
    VirtualClock::adopt(&_clock);
}

SerialTalk::~SerialTalk() {
    VirtualClock::adopt(nullptr);
}

std::string SerialTalk::talk() {
    auto const write = [this](unsigned address, unsigned value) {
        unsigned short const place = static_cast<unsigned short>(address);
        perform("w 2 0 " + std::to_string(address) + ' ' + std::to_string(value), [=] {
            return std::string(_driver.writeRegister({2, 0, place}, value) ? "yes" : "no");
        });
    };
    auto const read = [this](unsigned block, unsigned address) {
        perform("r " + std::to_string(block) + " 0 " + std::to_string(address), [=] {
            unsigned value = 0xABCD;
            bool const done = _driver.readRegister(
                {static_cast<unsigned short>(block), 0, static_cast<unsigned short>(address)}, value);
            return (done ? "yes " : "no ") + std::to_string(value);
        });
    };
    read(7, 0x18);
    write(0xE0, 10);
    write(0xD0, 0x10000022);
    read(2, 0xE0);
    perform("o 20 4 481", [this] {
        return std::string(_driver.phyWriteRegister(MiiController::controller1, 20, 4, 481) ? "yes" : "no");
    });
    perform("i 20 4", [this] {
        unsigned short value = 0xABCD;
        bool const done = _driver.phyReadRegister(MiiController::controller1, 20, 4, value);
        return (done ? "yes " : "no ") + std::to_string(value);
    });
    read(7, 0x18);
    return _results;
}

// The controller works by the machine's time. So that nothing depends on who is faster, its answers come
// down the line at a certain virtual time, by the thread of the driver, which goes on looking for them when
// all of them are there.
void SerialTalk::perform(std::string const& command, std::function<std::string()> const& operation) {
    constexpr std::size_t lineEnd = 2;
    _written += command.size() + lineEnd;
    unsigned const number = ++_operation;
    std::uint64_t const start = _clock.getNanoseconds();
    callAt(start + 1, number, [this, start, number] {
        _controller.waitForCharacters(_written);
        awaitSent();
        // The answer was ordered either before the driver's first pause or in it.
        callAt(start + answerNanoseconds, number, [this] { awaitSent(); });
        callAt(start + pauseNanoseconds + answerNanoseconds, number, [this] { awaitSent(); });
        callAt(start + severalLooksNanoseconds, number,
               [this] { _clock.advanceNanoseconds(enoughNanoseconds); });
    });
    _results += operation() + '\n';
    ++_operation;
    _longest = std::max(_longest, _clock.getNanoseconds() - start);
    _controller.waitForCharacters(_written);
}

void SerialTalk::callAt(std::uint64_t nanoseconds, unsigned operation, std::function<void()> const& action) {
    _clock.callAt(nanoseconds, [this, operation, action] {
        if (_operation == operation) {
            action();
        }
    });
}

// A driver that pauses has read all that there was.
void SerialTalk::awaitSent() {
    std::size_t const sent = _controller.getSent().size();
    _controller.getTerminal().waitUntilReadable(sent - _sentBefore);
    _sentBefore = sent;
}

std::uint64_t SerialTalk::getLongestNanoseconds() const {
    return _longest;
}

} // namespace fault_test
