#include "tests/faults/SerialFaults.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "reference_host/HostApplication.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/faults/SerialTalk.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"

namespace fault_test {

namespace {

using simulation::SerialControllerLine;
using CharacterFault = SerialControllerLine::CharacterFault;
using Direction = SerialControllerLine::Direction;

/// The driver gives an answer up after five to six seconds.
constexpr std::uint64_t longestNanoseconds = 8'000'000'000;

std::string nameOf(CharacterFault fault) {
    switch (fault) {
    case CharacterFault::lost:
        return "character lost";
    case CharacterFault::doubled:
        return "character doubled";
    case CharacterFault::garbled:
        return "character garbled";
    }
    return "";
}

/// A driver on a serial line says on the process's standard output what it does.
class Hushed {
public:
    Hushed() : _before(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        int const nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }

    ~Hushed() {
        std::fflush(stdout);
        dup2(_before, STDOUT_FILENO);
        close(_before);
    }

    Hushed(Hushed const&) = delete;
    Hushed& operator=(Hushed const&) = delete;

private:
    int _before;
};

} // namespace

std::string SerialFaults::Hit::describe() const {
    return nameOf(fault) + ", number " + std::to_string(character) +
           (direction == Direction::toController ? " to the controller" : " to the driver");
}

SerialFaults::SerialFaults()
    : _document(reference_host::XmlDocument::fromText(
          "<switches><switch id='0' switchModel='vsc7390'/></switches>", "board")) {
    _undisturbed = talk(nullptr);
}

std::uint64_t SerialFaults::getCharacters() const {
    return _toController + _toDriver;
}

void SerialFaults::sweep(Selection const& selection, FaultTable& table) {
    for (CharacterFault const fault :
         {CharacterFault::lost, CharacterFault::doubled, CharacterFault::garbled}) {
        for (std::uint64_t number = selection.first; number <= getCharacters(); number += selection.stride) {
            bool const toController = number <= _toController;
            Hit const hit{toController ? Direction::toController : Direction::toDriver,
                          static_cast<std::size_t>(toController ? number : number - _toController), fault};
            RunResult const run = talk(&hit);
            table[nameOf(fault)].add(judge(hit, run), run);
        }
    }
}

RunResult SerialFaults::talk(Hit const* hit) {
    Hushed const hushed;
    RunResult result;
    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application(log, memory);
    simulation::SimulatedBoard board(*_document);
    simulation::SerialController controller(board);
    if (hit != nullptr) {
        controller.disturbCharacter(hit->direction, hit->character, hit->fault);
    }
    SerialTalk talk(application, controller);
    result.result = talk.talk();
    result.nanoseconds = talk.getLongestNanoseconds();
    result.accesses = board.getBusAccesses();
    result.messages = comparable(log.lines());
    if (hit == nullptr) {
        _toController = controller.getReceived().size();
        _toDriver = controller.getSent().size();
    }
    board.getClock().advanceNanoseconds(longestNanoseconds);
    result.image = imageOf(board);
    return result;
}

Verdict SerialFaults::judge(Hit const& hit, RunResult const& disturbed) const {
    if (disturbed.nanoseconds > longestNanoseconds) {
        return {Outcome::wrong, hit.describe() + ": it takes too long"};
    }
    bool const failed = disturbed.result.find("no ") != std::string::npos;
    bool const said = !disturbed.newMessages(_undisturbed).empty();
    if (failed != said) {
        return {Outcome::wrong,
                hit.describe() + (failed ? ": a failure without a message" : ": a message for nothing")};
    }
    if (said) {
        return {Outcome::noticed, ""};
    }
    // An answer that is too short is never taken.
    if (hit.direction == Direction::toDriver && hit.fault == CharacterFault::lost) {
        return {Outcome::wrong, hit.describe() + ": nobody was told"};
    }
    bool const isSame = disturbed.result == _undisturbed.result && disturbed.image == _undisturbed.image;
    if (isSame) {
        return {Outcome::harmless, ""};
    }
    // Nothing on the line tells a wrong character from a right one, and writes are not answered.
    bool const isLost = hit.fault == CharacterFault::lost;
    return {isLost ? Outcome::unseen : Outcome::corrupted, ""};
}

} // namespace fault_test
