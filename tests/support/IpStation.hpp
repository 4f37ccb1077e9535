#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "simulation/network/EthernetFrame.hpp"

namespace test_support {

/// A station with an IPv4 address on an Ethernet: asks for and answers with addresses (RFC 826), sends and
/// answers echoes (RFC 792). Its frames have no tags. What it gets damaged it does not take.
class IpStation {
public:
    using Frame = simulation::EthernetFrame;
    /// The first byte highest.
    using IpAddress = std::uint32_t;
    using Send = std::function<void(Frame const& frame)>;

    static constexpr std::size_t dataLength = 32;

    IpStation(Frame::Address mac, IpAddress ip, Send send) : _mac(mac), _ip(ip), _send(std::move(send)) {}

    /// A frame has come.
    void receive(Frame const& frame);

    /// Sends an echo, which waits for the destination's address where that is not known yet.
    void ping(IpAddress destination, std::uint16_t sequence);

    /// Sequence numbers of the echoes that were answered, as they came.
    std::vector<unsigned> const& getAnswered() const { return _answered; }
    /// Frames for this station with a wrong checksum or length.
    unsigned getDamaged() const { return _damaged; }
    /// Addresses that were asked for or heard of.
    std::map<IpAddress, Frame::Address> const& getNeighbours() const { return _neighbours; }

private:
    using Bytes = Frame::Bytes;

    struct Echo {
        IpAddress destination;
        std::uint16_t sequence;
    };

    void receiveArp(Bytes const& packet);
    void receiveIp(Bytes const& packet);
    void receiveIcmp(IpAddress from, Bytes message);
    void sendArp(Frame::Address to, std::uint16_t operation, Frame::Address target, IpAddress targetIp);
    void sendEcho(Echo const& echo);
    void sendIcmp(IpAddress to, Bytes message);

    /// The Internet checksum (RFC 1071) of all of it; 0 over what includes its own.
    static std::uint16_t checksum(Bytes const& bytes);

    Frame::Address _mac;
    IpAddress _ip;
    Send _send;
    std::map<IpAddress, Frame::Address> _neighbours;
    std::vector<Echo> _waiting;
    std::vector<unsigned> _answered;
    unsigned _damaged = 0;
};

} // namespace test_support
