#include "board/paths/PathExplanation.hpp"

namespace board {

namespace {

constexpr std::size_t mostChanges = 3;

} // namespace

PathExplanation::PathExplanation(simulation::ChipForwarding const& chip, ChipEvidence const& evidence,
                                 simulation::EthernetFrame const& frame, unsigned from, unsigned to)
    : _chip(chip), _frame(frame), _from(from), _to(to), _decision(chip.decide(from, frame)) {
    for (std::string_view const rule : _decision.rules) {
        _steps.push_back({rule, evidence.getFacts(rule)});
    }
    Changes const changes = isDelivered() ? Changes() : evidence.getChanges();
    for (std::size_t count = 1; count <= mostChanges && _remedies.empty(); ++count) {
        Remedy made;
        findRemedies(changes, 0, count, made);
    }
}

bool PathExplanation::passes() const {
    return _chip.decide(_from, _frame).find(_to) != nullptr;
}

// All sets of so many changes, each made in the model, tried, and taken back.
void PathExplanation::findRemedies(Changes const& changes, std::size_t first, std::size_t more,
                                   Remedy& made) {
    for (std::size_t index = first; index < changes.size(); ++index) {
        FieldAccess::Undo const undo = changes[index].make();
        made.push_back(changes[index].text);
        if (more > 1) {
            findRemedies(changes, index + 1, more - 1, made);
        } else if (passes()) {
            _remedies.push_back(made);
        }
        made.pop_back();
        undo();
    }
}

} // namespace board
