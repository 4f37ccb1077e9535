#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "chips/ExitStatus.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/statistics/BoardSampler.hpp"
#include "switchctl/statistics/LibraryText.hpp"
#include "switchctl/statistics/PortSelection.hpp"
#include "switchctl/statistics/SeededCounter.hpp"
#include "switchctl/statistics/WatchPace.hpp"

namespace switchctl::statistics {

/// `switchctl statistics`: the counters of a board's ports, without setting anything up.
class StatisticsCommand {
public:
    /// Adds the command to the program's.
    /// \param memoryDevice where hardware is reached.
    explicit StatisticsCommand(CLI::App& program,
                               std::string memoryDevice = reference_host::DeviceMemory::defaultDevicePath);
    StatisticsCommand(StatisticsCommand const&) = delete;
    StatisticsCommand& operator=(StatisticsCommand const&) = delete;

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// \param out gets the counters.
    /// \param errors gets what could not be read or done, and what the library prints.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    /// The board's chips, simulated or not, with what is to be counted meanwhile.
    struct Chips {
        std::unique_ptr<board::ModelBringUp> models;
        std::unique_ptr<board::BoardAccess> board;
        std::vector<SeededCounter> seeds;

        void seed();
    };

    void addSimulation();
    void addWatch();
    chips::ExitStatus read(std::ostream& out, std::ostream& errors) const;
    PortSelection select() const;
    Chips open(PortSelection const& selection, std::ostream& errors) const;
    chips::ExitStatus printText(Chips& chips, PortSelection const& selection, std::ostream& out,
                                std::ostream& errors) const;
    chips::ExitStatus printSample(Chips& chips, PortSelection const& selection, std::ostream& out,
                                  std::ostream& errors) const;
    chips::ExitStatus watch(Chips& chips, PortSelection const& selection, WatchPace& pace, std::ostream& out,
                            std::ostream& errors) const;
    std::string getSimulatedPath() const;
    std::string getSource() const;

    CLI::App* _command;
    std::string _memoryDevice;
    std::string _path;
    std::vector<std::string> _ports;
    std::string _simulate;
    std::vector<std::string> _seeds;
    std::string _format = "text";
    std::optional<double> _watch;
    unsigned _count = 0;
};

} // namespace switchctl::statistics
