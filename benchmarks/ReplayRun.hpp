#pragma once

#include "benchmarks/AccessList.hpp"
#include "benchmarks/MeasuredRun.hpp"
#include "benchmarks/Replay.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/LogSink.hpp"
#include "switchctl/ClockAdoption.hpp"
#include "switchctl/SimulatedMemory.hpp"

namespace benchmarks {

/// Makes the accesses of a list, without the library.
class ReplayRun : public MeasuredRun {
public:
    ReplayRun(Xml& document, std::vector<AccessList::Section> const& list);

    simulation::SimulatedBoard& getBoard() override;
    void bringUp() override;
    std::vector<Operation> getOperations() override;

    /// Reads so far that gave another value than the listed one.
    std::size_t getUnexpected() const { return _unexpected; }

private:
    class NoLog : public reference_host::LogSink {
    public:
        void write(reference_host::LogMessage const& /*message*/) override {}
    };

    simulation::SimulatedBoard _board;
    switchctl::ClockAdoption _clock;
    switchctl::SimulatedMemory _memory;
    NoLog _log;
    reference_host::HostApplication _application;
    Replay _replay;
    /// A bring-up, and then the others.
    std::vector<Operation> _operations;
    std::size_t _unexpected = 0;
};

} // namespace benchmarks
