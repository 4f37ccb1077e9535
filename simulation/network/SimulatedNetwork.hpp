#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "simulation/ChipTestSide.hpp"
#include "simulation/VirtualClock.hpp"
#include "simulation/network/ChipForwarding.hpp"
#include "simulation/network/Decision.hpp"
#include "simulation/network/EthernetFrame.hpp"

namespace simulation {

class SimulatedBoard;

/// Frames on their way through the chips of a board, over cables between ports and to stations at ports.
///
/// Frames travel in virtual time: a chip forwards one chipNanoseconds after its last byte, a port sends one
/// after the other, and each takes its bytes, preamble and gap at the speed of the port. Queues have no end;
/// nothing is lost for lack of buffers. run() moves the board's clock along; where register accesses have
/// moved it further meanwhile, frames that are late are next.
///
/// Any thread may call, beside threads that access registers; the network's own mutex is never held while a
/// chip, a station or an observer is called.
class SimulatedNetwork final {
public:
    /// A port of a chip.
    struct End {
        unsigned switchId;
        unsigned port;

        bool operator==(End const& other) const { return switchId == other.switchId && port == other.port; }
        bool operator<(End const& other) const {
            return std::pair(switchId, port) < std::pair(other.switchId, other.port);
        }
        /// For example "0.10".
        std::string describe() const;
    };

    /// Gets a frame that has left a port, at the clock's time. May call everything but run().
    using Station = std::function<void(EthernetFrame const& frame)>;

    /// Sees each frame that a chip has got, and what the chip made of it. May call everything but run().
    using Observer = std::function<void(End const& at, EthernetFrame const& frame, Decision const& decision)>;

    /// What became of all frames so far. A frame that is injected or crosses a cable enters a chip, which
    /// sends copies of it, drops it, or keeps it. When none is under way,
    /// copies = crossed + delivered + unconnected + cut + stopped.
    struct Totals {
        /// Frames that came from outside.
        std::uint64_t injected = 0;
        /// Copies that chips have sent.
        std::uint64_t copies = 0;
        /// Frames that a chip sent nowhere, by its rules or since its model does not forward.
        std::uint64_t dropped = 0;
        /// Frames that a chip gave its own processor interface, whether it sent copies or not.
        std::uint64_t toProcessor = 0;
        /// Copies that have entered the chip at a cable's other end.
        std::uint64_t crossed = 0;
        /// Copies that stations have got.
        std::uint64_t delivered = 0;
        /// Copies sent where nobody is connected, or by a port without speed.
        std::uint64_t unconnected = 0;
        /// Copies that were on a cable when it was unplugged.
        std::uint64_t cut = 0;
        /// Copies that the guard against storms has taken away.
        std::uint64_t stopped = 0;
    };

    using Chips = std::map<unsigned, ChipTestSide*>;

    /// From the last byte in to the first byte out.
    static constexpr std::uint64_t chipNanoseconds = 2000;
    /// Preamble, start delimiter and gap (IEEE 802.3, 4.4.2).
    static constexpr std::size_t overheadLength = 20;
    /// So many copies of one injected frame a port may get, or send to its station.
    static constexpr unsigned mostCopies = 64;

    /// All chips of the board, which must outlive the network.
    explicit SimulatedNetwork(SimulatedBoard& board);
    /// Chips by id; they and the clock must outlive the network.
    SimulatedNetwork(VirtualClock& clock, Chips chips);
    SimulatedNetwork(SimulatedNetwork const&) = delete;
    SimulatedNetwork& operator=(SimulatedNetwork const&) = delete;

    /// \name What is plugged into ports. The link of the ports comes and goes with it
    /// \throws std::out_of_range when the board has no such switch or the switch no such port.
    /// @{

    /// A cable between two ports.
    /// \param megabits 10, 100 or 1000: what the ports agree on.
    /// \throws std::invalid_argument when something is plugged in at an end, or both ends are the same.
    void connect(End const& one, End const& other, unsigned megabits = 1000);

    /// A station at the end of a cable.
    /// \throws std::invalid_argument when something is plugged in already.
    void attach(End const& end, Station station, unsigned megabits = 100);

    /// Pulls what is plugged in at a port, at both ends of a cable. What is on it is lost.
    /// \return false when there was nothing.
    bool unplug(End const& end);
    /// @}

    /// A port gets a frame from outside, its last byte now. It is on its way when run() is called.
    /// \throws std::out_of_range when the board has no such switch or the switch no such port.
    void inject(End const& at, EthernetFrame frame);

    /// Carries frames, those that stations inject meanwhile included, until none is under way. One thread
    /// does; others wait until it has ended, and hold no lock that frames need meanwhile.
    void run();

    /// Null for nobody.
    void observe(Observer observer);

    Totals getTotals() const;

    /// What is wrong with the network, one line each, once, in the order in which it showed: storms with
    /// the ports of their cycle, chips and modes of ports whose forwarding is not modelled.
    std::vector<std::string> getFindings() const;

private:
    struct Socket {
        // Tells what is plugged in from what was here before.
        unsigned cable;
        // One of these.
        std::optional<End> other;
        std::shared_ptr<Station const> station;
    };

    // A frame from outside, for all its copies.
    struct Injection {
        std::map<End, unsigned> copies;
        bool isStopped = false;
    };

    // How a copy came here: the last cable, and the way to it.
    struct Way {
        End from;
        End to;
        std::shared_ptr<Way const> before;
    };

    struct Copy {
        std::shared_ptr<Injection> injection;
        EthernetFrame frame;
        // The port of a chip that it enters or, on the way to a station, has left.
        End at;
        std::shared_ptr<Way const> way;
        // That it is on; none for a frame from outside.
        std::optional<unsigned> cable;
    };

    ChipTestSide& getChip(End const& end) const;
    void occupy(End const& end, Socket const& socket);
    std::optional<std::pair<std::uint64_t, Copy>> takeNext();
    void carry(std::uint64_t time, Copy const& copy);
    bool arrives(Copy const& copy);
    bool isStopped(Copy const& copy);
    void enterChip(std::uint64_t time, Copy const& copy);
    void send(std::uint64_t time, Copy const& origin, Decision::Egress const& egress, unsigned megabits);
    void report(std::string const& finding);

    VirtualClock& _clock;
    Chips const _chips;
    std::mutex _running;
    // Of the frame that has just entered a chip; of who runs.
    Decision _decision;
    mutable std::mutex _mutex;
    std::map<End, Socket> _sockets;
    unsigned _cables = 0;
    std::map<End, std::uint64_t> _sendingUntil;
    // By time; those of the same time in the order of their making.
    std::multimap<std::uint64_t, Copy> _underWay;
    std::shared_ptr<Observer const> _observer;
    Totals _totals;
    std::vector<std::string> _findings;
};

} // namespace simulation
