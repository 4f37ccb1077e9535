#pragma once

#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "board/ProgressWatch.hpp"
#include "chips/PortSettings.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/Simulation.hpp"
#include "switchctl/port/PortChange.hpp"

namespace switchctl::port {

/// `switchctl port`: has the library start, stop or set a port of a board that runs.
class PortCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit PortCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    using Switch = board::BoardReading::Switch;

    Switch const& findOwner(board::BoardReading const& reading, chips::PortAddress const& port) const;
    void requireConsent(Switch const& owner, chips::PortSettings const& settings) const;
    ExitStatus change(Switch const& owner, chips::PortAddress const& port,
                      chips::PortSettings const& settings, board::ProgressWatch& watch, std::ostream& out,
                      std::ostream& errors) const;
    ExitStatus report(board::BoardAccess& board, Switch const& owner, chips::PortAddress const& port,
                      chips::PortSettings const& settings, std::ostream& out, std::ostream& errors) const;

    std::string _memoryDevice;
    std::string _path;
    std::string _port;
    std::vector<std::string> _settings;
    Simulation _simulation;
    bool _yes = false;
    unsigned _timeout = 10;
};

} // namespace switchctl::port
