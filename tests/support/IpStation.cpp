#include "tests/support/IpStation.hpp"

#include <algorithm>

namespace test_support {

namespace {

using Bytes = simulation::EthernetFrame::Bytes;

constexpr unsigned arpType = 0x0806;
constexpr unsigned ipType = 0x0800;
constexpr std::size_t ethernetHeader = 14;

constexpr std::size_t arpLength = 28;
constexpr std::uint64_t arpOfIpOnEthernet = 0x000108000604;
constexpr std::uint16_t arpRequest = 1;
constexpr std::uint16_t arpReply = 2;

constexpr std::size_t ipHeader = 20;
constexpr unsigned ipVersionAndLength = 0x45;
constexpr std::uint8_t hops = 64;
constexpr std::uint8_t icmp = 1;
constexpr std::size_t ipChecksumAt = 10;

constexpr std::size_t icmpHeader = 8;
constexpr std::uint8_t echoReply = 0;
constexpr std::uint8_t echoRequest = 8;
constexpr std::size_t icmpChecksumAt = 2;
constexpr std::size_t sequenceAt = 6;
constexpr std::uint16_t identifier = 0x1D00;

void append(Bytes& bytes, std::uint64_t value, unsigned length) {
    while (length-- > 0) {
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * length));
    }
}

std::uint64_t numberAt(Bytes const& bytes, std::size_t offset, std::size_t length) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < length; ++i) {
        value = value << 8 | bytes.at(offset + i);
    }
    return value;
}

void place(Bytes& bytes, std::size_t offset, std::uint16_t value) {
    bytes.at(offset) = static_cast<std::uint8_t>(value >> 8);
    bytes.at(offset + 1) = static_cast<std::uint8_t>(value);
}

Bytes part(Bytes const& bytes, std::size_t from, std::size_t to) {
    return {bytes.begin() + static_cast<std::ptrdiff_t>(from),
            bytes.begin() + static_cast<std::ptrdiff_t>(to)};
}

} // namespace

void IpStation::receive(Frame const& frame) {
    bool const isMine = frame.getDestination() == _mac || frame.getDestination() == Frame::broadcastAddress;
    Bytes const packet =
        part(frame.getBytes(), std::min(ethernetHeader, frame.getBytes().size()), frame.getBytes().size());
    if (!isMine || frame.getTag()) {
        return;
    }
    if (frame.getEtherType() == arpType && packet.size() >= arpLength) {
        receiveArp(packet);
    } else if (frame.getEtherType() == ipType) {
        receiveIp(packet);
    }
}

// Sender's addresses are at 8 and 14, the target's at 18 and 24.
void IpStation::receiveArp(Bytes const& packet) {
    auto const targetIp = static_cast<IpAddress>(numberAt(packet, 24, 4));
    if (numberAt(packet, 0, 6) != arpOfIpOnEthernet || targetIp != _ip) {
        return;
    }
    Frame::Address const sender = numberAt(packet, 8, 6);
    auto const senderIp = static_cast<IpAddress>(numberAt(packet, 14, 4));
    _neighbours[senderIp] = sender;
    if (numberAt(packet, 6, 2) == arpRequest) {
        sendArp(sender, arpReply, sender, senderIp);
    }
    for (Echo const& echo : std::exchange(_waiting, {})) {
        ping(echo.destination, echo.sequence);
    }
}

void IpStation::receiveIp(Bytes const& packet) {
    std::size_t const length = packet.size() < ipHeader ? 0 : numberAt(packet, 2, 2);
    bool const isWhole = length >= ipHeader + icmpHeader && length <= packet.size() &&
                         packet[0] == ipVersionAndLength && checksum(part(packet, 0, ipHeader)) == 0;
    if (!isWhole) {
        ++_damaged;
    } else if (packet[9] == icmp && numberAt(packet, 16, 4) == _ip) {
        receiveIcmp(static_cast<IpAddress>(numberAt(packet, 12, 4)), part(packet, ipHeader, length));
    }
}

void IpStation::receiveIcmp(IpAddress from, Bytes message) {
    if (checksum(message) != 0) {
        ++_damaged;
    } else if (message[0] == echoRequest) {
        message[0] = echoReply;
        sendIcmp(from, std::move(message));
    } else if (message[0] == echoReply && numberAt(message, 4, 2) == identifier) {
        _answered.push_back(static_cast<unsigned>(numberAt(message, sequenceAt, 2)));
    }
}

void IpStation::ping(IpAddress destination, std::uint16_t sequence) {
    if (_neighbours.count(destination) != 0) {
        return sendEcho({destination, sequence});
    }
    _waiting.push_back({destination, sequence});
    sendArp(Frame::broadcastAddress, arpRequest, 0, destination);
}

void IpStation::sendArp(Frame::Address to, std::uint16_t operation, Frame::Address target,
                        IpAddress targetIp) {
    Bytes packet;
    append(packet, arpOfIpOnEthernet, 6);
    append(packet, operation, 2);
    append(packet, _mac, 6);
    append(packet, _ip, 4);
    append(packet, target, 6);
    append(packet, targetIp, 4);
    _send(Frame::make(to, _mac, arpType, packet));
}

void IpStation::sendEcho(Echo const& echo) {
    Bytes message{echoRequest, 0, 0, 0};
    append(message, identifier, 2);
    append(message, echo.sequence, 2);
    for (std::size_t i = 0; i < dataLength; ++i) {
        message.push_back(static_cast<std::uint8_t>('a' + i % 26));
    }
    sendIcmp(echo.destination, std::move(message));
}

// To a neighbour; a request has come from one.
void IpStation::sendIcmp(IpAddress to, Bytes message) {
    auto const neighbour = _neighbours.find(to);
    if (neighbour == _neighbours.end()) {
        return;
    }
    place(message, icmpChecksumAt, 0);
    place(message, icmpChecksumAt, checksum(message));
    Bytes packet{ipVersionAndLength, 0};
    append(packet, ipHeader + message.size(), 2);
    append(packet, 0, 4);
    packet.insert(packet.end(), {hops, icmp, 0, 0});
    append(packet, _ip, 4);
    append(packet, to, 4);
    place(packet, ipChecksumAt, checksum(packet));
    packet.insert(packet.end(), message.begin(), message.end());
    _send(Frame::make(neighbour->second, _mac, ipType, packet));
}

std::uint16_t IpStation::checksum(Bytes const& bytes) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        sum += static_cast<std::uint32_t>(bytes[i]) << (i % 2 == 0 ? 8 : 0);
    }
    while (sum >> 16 != 0) {
        sum = (sum & 0xFFFF) + (sum >> 16);
    }
    return static_cast<std::uint16_t>(~sum);
}

} // namespace test_support
