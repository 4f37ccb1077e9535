#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "switchctl/ChosenBoard.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/status/StatusFollow.hpp"
#include "switchctl/status/StatusSampler.hpp"

namespace switchctl::status {

/// `switchctl status`: what the chips say of a board's ports.
class StatusCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit StatusCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    /// What is read, simulated or not.
    struct Ports {
        board::BoardReading const& document;
        board::PortSelection const& selection;
        ChosenBoard& board;
    };

    StatusSample look(Ports const& ports, std::ostream& out, std::ostream& errors) const;
    StatusSample follow(Ports const& ports, WatchPace& pace, std::ostream& out) const;
    void tell(Ports const& ports, StatusSample::Row const& row,
              std::vector<StatusFollow::Change> const& changes, std::ostream& out) const;
    std::string getSource() const { return ChosenBoard::getSource(_simulation, _path); }

    std::string _memoryDevice;
    std::string _path;
    std::vector<std::string> _ports;
    Simulation _simulation;
    bool _follow = false;
    std::optional<double> _interval;
    unsigned _count = 0;
};

} // namespace switchctl::status
