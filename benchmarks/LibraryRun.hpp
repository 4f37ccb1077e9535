#pragma once

#include <future>
#include <memory>

#include "benchmarks/MeasuredRun.hpp"
#include "board/ClockAdoption.hpp"
#include "board/SessionLog.hpp"
#include "board/SimulatedMemory.hpp"
#include "board/StartUpMonitor.hpp"
#include "manager/SwitchManager.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "reference_host/HostApplication.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"

class MarvellSwitch;
class VitesseSwitch;

namespace benchmarks {

/// Has the library do it, for a host that says nothing. The management thread begins when the host's has
/// nothing left to do but wait, and stops when the switches are ready, so that every run is the same.
class LibraryRun : public MeasuredRun {
public:
    /// Whether the library may access chips, or only builds its objects: then there are no operations.
    enum class Hardware { accessed, leftAlone };

    explicit LibraryRun(Xml& document, Hardware hardware = Hardware::accessed);
    ~LibraryRun() override;

    simulation::SimulatedBoard& getBoard() override;
    void bringUp() override;
    std::vector<Operation> getOperations() override;

private:
    void addMarvell(MarvellSwitch& chip, std::vector<Operation>& operations);
    void addVitesse(VitesseSwitch& chip, std::vector<Operation>& operations);
    void readCounters(unsigned switchId, unsigned portId);

    Hardware _hardware;
    simulation::SimulatedBoard _board;
    board::ClockAdoption _clock;
    board::SimulatedMemory _memory;
    board::StartUpMonitor _monitor;
    board::SessionLog _log;
    reference_host::HostApplication _application;
    SwitchManager _manager;
    /// Set once the PHY interfaces are reported, and once this object goes.
    std::promise<void> _reported;
    std::promise<void> _finished;
    std::unique_ptr<MarvellMultiMdioManagementCommunications> _smi;
    std::unique_ptr<VitesseParallelCommunication> _bus;
};

} // namespace benchmarks
