#include "StatisticsBench.hpp"

#include <gtest/gtest.h>

#include "reference_host/XmlDocument.hpp"

using board::PortSelection;
using chips::CounterSample;
using chips::PortCounters;

namespace {

PortSelection select(std::string const& path, std::vector<std::string> const& ports) {
    auto const document = reference_host::XmlDocument::fromFile(path);
    return {board::BoardReading(*document), path, ports};
}

} // namespace

StatisticsBench::StatisticsBench(std::string const& example, std::vector<std::string> const& ports)
    : _models(pathOf(example)),
      _chips(_models.getBoard()),
      _selection(select(pathOf(example), ports)),
      _sampler(_chips, _selection) {}

simulation::SimulatedBoard& StatisticsBench::getBoard() {
    return _models.getBoard();
}

board::BoardAccess& StatisticsBench::getChips() {
    return _chips;
}

PortSelection const& StatisticsBench::getSelection() const {
    return _selection;
}

chips::CounterSample StatisticsBench::sample() {
    return _sampler.sample();
}

void StatisticsBench::loseVitesseRead() {
    constexpr std::uint64_t millisecond = 1000000;
    // The library asks six times for a register.
    constexpr unsigned attempts = 6;
    getBoard().getFaults().slowDown(millisecond);
    getBoard().getVitesse(3).loseReads(attempts);
}

std::optional<std::uint64_t> StatisticsBench::valueOf(chips::PortCounters const& port,
                                                      std::string const& name) {
    for (std::size_t index = 0; index < port.values.size(); ++index) {
        if (name == port.getCounters()[index].name) {
            return port.values[index];
        }
    }
    ADD_FAILURE() << "no counter " << name;
    return std::nullopt;
}

std::string StatisticsBench::pathOf(std::string const& example) {
    return std::string(EXAMPLES_FOLDER) + "/" + example + ".xml";
}
