#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "board/PortSelection.hpp"
#include "switchctl/statistics/BoardSampler.hpp"

/// The models of an example after its bring-up, and a sampler of some of its ports.
class StatisticsBench {
public:
    /// \param example name of a document in examples/, without ".xml".
    /// \param ports each SWITCH.PORT; none for all ports.
    StatisticsBench(std::string const& example, std::vector<std::string> const& ports);

    simulation::SimulatedBoard& getBoard();
    board::BoardAccess& getChips();
    board::PortSelection const& getSelection() const;
    chips::CounterSample sample();

    /// Has one read of a register of the VSC7390, switch 3, never be ready: that of the first counter, once
    /// a sample was read before. The bus becomes slow, so that waiting for it takes few looks.
    void loseVitesseRead();

    /// The value of a counter by name; nothing when it has none. Fails the test when there is no such
    /// counter.
    static std::optional<std::uint64_t> valueOf(chips::PortCounters const& port, std::string const& name);

    static std::string pathOf(std::string const& example);

private:
    board::ModelBringUp _models;
    board::BoardAccess _chips;
    board::PortSelection _selection;
    switchctl::statistics::BoardSampler _sampler;
};
