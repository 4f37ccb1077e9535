#pragma once

#include <cstdint>
#include <mutex>

#include "simulation/Services.hpp"
#include "simulation/network/Decision.hpp"
#include "simulation/network/EthernetFrame.hpp"

namespace simulation {

/// How a chip forwards frames, by what its registers and tables hold at the moment.
///
/// Any thread may call; a caller need hold no lock. Each operation takes the board's mutex,
/// `Services::mutex`, so that a frame is one step beside bus accesses and other frames. A caller that
/// wants several operations to be one step may hold that mutex; it is recursive.
///
/// What a chip's registers say is taken from a snapshot, not read anew for each frame. It belongs to the
/// same mutex, and whatever changes registers or tables (see RegisterFile::onChange) marks it stale while
/// it holds that mutex. The next operation rebuilds the parts that are stale.
class ChipForwarding {
public:
    virtual ~ChipForwarding() = default;
    ChipForwarding(ChipForwarding const&) = delete;
    ChipForwarding& operator=(ChipForwarding const&) = delete;

    virtual unsigned getNumberOfPorts() const = 0;

    /// A port gets a frame: decides and acts. The chip learns, counts at the ports that the frame enters
    /// and leaves, and notes violations. Sending the copies is the caller's part.
    /// \throws std::out_of_range when there is no such port.
    Decision receive(unsigned port, EthernetFrame const& frame);

    /// The same into a decision that is there, whose room is used again: for who has many frames.
    void receive(unsigned port, EthernetFrame const& frame, Decision& decision);

    /// What receive() would decide now. Nothing changes but the snapshot.
    /// \throws std::out_of_range when there is no such port.
    Decision decide(unsigned port, EthernetFrame const& frame) const {
        return decide(port, frame, everyPort);
    }

    /// The same if the destination lay behind none but some ports, so that rule and reason are about these.
    /// \param among bit n for port n. Whatever else the frame would go to is left out, the processor, too.
    Decision decide(unsigned port, EthernetFrame const& frame, std::uint32_t among) const;

    /// Whether the port can get or send frames as far as link and MAC are concerned.
    /// \throws std::out_of_range when there is no such port.
    bool hasLink(unsigned port) const;

    /// Speed at which the port sends: 10, 100 or 1000; 0 when it has none.
    /// \throws std::out_of_range when there is no such port.
    unsigned getMegabits(unsigned port) const;

protected:
    static constexpr std::uint32_t everyPort = ~0U;

    /// `services` must outlive the object.
    explicit ChipForwarding(Services& services) : _services(services) {}

private:
    /// \name The same for a port that there is and an empty decision, with the board's mutex held
    /// @{
    virtual void doReceive(unsigned port, EthernetFrame const& frame, Decision& decision) = 0;
    virtual void doDecide(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                          Decision& decision) const = 0;
    virtual bool doHasLink(unsigned port) const = 0;
    virtual unsigned doGetMegabits(unsigned port) const = 0;
    /// @}

    std::unique_lock<std::recursive_mutex> lockFor(unsigned port) const;

    Services& _services;
};

} // namespace simulation
