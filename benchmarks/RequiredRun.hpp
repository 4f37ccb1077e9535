#pragma once

#include <memory>

#include "benchmarks/MeasuredRun.hpp"
#include "benchmarks/required/BoardPlan.hpp"
#include "board/ClockAdoption.hpp"
#include "board/SimulatedMemory.hpp"
#include "host/MappedSection.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/LogSink.hpp"

namespace benchmarks {

/// Does what is required, without the library.
class RequiredRun : public MeasuredRun {
public:
    explicit RequiredRun(Xml& document);
    ~RequiredRun() override;

    simulation::SimulatedBoard& getBoard() override;
    void bringUp() override;
    std::vector<Operation> getOperations() override;

private:
    class NoLog : public reference_host::LogSink {
    public:
        void write(reference_host::LogMessage const& /*message*/) override {}
    };

    void addMarvell(required::SwitchPlan const& plan, std::vector<Operation>& operations);
    void addVitesse(required::SwitchPlan const& plan, std::vector<Operation>& operations);

    required::BoardPlan _plan;
    simulation::SimulatedBoard _board;
    board::ClockAdoption _clock;
    board::SimulatedMemory _memory;
    NoLog _log;
    reference_host::HostApplication _application;
    std::unique_ptr<MappedSection> _mac;
    std::unique_ptr<MappedSection> _bus;
};

} // namespace benchmarks
