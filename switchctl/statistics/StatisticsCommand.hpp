#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "board/PortSelection.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/Simulation.hpp"
#include "switchctl/statistics/BoardSampler.hpp"
#include "switchctl/statistics/LibraryText.hpp"
#include "switchctl/statistics/SeededCounter.hpp"
#include "switchctl/terminal/WatchPace.hpp"

namespace switchctl::statistics {

/// `switchctl statistics`: the counters of a board's ports, without setting anything up.
class StatisticsCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit StatisticsCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    /// The board's chips, simulated or not, with what is to be counted meanwhile.
    struct Chips {
        std::unique_ptr<board::ModelBringUp> models;
        std::unique_ptr<board::BoardAccess> board;
        std::vector<SeededCounter> seeds;

        void seed();
    };

    void addWatch(Arguments& arguments);
    void addSimulation(Arguments& arguments);
    board::PortSelection select() const;
    Chips open(board::PortSelection const& selection, std::ostream& errors) const;
    ExitStatus printText(Chips& chips, board::PortSelection const& selection, std::ostream& out,
                         std::ostream& errors) const;
    ExitStatus printSample(Chips& chips, board::PortSelection const& selection, std::ostream& out,
                           std::ostream& errors) const;
    ExitStatus watch(Chips& chips, board::PortSelection const& selection, WatchPace& pace, std::ostream& out,
                     std::ostream& errors) const;
    std::string getSource() const;

    std::string _memoryDevice;
    std::string _path;
    std::vector<std::string> _ports;
    Simulation _simulation;
    std::vector<std::string> _seeds;
    std::optional<double> _watch;
    unsigned _count = 0;
};

} // namespace switchctl::statistics
