#pragma once

#include <map>
#include <vector>

#include "board/intent/FrameKind.hpp"
#include "simulation/ChipTestSide.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "simulation/network/Decision.hpp"
#include "simulation/network/EthernetFrame.hpp"

namespace board {

/// Where frames go by what the registers of chip models hold, one chip at a time.
class RegisterPaths {
public:
    /// Copies of one frame that leave with the same tags.
    struct Copies {
        FrameKind::Tags tags;
        PortSet ports = 0;
    };

    /// By switch; null for one whose model forwards nothing.
    using Chips = std::map<unsigned, simulation::ChipTestSide*>;

    /// All of a board, which must outlive them.
    static Chips chipsOf(simulation::SimulatedBoard& board);

    /// So many pairs of addresses that a trunk may spread.
    static constexpr unsigned flows = 16;

    /// Plugs in all links. The chips must outlive the object.
    explicit RegisterPaths(Chips const& chips);

    /// By switch, those that forward.
    std::map<unsigned, simulation::ChipForwarding*> const& getChips() const { return _chips; }

    /// One of the kind, from a station that nobody knows.
    /// \param flow 0 to flows - 1: which pair of addresses.
    static simulation::EthernetFrame frameOf(FrameKind const& kind, unsigned flow = 0);

    /// \return no tags twice.
    static std::vector<Copies> copiesOf(simulation::Decision const& decision);

    /// Puts more of them to such a list.
    static void add(std::vector<Copies>& list, Copies const& more);

    static FrameKind::Tags tagsOf(simulation::EthernetFrame const& frame);

private:
    std::map<unsigned, simulation::ChipForwarding*> _chips;
};

} // namespace board
