#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>

#include "simulation/network/EthernetFrame.hpp"
#include "simulation/vsc7390/Analyser.hpp"
#include "simulation/vsc7390/Phy.hpp"
#include "simulation/vsc7390/Port.hpp"

namespace simulation::vitesse {

/// What the registers say about frames, decoded. It follows each register that changes, one at a time, so
/// that no frame has to look for registers. The board's mutex guards it.
class Snapshot {
public:
    struct PortSettings {
        bool receives = false;
        bool sends = false;
        /// 10, 100 or 1000; 0 while the clock is another one.
        unsigned megabits = 0;
        unsigned maximumLength = 0;
        /// Room for one tag, for two.
        bool expectsTag = false;
        bool expectsTwoTags = false;

        /// \name What the classifier does with frames that come in
        /// @{
        bool dropsGroupSource = false;
        bool dropsNullAddress = false;
        bool dropsTagged = false;
        bool dropsUntagged = false;
        bool forwardsControl = false;
        bool forwardsPause = false;
        bool ignoresTag = false;
        bool keepsTag = false;
        /// VLAN and priority of frames that bring none.
        EthernetFrame::Tag tag;
        /// @}

        /// \name Frames that go out
        /// @{
        bool insertsTag = false;
        /// The VLAN whose frames get no tag nevertheless.
        std::optional<unsigned> untaggedVid;
        bool rewrites = false;
        /// @}
    };

    /// Listens to the units from now on; they and `context` must outlive it.
    Snapshot(Context const& context, Analyser& analyser, std::deque<Port>& portUnits,
             std::deque<Phy>& phyUnits);
    Snapshot(Snapshot const&) = delete;
    Snapshot& operator=(Snapshot const&) = delete;

    /// Reads everything anew.
    void refresh();
    /// Reads a port anew, after what no register shows has changed.
    void refreshPort(unsigned number);

    /// The processor's port has the settings of a port that is off.
    PortSettings const& getPort(unsigned number) const { return _settings[number]; }
    /// The ports that send, bit n for port n.
    std::uint32_t getSenders() const { return _senders; }
    /// A register of the analyser.
    std::uint32_t getWord(unsigned address) const { return _words[address]; }

private:
    static constexpr unsigned numberOfWords = 256;

    bool hasLink(Phy const& phy) const;

    Context const& _context;
    Analyser& _analyser;
    std::deque<Port>& _ports;
    std::deque<Phy>& _phys;
    std::array<PortSettings, Vsc7390TestSide::cpuPort + 1> _settings;
    std::uint32_t _senders = 0;
    std::array<std::uint32_t, numberOfWords> _words{};
};

} // namespace simulation::vitesse
