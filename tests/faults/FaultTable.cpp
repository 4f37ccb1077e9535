#include "tests/faults/FaultTable.hpp"

#include <algorithm>

namespace fault_test {

namespace {

constexpr std::size_t reasonsKept = 20;
constexpr double nanosecondsPerSecond = 1e9;

} // namespace

void FaultCount::add(Verdict const& verdict, RunResult const& run) {
    ++runs;
    ++outcomes.at(static_cast<std::size_t>(verdict.outcome));
    mostAccesses = std::max(mostAccesses, run.accesses);
    longestSeconds = std::max(longestSeconds, static_cast<double>(run.nanoseconds) / nanosecondsPerSecond);
    if (verdict.outcome == Outcome::wrong && wrong.size() < reasonsKept) {
        wrong.push_back(verdict.reason);
    }
}

void FaultCount::add(FaultCount const& other) {
    runs += other.runs;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        outcomes.at(i) += other.outcomes.at(i);
    }
    mostAccesses = std::max(mostAccesses, other.mostAccesses);
    longestSeconds = std::max(longestSeconds, other.longestSeconds);
    wrong.insert(wrong.end(), other.wrong.begin(), other.wrong.end());
}

void sweep(FaultSubject& subject, Selection const& selection, FaultTable& table) {
    std::uint64_t offset = 0;
    for (FaultKind const kind : allFaultKinds) {
        std::uint64_t const start = selection.first + offset % selection.stride;
        offset += 1 + selection.stride / allFaultKinds.size();
        for (std::uint64_t number = start; number <= subject.getAccesses(); number += selection.stride) {
            if (auto const fault = subject.at(kind, number)) {
                RunResult const run = subject.run(*fault);
                table[nameOf(kind)].add(judge(*fault, subject.getUndisturbed(), run), run);
            }
        }
    }
}

std::string wrongIn(FaultTable const& table) {
    std::string text;
    for (auto const& [kind, count] : table) {
        for (std::string const& reason : count.wrong) {
            text += reason + '\n';
        }
    }
    return text;
}

} // namespace fault_test
