#pragma once

#include "board/paths/ChipEvidence.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace board {

/// Of a VSC7390.
class VitesseEvidence : public ChipEvidence {
public:
    VitesseEvidence(simulation::Vsc7390TestSide& chip, std::string const& model, Question const& question)
        : ChipEvidence(chip, model, question), _chip(chip) {}

    std::vector<Fact> getFacts(std::string_view rule) const override;
    std::vector<Change> getChanges() const override;

private:
    void addVlan(Side side, std::vector<Fact>& facts) const;
    void addDestination(std::vector<Fact>& facts) const;
    void addAggregation(std::vector<Fact>& facts) const;
    Change startOf(Side side) const;
    Change floodOf() const;
    Change aggregationOf() const;
    Change membershipOf() const;

    simulation::Vsc7390TestSide& _chip;
};

} // namespace board
