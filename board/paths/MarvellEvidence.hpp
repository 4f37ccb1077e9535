#pragma once

#include "board/paths/ChipEvidence.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

namespace board {

/// Of an 88E6096.
class MarvellEvidence : public ChipEvidence {
public:
    MarvellEvidence(simulation::Marvell88E6096TestSide& chip, std::string const& model,
                    Question const& question)
        : ChipEvidence(chip, model, question), _chip(chip) {}

    std::vector<Fact> getFacts(std::string_view rule) const override;
    std::vector<Change> getChanges() const override;

private:
    using VtuEntry = simulation::Marvell88E6096TestSide::VtuEntry;

    void addTableFacts(std::string_view rule, std::vector<Fact>& facts) const;
    void addState(VtuEntry const& entry, unsigned port, std::vector<Fact>& facts) const;
    Change membershipOf(unsigned port) const;

    simulation::Marvell88E6096TestSide& _chip;
};

} // namespace board
