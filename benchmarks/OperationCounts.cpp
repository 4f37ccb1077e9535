#include "benchmarks/OperationCounts.hpp"

#include <algorithm>

#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace benchmarks {

namespace {

constexpr unsigned miiStatus = 0x80010018;
constexpr std::uint64_t cyclesOfFrame = 64;

} // namespace

std::vector<OperationCounts> OperationCounts::of(MeasuredRun& run) {
    AccessRecorder recorder(run.getBoard());
    std::vector<OperationCounts> counts = {count(run, recorder, {bringUp, [&run] { run.bringUp(); }})};
    for (MeasuredRun::Operation const& operation : run.getOperations()) {
        counts.push_back(count(run, recorder, operation));
    }
    return counts;
}

OperationCounts OperationCounts::count(MeasuredRun& run, AccessRecorder& recorder,
                                       MeasuredRun::Operation const& operation) {
    simulation::SimulatedBoard& board = run.getBoard();
    recorder.take();
    std::uint64_t const chipRegisters = board.getRegisterAccesses();
    std::uint64_t const mdioFrames = board.getLog().getMdioFrames();
    std::uint64_t const busNanoseconds = board.getBusNanoseconds();
    std::uint64_t const nanoseconds = board.getClock().getNanoseconds();
    operation.run();
    OperationCounts counts;
    counts.name = operation.name;
    counts.elapsedNanoseconds = board.getClock().getNanoseconds() - nanoseconds;
    counts.busNanoseconds = board.getBusNanoseconds() - busNanoseconds;
    counts.mdioFrames = board.getLog().getMdioFrames() - mdioFrames;
    counts.chipRegisters = board.getRegisterAccesses() - chipRegisters;
    counts.accesses = recorder.take();
    counts.idleLoops = static_cast<std::uint64_t>(
        std::count_if(counts.accesses.begin(), counts.accesses.end(),
                      [](Access const& access) { return access.physicalAddress == miiStatus; }));
    return counts;
}

std::vector<AccessList::Section> OperationCounts::accessesOf(std::vector<OperationCounts> const& counts) {
    std::vector<AccessList::Section> sections;
    for (OperationCounts const& operation : counts) {
        sections.push_back({operation.name, operation.accesses});
    }
    return sections;
}

std::uint64_t OperationCounts::busCycles() const {
    auto const parallel = std::count_if(accesses.begin(), accesses.end(), [](Access const& access) {
        return access.physicalAddress >= simulation::Vsc7390TestSide::physicalAddress;
    });
    return mdioFrames * cyclesOfFrame + static_cast<std::uint64_t>(parallel);
}

} // namespace benchmarks
