#include "tests/faults/Verdict.hpp"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace fault_test {

namespace {

using Texts = std::vector<std::string>;
using simulation::BusFaults;

// Places on the parallel bus.
constexpr unsigned busSetUp = 0xF301C008;
constexpr unsigned miiDataRegister = 0xF301C0B0;
constexpr unsigned fetchStatus = 0xF301C0C0;
constexpr unsigned arbiterEmpty = 0xF3014030;

/// Virtual time that one register access of a driver may take at most: it gives up after a second, or
/// after five tries of one to two seconds, by a clock of whole seconds.
constexpr std::uint64_t nanosecondsOfAnAccess = 11'000'000'000;

bool contains(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

bool mentions(Texts const& messages, std::string const& text) {
    return std::any_of(messages.begin(), messages.end(),
                       [&text](std::string const& message) { return contains(message, text); });
}

bool isCorruption(FaultKind kind) {
    return kind == FaultKind::allZeros || kind == FaultKind::allOnes || kind == FaultKind::bitFlipped;
}

/// Whether an access that the bus refuses is one whose success is not looked at.
bool isRefusalIgnored(Fault const& fault) {
    unsigned const place = fault.access.physicalAddress;
    return fault.isOnMdio() || place == miiDataRegister || place == fetchStatus || place == busSetUp;
}

std::string refusal(Fault const& fault) {
    char text[64];
    std::snprintf(text, sizeof text, "error|Failed %s : address %x\n",
                  fault.access.isWrite ? "Write" : "Read", fault.access.physicalAddress);
    return text;
}

/// One of these has to be said when the fault is noticed; empty when anything will do.
Texts tellingTexts(Fault const& fault) {
    char const* const smi =
        "2|MarvelMultiMdioManagementCommunications::isMarvelSmiBusy Timeout waiting for SMI "
        "Busy Bit :Elapsed 1.000000 : smiTimeout 1.000000\n";
    switch (fault.kind) {
    case FaultKind::accessFails:
        return isRefusalIgnored(fault) ? Texts() : Texts{refusal(fault)};
    case FaultKind::busBusy:
        return {fault.isOnMdio() ? "2|Arm920tMdioAccess::isMacBusy Timeout waiting for Mac Busy Bit\n"
                                 : "switch timed out after attempted to read a register 5 times."};
    case FaultKind::chipBusy:
        return {smi};
    case FaultKind::unitBusy:
        return fault.isOnMdio()
                   ? Texts{"error|MarvellSwitch::waitVlanTableReady Vlan Table ready timeout\n",
                           "error|MarvellPort::statsCommand Stats Busy timeout\n",
                           "2|MarvellMultiMdioManagementCommunications::phyReadRegister                    "
                           "      Timeout waiting for SMI Phy Busy Bit :Elapsed 1.000000 : smiTimeout "
                           "1.000000\n"}
                   : Texts{
                         "1|VitesseSwitch::waitforVlanTableReady                          Timeout waiting "
                         "for "
                         "Vlan Table Busy Bit :Elapsed 1.000000 : vlanTimeout 1.000000\n",
                         "1|VitesseSwitch::waitForMacTableReady                          Timeout waiting for "
                         "Mac Table to be ready\n",
                         "PHY Read timed out after 1 second."};
    default:
        return {};
    }
}

bool isDriversOwnWait(RunResult const& run) {
    return !run.lastAccesses.empty() &&
           std::all_of(run.lastAccesses.begin(), run.lastAccesses.end(), [](BusFaults::Access const& access) {
               return !access.isWrite &&
                      (access.physicalAddress == arbiterEmpty || access.physicalAddress == fetchStatus ||
                       access.physicalAddress == miiDataRegister);
           });
}

/// The switches that hold something else than without the fault.
std::vector<unsigned> differentSwitches(RunResult const& undisturbed, RunResult const& disturbed) {
    std::vector<unsigned> ids;
    for (auto const& [id, image] : undisturbed.image) {
        if (disturbed.image.at(id) != image) {
            ids.push_back(id);
        }
    }
    return ids;
}

/// A fault that belongs to one chip leaves the others alone, unless start-up was given up for it.
bool reachesOtherSwitches(Fault const& fault, std::vector<unsigned> const& different) {
    bool const isOfOneChip = fault.kind == FaultKind::chipBusy || fault.kind == FaultKind::unitBusy ||
                             fault.kind == FaultKind::chipGone ||
                             (fault.kind == FaultKind::busBusy && !fault.isOnMdio());
    return isOfOneChip && std::any_of(different.begin(), different.end(),
                                      [&fault](unsigned id) { return id != fault.switchId; });
}

Verdict wrong(Fault const& fault, std::string const& what) {
    return {Outcome::wrong, fault.describe() + ": " + what};
}

Verdict judgeNoticed(Fault const& fault, Texts const& said, RunResult const& undisturbed,
                     RunResult const& disturbed) {
    std::vector<unsigned> const different = differentSwitches(undisturbed, disturbed);
    bool const gaveUp = contains(disturbed.result, "gave up");
    if (!gaveUp && reachesOtherSwitches(fault, different)) {
        return wrong(fault, "another switch is not as it is without the fault");
    }
    bool const isAnswered = contains(disturbed.result, "answer:") && fault.kind != FaultKind::accessFails;
    Texts const telling = tellingTexts(fault);
    bool const isTold =
        telling.empty() || isAnswered || std::any_of(telling.begin(), telling.end(), [&](auto const& text) {
            return mentions(said, text) || contains(disturbed.result, text);
        });
    if (!isTold) {
        return wrong(fault, "the message is missing; instead: " + disturbed.result +
                                (said.empty() ? "" : ", " + said.front()));
    }
    return {Outcome::noticed, ""};
}

Verdict judgeSilent(Fault const& fault) {
    if (isCorruption(fault.kind)) {
        return {Outcome::corrupted, ""};
    }
    if (fault.kind == FaultKind::accessFails && isRefusalIgnored(fault)) {
        return {Outcome::unseen, ""};
    }
    // An empty socket reads as all ones, which is what a ready VSC7390 may say; MDIO has no
    // acknowledgement of a write.
    if (fault.kind == FaultKind::chipGone) {
        return {Outcome::unseen, ""};
    }
    return wrong(fault, "nobody was told, and the chips are not as they are without the fault");
}

} // namespace

std::string nameOf(Outcome outcome) {
    switch (outcome) {
    case Outcome::noticed:
        return "noticed";
    case Outcome::harmless:
        return "harmless";
    case Outcome::corrupted:
        return "corrupted on the bus";
    case Outcome::unseen:
        return "not looked at";
    case Outcome::waits:
        return "waited out";
    case Outcome::wrong:
        return "wrong";
    }
    return "";
}

Verdict judge(Fault const& fault, RunResult const& undisturbed, RunResult const& disturbed) {
    if (disturbed.waitedForGood) {
        return isDriversOwnWait(disturbed) ? Verdict{Outcome::waits, ""}
                                           : wrong(fault, "somebody waits for good");
    }
    if (disturbed.nanoseconds > undisturbed.nanoseconds + undisturbed.accesses * nanosecondsOfAnAccess) {
        return wrong(fault, "it takes too long");
    }
    Texts const said = disturbed.newMessages(undisturbed);
    if (!said.empty() || disturbed.result != undisturbed.result) {
        return judgeNoticed(fault, said, undisturbed, disturbed);
    }
    if (differentSwitches(undisturbed, disturbed).empty()) {
        return {Outcome::harmless, ""};
    }
    return judgeSilent(fault);
}

} // namespace fault_test
