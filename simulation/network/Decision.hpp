#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulation/network/EthernetFrame.hpp"
#include "simulation/network/RuleNumbers.hpp"

namespace simulation {

/// What a chip makes of a frame that a port got, and why.
struct Decision {
    /// What happens to the tag at a port that sends.
    enum class Form {
        asReceived,
        /// Without the tag that it had, if it had one.
        untagged,
        /// With one tag of the frame's VLAN in place of the one that it had, if it had one.
        tagged,
        /// With a tag in front of what it had.
        tagAdded
    };

    struct Egress {
        unsigned port;
        Form form;
        /// As it leaves.
        EthernetFrame frame;
    };

    /// The VLAN that the frame belongs to; none when the chip never got so far as to ask.
    std::optional<unsigned> vid;

    /// The copies that leave, by ascending port; each port once.
    std::vector<Egress> egress;

    /// Whether the source's address was learnt, or seen again; of a look-ahead, whether it would be.
    bool learnt = false;

    /// A copy goes to the chip's own processor interface, which is not one of the ports.
    bool toProcessor = false;

    /// Numbers of the forwarding rules that had a say, in their order, for example "M7". The texts stay.
    RuleNumbers rules;

    /// Why no port gets the frame, in words, for example "VID 77 is not in the VTU, port 3 is secure". Empty
    /// exactly when a port gets it, or the processor.
    std::string dropReason;

    /// Why nobody can say what the chip does with the frame: a mode that the model does not have. The frame
    /// is then dropped. Empty in all other cases.
    std::string notModelled;

    /// Makes it one that says nothing yet. Room for copies and texts stays.
    void clear();

    bool isDropped() const { return egress.empty() && !toProcessor; }
    bool isRefused() const { return !notModelled.empty(); }

    /// The copy for a port; null when it gets none.
    Egress const* find(unsigned port) const;

    /// Ports that send, bit n for port n.
    std::uint32_t getPorts() const;

    /// One line for people, for example "VLAN 4: to 1 untagged, 10 tagged; learnt (M1 M2 M5 M7)" or
    /// "dropped: VID 77 is not in the VTU, port 3 is secure (M1 M2 M5 M7)".
    std::string describe() const;

    /// For example "as received".
    static char const* name(Form form);
};

} // namespace simulation
