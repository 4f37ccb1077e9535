#include "tests/faults/ArmedFault.hpp"

#include <functional>

namespace fault_test {

namespace {

using simulation::BusFaults;
using MarvellUnit = simulation::Marvell88E6096TestSide::CommandUnit;
using VitesseUnit = simulation::Vsc7390TestSide::CommandUnit;

constexpr std::uint64_t slowAccessNanoseconds = 20'000'000;
constexpr std::uint64_t latenessNanoseconds = 300'000'000;
/// How many accesses are kept of those with which somebody waits for good.
constexpr std::uint64_t lastAccesses = 60;

/// Where a VSC7390 shows what it has fetched.
constexpr unsigned fetchedData = 0xF301C0B0;

constexpr MarvellUnit marvellUnits[] = {MarvellUnit::smiPhy, MarvellUnit::vtu, MarvellUnit::atu,
                                        MarvellUnit::statistics};
constexpr VitesseUnit vitesseUnits[] = {VitesseUnit::vlanTable, VitesseUnit::macTable, VitesseUnit::mii0,
                                        VitesseUnit::mii1};

bool isOfAWord(FaultKind kind) {
    return kind == FaultKind::accessFails || kind == FaultKind::allZeros || kind == FaultKind::allOnes ||
           kind == FaultKind::bitFlipped;
}

BusFaults::Kind busKindOf(FaultKind kind) {
    switch (kind) {
    case FaultKind::allZeros:
        return BusFaults::Kind::allZeros;
    case FaultKind::allOnes:
        return BusFaults::Kind::allOnes;
    case FaultKind::bitFlipped:
        return BusFaults::Kind::bitFlipped;
    default:
        return BusFaults::Kind::accessFails;
    }
}

} // namespace

ArmedFault::ArmedFault(simulation::SimulatedBoard& board, Fault const& fault, std::uint64_t before,
                       std::uint64_t patience)
    : _board(board), _fault(fault) {
    std::uint64_t const number = before + _fault.number;
    BusFaults& faults = _board.getFaults();
    if (isOfAWord(_fault.kind)) {
        faults.strike(number, busKindOf(_fault.kind), _fault.bit());
    } else {
        faults.callBefore(number, [this] { strike(); });
    }
    faults.callBefore(number + patience - lastAccesses, [this] { _board.getFaults().startRecord(); });
    faults.callBefore(number + patience, [this] {
        _hasLostPatience = true;
        _lastAccesses = _board.getFaults().getRecord();
        heal();
    });
}

void ArmedFault::strike() {
    _board.getFaults().slowDown(slowAccessNanoseconds);
    if (_fault.kind != FaultKind::chipGone) {
        makeBusy();
    } else if (_fault.isOnMdio()) {
        _board.getMarvell(_fault.switchId).unplug();
    } else {
        _board.getVitesse(_fault.switchId).unplug();
    }
    if (_fault.kind == FaultKind::readyLate) {
        simulation::VirtualClock& clock = _board.getClock();
        clock.callAt(clock.getNanoseconds() + latenessNanoseconds, [this] { heal(); });
    }
}

void ArmedFault::makeBusy() {
    bool const late = _fault.kind == FaultKind::readyLate;
    bool const bus = late || _fault.kind == FaultKind::busBusy;
    bool const units = late || _fault.kind == FaultKind::unitBusy;
    if (!_fault.isOnMdio()) {
        simulation::Vsc7390TestSide& chip = _board.getVitesse(_fault.switchId);
        if (bus) {
            // Data that is there stays there.
            chip.hang(VitesseUnit::indirectRead, _fault.access.physicalAddress == fetchedData ? 1 : 0);
        }
        if (late || _fault.kind == FaultKind::arbiterBusy) {
            chip.hang(VitesseUnit::arbiter);
        }
        for (VitesseUnit const unit : vitesseUnits) {
            if (units) {
                chip.hang(unit);
            }
        }
        return;
    }
    simulation::Marvell88E6096TestSide& chip = _board.getMarvell(_fault.switchId);
    if (bus) {
        _board.getMac().hang();
    }
    if (late || _fault.kind == FaultKind::chipBusy) {
        chip.hang(MarvellUnit::smi);
    }
    for (MarvellUnit const unit : marvellUnits) {
        if (units) {
            chip.hang(unit);
        }
    }
}

void ArmedFault::heal() {
    _board.getFaults().slowDown(0);
    if (isOfAWord(_fault.kind)) {
        return;
    }
    if (!_fault.isOnMdio()) {
        simulation::Vsc7390TestSide& chip = _board.getVitesse(_fault.switchId);
        chip.plug();
        chip.release(VitesseUnit::indirectRead);
        chip.release(VitesseUnit::arbiter);
        for (VitesseUnit const unit : vitesseUnits) {
            chip.release(unit);
        }
        return;
    }
    simulation::Marvell88E6096TestSide& chip = _board.getMarvell(_fault.switchId);
    _board.getMac().release();
    chip.plug();
    chip.release(MarvellUnit::smi);
    for (MarvellUnit const unit : marvellUnits) {
        chip.release(unit);
    }
}

bool ArmedFault::hasLostPatience() const {
    return _hasLostPatience;
}

std::vector<BusFaults::Access> const& ArmedFault::getLastAccesses() const {
    return _lastAccesses;
}

} // namespace fault_test
