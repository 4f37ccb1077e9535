#include "simulation/SerialControllerChip.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation {

namespace {

using namespace vitesse;

constexpr std::uint64_t pauseNanoseconds = 1'000;
constexpr unsigned longestWait = 100'000;

unsigned offsetOf(unsigned block, unsigned subBlock, unsigned address) {
    return window::block.placed(block) | window::subBlock.placed(subBlock) | window::address.placed(address);
}

} // namespace

SerialControllerChip::SerialControllerChip(BusDevice& window, VirtualClock& clock)
    : _window(window), _clock(clock) {}

std::optional<std::uint32_t> SerialControllerChip::readRegister(unsigned block, unsigned subBlock,
                                                                unsigned address) {
    std::optional<std::uint32_t> const first = readBus(block, subBlock, address);
    if (!first || block == block::capture || block == block::system) {
        return first;
    }
    auto const isReady = [this] {
        return system::dataReady.isSet(readBus(block::system, 0, system::indirectStatus).value_or(0));
    };
    return waitUntil(isReady) ? readBus(block::system, 0, system::indirectData) : std::nullopt;
}

bool SerialControllerChip::writeRegister(unsigned block, unsigned subBlock, unsigned address,
                                         std::uint32_t value) {
    return _window.write(offsetOf(block, subBlock, address), value);
}

std::optional<std::uint16_t> SerialControllerChip::readPhy(unsigned phy, unsigned address) {
    std::uint32_t const command = mii::read.getMask() | mii::phy.placed(phy) | mii::address.placed(address);
    if (!startMii(command) || !waitUntil([this] { return isMiiIdle(); })) {
        return std::nullopt;
    }
    std::optional<std::uint32_t> const data =
        readRegister(block::memoryAndMii, mii::controllerOfPhys, mii::data);
    return data ? std::optional<std::uint16_t>(mii::value.get(*data)) : std::nullopt;
}

bool SerialControllerChip::writePhy(unsigned phy, unsigned address, std::uint16_t value) {
    return startMii(mii::phy.placed(phy) | mii::address.placed(address) | mii::value.placed(value));
}

std::optional<std::uint32_t> SerialControllerChip::readBus(unsigned block, unsigned subBlock,
                                                           unsigned address) {
    unsigned value = 0;
    return _window.read(offsetOf(block, subBlock, address), value) ? std::optional<std::uint32_t>(value)
                                                                   : std::nullopt;
}

template <typename Condition> bool SerialControllerChip::waitUntil(Condition condition) {
    for (unsigned waits = 0; !condition(); ++waits) {
        if (waits == longestWait) {
            return false;
        }
        _clock.advanceNanoseconds(pauseNanoseconds);
    }
    return true;
}

bool SerialControllerChip::isMiiIdle() {
    std::optional<std::uint32_t> const status =
        readRegister(block::memoryAndMii, mii::controllerOfPhys, mii::status);
    return status && !mii::busy.isSet(*status);
}

bool SerialControllerChip::startMii(std::uint32_t command) {
    return waitUntil([this] { return isMiiIdle(); }) &&
           writeRegister(block::memoryAndMii, mii::controllerOfPhys, mii::command, command);
}

} // namespace simulation
