#include "board/paths/PathExplanation.hpp"

namespace board {

namespace {

constexpr std::size_t mostChanges = 3;

} // namespace

PathExplanation::PathExplanation(simulation::ChipForwarding const& chip, ChipEvidence const& evidence,
                                 simulation::EthernetFrame const& frame, unsigned from,
                                 std::optional<unsigned> to)
    : _chip(chip),
      _frame(frame),
      _from(from),
      _to(to),
      _decision(chip.decide(from, frame)),
      _way(decideWay()) {
    for (std::string_view const rule : _way.rules) {
        _steps.push_back({rule, evidence.getFacts(rule)});
    }
    Changes const changes = isDelivered() ? Changes() : evidence.getChanges();
    for (std::size_t count = 1; count <= mostChanges && _remedies.empty(); ++count) {
        Remedy made;
        findRemedies(changes, 0, count, made);
    }
}

// What a chip does with the frame altogether may be unknown because of another port that sends it.
simulation::Decision PathExplanation::decideWay() const {
    return _to && !_decision.isRefused() ? _chip.decide(_from, _frame, 1U << *_to) : _decision;
}

bool PathExplanation::isDelivered(simulation::Decision const& decision) const {
    return _to ? decision.find(*_to) != nullptr : !decision.egress.empty();
}

// All sets of so many changes, each made in the model, tried, and taken back.
void PathExplanation::findRemedies(Changes const& changes, std::size_t first, std::size_t more,
                                   Remedy& made) {
    for (std::size_t index = first; index < changes.size(); ++index) {
        FieldAccess::Undo const undo = changes[index].make();
        made.push_back(changes[index].text);
        if (more > 1) {
            findRemedies(changes, index + 1, more - 1, made);
        } else if (isDelivered(_chip.decide(_from, _frame))) {
            _remedies.push_back(made);
        }
        made.pop_back();
        undo();
    }
}

} // namespace board
