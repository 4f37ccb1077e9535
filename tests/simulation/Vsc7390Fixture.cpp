#include "tests/simulation/Vsc7390Fixture.hpp"

#include <sstream>

#include "reference_host/XmlDocument.hpp"
#include "simulation/WindowRegistry.hpp"

using reference_host::XmlDocument;
using simulation::SimulatedBoard;

namespace simulation_test {

namespace {

constexpr unsigned windowAddress = 0xF3000000;
constexpr unsigned windowSize = 16 * 1024 * 1024;
constexpr std::uint64_t twoSeconds = 2'000'000'000;

/// Two seconds of polls are millions; after some, it is only waiting.
constexpr unsigned pollsWithoutPause = 100;
constexpr std::uint64_t pause = 1'000'000;

constexpr char const* videoBoard =
    "<board><switches><switch id=\"2\" switchModel=\"vsc7390\"/></switches></board>";

} // namespace

Vsc7390Fixture::Vsc7390Fixture() {
    rebuild(Options());
}

void Vsc7390Fixture::rebuild(Options const& options) {
    auto const xml = XmlDocument::fromText(videoBoard, "board");
    SimulatedBoard::Options boardOptions;
    boardOptions.vitesse = options;
    _board = std::make_unique<SimulatedBoard>(*xml, boardOptions);
    simulation::SimulatedWindow const* const window = _board->window(windowAddress, windowSize);
    ASSERT_NE(window, nullptr);
    _bus = simulation::WindowRegistry::getInstance().find(window->getBaseAddress());
    ASSERT_NE(_bus, nullptr);
}

unsigned Vsc7390Fixture::busRead(unsigned offset) {
    unsigned value = 0;
    EXPECT_TRUE(_bus->read(offset, value));
    return value;
}

void Vsc7390Fixture::busWrite(unsigned offset, unsigned value) {
    EXPECT_TRUE(_bus->write(offset, value));
}

bool Vsc7390Fixture::tryBusRead(unsigned offset, unsigned& value) {
    return _bus->read(offset, value);
}

bool Vsc7390Fixture::tryBusWrite(unsigned offset, unsigned value) {
    return _bus->write(offset, value);
}

unsigned Vsc7390Fixture::offsetOf(unsigned block, unsigned subBlock, unsigned address) {
    return block << 14 | subBlock << 10 | address << 2;
}

unsigned Vsc7390Fixture::read(unsigned block, unsigned subBlock, unsigned address) {
    unsigned const first = busRead(offsetOf(block, subBlock, address));
    if (block == capture || block == system) {
        return first;
    }
    EXPECT_TRUE(becomesReady());
    return busRead(indirectData);
}

void Vsc7390Fixture::write(unsigned block, unsigned subBlock, unsigned address, unsigned value) {
    busWrite(offsetOf(block, subBlock, address), value);
}

unsigned Vsc7390Fixture::readPort(unsigned port, unsigned address) {
    return port < 16 ? read(lowPorts, port, address) : read(highPorts, port - 16, address);
}

void Vsc7390Fixture::writePort(unsigned port, unsigned address, unsigned value) {
    if (port < 16) {
        write(lowPorts, port, address, value);
    } else {
        write(highPorts, port - 16, address, value);
    }
}

bool Vsc7390Fixture::becomesReady() {
    std::uint64_t const start = _board->getClock().getNanoseconds();
    unsigned polls = 0;
    do {
        if ((busRead(indirectStatus) & 0x10) != 0) {
            return true;
        }
        if (++polls > pollsWithoutPause) {
            advance(pause);
        }
    } while (_board->getClock().getNanoseconds() - start < twoSeconds);
    return false;
}

unsigned Vsc7390Fixture::readVlan(unsigned vid) {
    writeAnalyser(0xE0, vid);
    writeAnalyser(0xD0, 1);
    EXPECT_TRUE(vlanTableIdles());
    return readAnalyser(0xD0);
}

void Vsc7390Fixture::writeVlan(unsigned vid, unsigned word) {
    writeAnalyser(0xE0, vid);
    writeAnalyser(0xD0, word | 2);
    EXPECT_TRUE(vlanTableIdles());
}

void Vsc7390Fixture::clearVlans() {
    writeAnalyser(0xD0, 3);
    EXPECT_TRUE(vlanTableIdles());
}

bool Vsc7390Fixture::vlanTableIdles() {
    std::uint64_t const start = _board->getClock().getNanoseconds();
    do {
        if ((readAnalyser(0xD0) & 3) == 0) {
            return true;
        }
    } while (_board->getClock().getNanoseconds() - start < twoSeconds);
    return false;
}

unsigned Vsc7390Fixture::readMac(unsigned index) {
    writeAnalyser(0xC0, index);
    writeAnalyser(0xB0, 6);
    return readAnalyser(0xB0);
}

void Vsc7390Fixture::writeMac(unsigned index, unsigned high, unsigned low, unsigned word) {
    writeAnalyser(0xC0, index);
    commandMac(word, high, low);
}

void Vsc7390Fixture::commandMac(unsigned word, unsigned high, unsigned low) {
    writeAnalyser(0x06, high);
    writeAnalyser(0x07, low);
    writeAnalyser(0xB0, word);
}

void Vsc7390Fixture::advance(std::uint64_t nanoseconds) {
    _board->getClock().advanceNanoseconds(nanoseconds);
}

simulation::Vsc7390TestSide& Vsc7390Fixture::chip() {
    return _board->getVitesse(id);
}

simulation::AccessLog& Vsc7390Fixture::log() {
    return _board->getLog();
}

simulation::MisuseReport& Vsc7390Fixture::misuse() {
    return _board->getMisuse();
}

std::string Vsc7390Fixture::misuseText() {
    std::ostringstream text;
    misuse().print(text);
    return text.str();
}

std::string Vsc7390Fixture::logText() {
    std::ostringstream text;
    log().print(text);
    return text.str();
}

} // namespace simulation_test
