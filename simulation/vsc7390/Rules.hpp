#pragma once

#include <cstdint>
#include <string>

#include "simulation/vsc7390/Passage.hpp"

namespace simulation::vitesse {

/// The twelve rules by which the chip forwards frames, V1 to V12, a function each. They only look: what a
/// frame changes is noted in its passage.
class Rules {
public:
    /// All must outlive the object.
    Rules(Context const& context, Snapshot const& snapshot, Analyser const& analyser);

    /// Takes a frame through all rules until one ends its way.
    void apply(Passage& passage) const;

    /// Where masks and tables lead frames to which port `ingress` got: rules V6, V7, V9 and V10 alone.
    std::uint32_t getEgressPorts(unsigned ingress, std::uint64_t destination, std::uint64_t source,
                                 unsigned vid) const;

private:
    /// \name The rules; each returns whether the frame goes on
    /// @{
    bool meetReceiver(Passage& passage) const;
    bool meetLengthAndFcs(Passage& passage) const;
    bool meetReservedAddresses(Passage& passage) const;
    bool meetClassifierDrops(Passage& passage) const;
    bool classify(Passage& passage) const;
    bool meetReceiveMask(Passage& passage) const;
    bool meetIngressCheck(Passage& passage) const;
    bool learn(Passage& passage) const;
    bool findDestination(Passage& passage) const;
    bool meetMasks(Passage& passage) const;
    bool meetSenders(Passage& passage) const;
    bool giveForms(Passage& passage) const;
    /// @}

    bool isToLearn(Passage const& passage) const;
    void followEntry(Passage& passage, MacEntry const& entry) const;
    unsigned floodRegister(EthernetFrame::DestinationClass destination) const;
    unsigned aggregationCode(EthernetFrame const& frame) const;
    bool hasPort(unsigned maskRegister, unsigned port) const;
    static bool refuse(Passage& passage, std::string reason);

    Context const& _context;
    Snapshot const& _snapshot;
    Analyser const& _analyser;
};

} // namespace simulation::vitesse
