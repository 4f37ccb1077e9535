#pragma once

#include <array>
#include <deque>
#include <vector>

#include "simulation/network/ChipForwarding.hpp"
#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Rules.hpp"
#include "simulation/vsc7390/Snapshot.hpp"

namespace simulation::vitesse {

/// How a VSC7390 forwards frames: by its rules, from what its registers and tables hold.
///
/// Not modelled: copies for mirrors and for the processor beyond that there is one, and changed priorities,
/// all of which are refused; queues, so that nothing waits, pauses or is thrown away by the arbiter; limits
/// for storms; ageing, which the chip does on command only.
class Forwarding final : public ChipForwarding {
public:
    /// A counter that no frame moves.
    struct StillCounter {
        unsigned counter;
        char const* reason;
    };
    static constexpr std::array<StillCounter, 4> stillCounters = {{
        {port::class3In, "every frame is of QoS class 0"},
        {port::class3Out, "every frame is of QoS class 0"},
        {port::errorsOut, "no bad frame gets as far as a sender"},
        {port::dropsOut, "no queue is ever full"},
    }};

    /// All must outlive the object.
    Forwarding(Context const& context, Analyser& analyser, std::deque<Port>& portUnits,
               std::deque<Phy>& phyUnits);

    unsigned getNumberOfPorts() const override { return Vsc7390TestSide::numberOfPorts; }

    /// \name With the board's mutex held
    /// @{
    Snapshot& getSnapshot() { return _snapshot; }
    Rules const& getRules() const { return _rules; }
    /// @}

private:
    void doReceive(unsigned port, EthernetFrame const& frame, Decision& decision) override;
    void doDecide(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                  Decision& decision) const override;
    bool doHasLink(unsigned port) const override;
    unsigned doGetMegabits(unsigned port) const override;

    Passage pass(unsigned port, EthernetFrame const& frame, std::uint32_t among, Decision& decision) const;
    bool learn(Passage const& passage);
    void countIn(Passage const& passage);
    void countOut(Decision::Egress const& copy);

    Analyser& _analyser;
    /// By number.
    std::vector<Port*> _ports;
    Snapshot _snapshot;
    Rules _rules;
};

} // namespace simulation::vitesse
