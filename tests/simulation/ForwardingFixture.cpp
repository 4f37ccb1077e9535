#include "tests/simulation/ForwardingFixture.hpp"

#include <array>

namespace simulation_test {

namespace {

constexpr unsigned numberOfPorts = 11;

// Four ports to a register, `shift` bits up in the port's nibble.
std::array<unsigned, 3> packed(std::string const& codes, unsigned shift) {
    std::array<unsigned, 3> words{};
    for (unsigned port = 0; port < codes.size(); ++port) {
        words[port / 4] |= static_cast<unsigned>(codes[port] - '0') << (port % 4 * 4 + shift);
    }
    return words;
}

} // namespace

ForwardingFixture::ForwardingFixture() {
    restart();
}

void ForwardingFixture::restart(Options const& options) {
    rebuild(options);
    for (unsigned port = 0; port < numberOfPorts; ++port) {
        chip().plugLink(port);
    }
}

ForwardingFixture::Decision ForwardingFixture::receive(unsigned port, Frame const& frame) {
    return chip().getForwarding()->receive(port, frame);
}

ForwardingFixture::Decision ForwardingFixture::decide(unsigned port, Frame const& frame) {
    return chip().getForwarding()->decide(port, frame);
}

std::uint32_t ForwardingFixture::ports(unsigned port, Frame const& frame) {
    return decide(port, frame).getPorts();
}

std::string ForwardingFixture::lastRule(Decision const& decision) {
    return std::string(decision.rules.back());
}

void ForwardingFixture::change(unsigned port, unsigned reg, unsigned mask, unsigned bits) {
    write(port0 + port, reg, (read(port0 + port, reg) & ~mask) | bits);
}

void ForwardingFixture::addVlan(unsigned vid, std::string const& codes, unsigned sid) {
    auto const words = packed(codes, 0);
    loadVtu(vid, vid, sid, words[0], words[1], words[2]);
}

void ForwardingFixture::addStates(unsigned sid, std::string const& codes) {
    auto const words = packed(codes, 2);
    loadStu(sid, words[0], words[1], words[2]);
}

void ForwardingFixture::stageAddress(Frame::Address address) {
    write(global1, 0x0D, address >> 32 & 0xFFFF);
    write(global1, 0x0E, address >> 16 & 0xFFFF);
    write(global1, 0x0F, address & 0xFFFF);
}

void ForwardingFixture::addAddress(unsigned fid, Frame::Address address, unsigned data) {
    write(global1, 0x01, fid);
    stageAddress(address);
    write(global1, 0x0C, data);
    write(global1, 0x0B, 0xB000);
}

unsigned ForwardingFixture::addressData(unsigned fid, Frame::Address address) {
    write(global1, 0x01, fid);
    stageAddress(address - 1);
    write(global1, 0x0B, 0xC000);
    return read(global1, 0x0F) == (address & 0xFFFF) ? read(global1, 0x0C) : 0;
}

} // namespace simulation_test
