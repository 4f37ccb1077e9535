#pragma once

#include <optional>
#include <string>
#include <vector>

#include "board/paths/ChipEvidence.hpp"
#include "simulation/network/ChipForwarding.hpp"

namespace board {

/// Why a frame gets from one port of a switch to another, or does not, and what would let it.
class PathExplanation {
public:
    struct Step {
        /// As in simulation::Decision.
        std::string_view rule;
        std::vector<ChipEvidence::Fact> facts;
    };

    /// Changes that would let the frame pass when all of them were made.
    using Remedy = std::vector<std::string>;

    /// The model is as before afterwards.
    /// \param to the port that it is to leave by; without, any will do.
    PathExplanation(simulation::ChipForwarding const& chip, ChipEvidence const& evidence,
                    simulation::EthernetFrame const& frame, unsigned from, std::optional<unsigned> to);

    /// What the chip does with the frame.
    simulation::Decision const& getDecision() const { return _decision; }
    /// The same as far as it is about the way to that port: where it ends, and why.
    simulation::Decision const& getWay() const { return _way; }
    bool isDelivered() const { return isDelivered(_decision); }

    /// Rules in their order.
    std::vector<Step> const& getSteps() const { return _steps; }

    /// Those of the fewest changes; none when the frame passes, or no three of the known changes let it.
    std::vector<Remedy> const& getRemedies() const { return _remedies; }

private:
    using Changes = std::vector<ChipEvidence::Change>;

    void findRemedies(Changes const& changes, std::size_t first, std::size_t more, Remedy& made);
    simulation::Decision decideWay() const;
    bool isDelivered(simulation::Decision const& decision) const;

    simulation::ChipForwarding const& _chip;
    simulation::EthernetFrame const _frame;
    unsigned const _from;
    std::optional<unsigned> const _to;
    simulation::Decision const _decision;
    simulation::Decision const _way;
    std::vector<Step> _steps;
    std::vector<Remedy> _remedies;
};

} // namespace board
