#pragma once

#include <string>
#include <utility>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "simulation/network/SimulatedNetwork.hpp"

/// The models of a board after the library has brought them up, cables between them, and a station at every
/// port that no cable is plugged in at.
class TrafficBoard {
public:
    using End = simulation::SimulatedNetwork::End;
    using Cable = std::pair<End, End>;

    /// What a station has got.
    struct Arrival {
        End at;
        simulation::EthernetFrame frame;
    };

    /// What a chip has made of a frame, or of a copy of it that came over a cable.
    struct Step {
        End at;
        simulation::EthernetFrame frame;
        simulation::Decision decision;
    };

    struct Result {
        std::vector<Arrival> arrivals;
        std::vector<Step> steps;
        std::vector<std::string> findings;
    };

    /// \param path of the document.
    TrafficBoard(std::string const& path, std::vector<Cable> const& cables);

    /// Has a port get a frame, and waits until nothing is under way any more.
    Result send(End const& from, simulation::EthernetFrame const& frame);

    /// All ports that the chips have, but for those with cables.
    std::vector<End> const& getStations() const { return _stations; }
    std::vector<unsigned> getSwitchIds() { return _models.getBoard().getSwitchIds(); }
    simulation::ChipForwarding& getForwarding(unsigned switchId);
    void passSecond();

    std::string getModel(unsigned switchId) const { return _models.getModel(switchId); }
    board::BoardReading const& getDocument() const { return _models.getDocument(); }

private:
    board::ModelBringUp _models;
    simulation::SimulatedNetwork _network{_models.getBoard()};
    std::vector<End> _stations;
    std::size_t _findings = 0;
    Result _result;
};
