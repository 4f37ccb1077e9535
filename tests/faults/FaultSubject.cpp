#include "tests/faults/FaultSubject.hpp"

#include <functional>
#include <memory>

#include "tests/faults/AddressedSwitch.hpp"

namespace fault_test {

namespace {

using simulation::SimulatedBoard;

constexpr std::uint64_t settlingNanoseconds = 1'000'000'000;

unsigned parallelSwitchOf(SimulatedBoard& board) {
    for (unsigned const id : board.getSwitchIds()) {
        if (dynamic_cast<simulation::Vsc7390TestSide*>(&board.getChip(id)) != nullptr) {
            return id;
        }
    }
    return 0;
}

} // namespace

RunResult const& FaultSubject::getUndisturbed() const {
    return _undisturbed;
}

std::uint64_t FaultSubject::getAccesses() const {
    return _record.size();
}

std::optional<Fault> FaultSubject::at(FaultKind kind, std::uint64_t number) const {
    auto const index = static_cast<std::size_t>(number - 1);
    Fault const fault{kind, number, _record.at(index), _switches.at(index)};
    return fault.isPossible() ? std::optional<Fault>(fault) : std::nullopt;
}

RunResult FaultSubject::run(Fault const& fault) {
    return performWith(&fault);
}

std::uint64_t FaultSubject::patience() const {
    return _record.size() * 2 + 20'000;
}

void FaultSubject::measure() {
    _undisturbed = performWith(nullptr);
}

RunResult FaultSubject::performWith(Fault const* fault) {
    std::unique_ptr<ArmedFault> armed;
    SimulatedBoard* board = nullptr;
    std::uint64_t accessesBefore = 0;
    std::uint64_t timeBefore = 0;
    auto const begin = [&](SimulatedBoard& theBoard) {
        board = &theBoard;
        accessesBefore = board->getFaults().getAccesses();
        timeBefore = board->getClock().getNanoseconds();
        if (fault == nullptr) {
            board->getFaults().startRecord();
        } else {
            armed = std::make_unique<ArmedFault>(*board, *fault, accessesBefore, patience());
        }
    };
    auto const end = [&](RunResult& result) {
        result.accesses = board->getFaults().getAccesses() - accessesBefore;
        result.nanoseconds = board->getClock().getNanoseconds() - timeBefore;
        if (armed != nullptr) {
            armed->heal();
            result.waitedForGood = armed->hasLostPatience();
            result.lastAccesses = armed->getLastAccesses();
        } else {
            _record = board->getFaults().getRecord();
            _switches = addressedSwitches(_record, parallelSwitchOf(*board));
        }
        // What the chip still does on its own is over then.
        board->getClock().advanceNanoseconds(settlingNanoseconds);
        result.image = imageOf(*board);
    };
    return perform(begin, end);
}

} // namespace fault_test
