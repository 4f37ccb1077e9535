#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "simulation/88e6096/Atu.hpp"
#include "simulation/88e6096/Snapshot.hpp"
#include "simulation/88e6096/Vtu.hpp"
#include "simulation/network/Decision.hpp"

namespace simulation::marvell {

/// One frame's way through the chip: a function for each rule, asked by their numbers until one ends the
/// way. Nothing changes by it; what the frame would leave behind in tables and counters is noted.
///
/// Not modelled, and without a part in the decision: monitors, ARP mirror, IGMP snooping, priorities and
/// queues, rates, PreventLoops, cross-chip tables, entries of the ATU for management, and the violations that
/// the chip notes of senders that a locked port does not know or that are known elsewhere.
class Passage {
public:
    /// What the MAC makes of a frame.
    enum class Reception { none, good, pause, undersize, fragment, oversize, jabber, badFcs };

    struct Learning {
        unsigned fid;
        EthernetFrame::Address address;
        /// The data register of the entry without its state.
        std::uint32_t ports;
    };

    /// All must outlive the object.
    /// \param decision is made by run(), all but whether the source was learnt.
    Passage(Snapshot const& snapshot, Vtu const& vtu, Atu const& atu, Marvell88E6096Options const& options,
            unsigned ingress, EthernetFrame const& frame, Decision& decision);

    /// Once.
    /// \param among the ports that the destination may lie behind.
    void run(std::uint32_t among);

    Reception getReception() const { return _reception; }
    bool isFilteredAtIngress() const { return _isFilteredAtIngress; }
    /// Ports whose OutFiltered counts the frame, bit n for port n.
    std::uint32_t getFilteredAtEgress() const { return _filteredAtEgress; }
    std::optional<Vtu::Violation> const& getViolation() const { return _violation; }
    std::optional<Learning> const& getLearning() const { return _learning; }

private:
    /// \name The rules M1 to M14: whether the frame goes on
    /// @{
    bool link();
    bool mac();
    bool portState();
    bool frameMode();
    bool tag();
    bool management();
    bool vlan();
    bool database();
    bool learn();
    bool vlanState();
    bool destination();
    bool masks();
    bool egress();
    bool form();
    /// @}

    Reception receive() const;
    bool hitVlan();
    bool missVlan();
    std::uint32_t flood() const;
    bool limit(std::uint32_t ports, char const* what);
    std::uint32_t membersOf(std::uint32_t ports) const;
    unsigned trunkHash() const;
    unsigned stateOf(unsigned port) const;
    unsigned egressStateOf(unsigned port) const;
    Decision::Form formAt(unsigned port) const;
    void send(unsigned port, Decision::Form form);

    bool drop(std::string reason);
    bool refuse(std::string reason);

    Snapshot const& _snapshot;
    Vtu const& _vtu;
    Atu const& _atu;
    Marvell88E6096Options const& _options;
    unsigned const _ingress;
    PortSettings const& _settings;
    EthernetFrame const& _frame;
    EthernetFrame::Address const _destination;
    EthernetFrame::Address const _source;
    std::optional<EthernetFrame::Tag> const _tag;
    EthernetFrame::DestinationClass const _class;

    std::optional<unsigned> _tagVid;
    Vtu::VtuEntry const* _entry = nullptr;
    Vtu::StuEntry const* _states = nullptr;
    unsigned _fid = 0;
    /// Of the port that it came in by, in its VLAN.
    unsigned _state = 0;
    bool _isHit = false;
    bool _isStaticUnicast = false;
    std::uint32_t _ports = 0;
    std::uint32_t _among = 0;
    /// For all ports that send it with a tag.
    std::optional<EthernetFrame> _tagged;

    Decision& _decision;
    Reception _reception = Reception::none;
    bool _isFilteredAtIngress = false;
    std::uint32_t _filteredAtEgress = 0;
    std::optional<Vtu::Violation> _violation;
    std::optional<Learning> _learning;
};

} // namespace simulation::marvell
