#include "board/paths/OpenPaths.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "board/paths/PathWording.hpp"
#include "simulation/network/ChipForwarding.hpp"

namespace board {

namespace {

PathLine::Key leakOf(unsigned switchId) {
    PathLine::Key key;
    key.kind = PathLine::Kind::leak;
    key.switchId = switchId;
    return key;
}

PortSet trunksOf(Intent const& intent, unsigned switchId) {
    PortSet members = 0;
    for (PortSet const trunk : intent.getBoard().getSwitches().at(switchId).trunks) {
        members |= trunk;
    }
    return members;
}

/// The switch in another document, where it is the same chip.
bool isIn(Intent const* other, IntendedBoard::Switch const& owner) {
    if (other == nullptr) {
        return false;
    }
    auto const found = other->getBoard().getSwitches().find(owner.id);
    return found != other->getBoard().getSwitches().end() && found->second.model == owner.model;
}

} // namespace

OpenPaths::OpenPaths(Intent const& wanted, Intent const* before, RegisterPaths const& registers,
                     AskedFrames const& frames)
    : _intent(wanted), _registers(registers), _frames(frames) {
    for (auto const& [id, chip] : registers.getChips()) {
        auto const owner = wanted.getBoard().getSwitches().find(id);
        if (owner != wanted.getBoard().getSwitches().end()) {
            addQuestions(id, isIn(before, owner->second) ? before : nullptr);
        }
    }
}

void OpenPaths::addQuestions(unsigned switchId, Intent const* before) {
    unsigned const ports = _registers.getChips().at(switchId)->getNumberOfPorts();
    for (std::size_t destination = 0; destination < _frames.getDestinations().size(); ++destination) {
        for (std::size_t tags = 0; tags < _frames.getTags().size(); ++tags) {
            for (unsigned port = 0; port < ports; ++port) {
                Question question = questionOf(switchId, port, tags, destination, before);
                if (before != nullptr) {
                    PortSet const reached = reachedBy(switchId, question);
                    question.allowed |= reached;
                    question.needed &= reached & ~question.trunks;
                }
                ask(switchId, question, 0);
                _asked[switchId].push_back(std::move(question));
            }
        }
    }
}

OpenPaths::Question OpenPaths::questionOf(unsigned switchId, unsigned port, std::size_t tags,
                                          std::size_t destination, Intent const* before) const {
    FrameKind const kind = _frames.getFrame(tags, destination);
    Question question;
    question.port = port;
    question.tags = tags;
    question.destination = destination;
    question.trunks = trunksOf(_intent, switchId) | (before != nullptr ? trunksOf(*before, switchId) : 0);
    for (unsigned flow = 0; flow < (question.trunks != 0 ? RegisterPaths::flows : 1); ++flow) {
        question.frames.push_back(RegisterPaths::frameOf(kind, flow));
    }
    Intent::Answer const wanted = _intent.ask(switchId, port, kind);
    question.wanted = question.allowed = wanted.allowed();
    if (before != nullptr) {
        Intent::Answer const old = before->ask(switchId, port, kind);
        question.allowed |= old.allowed();
        question.needed = wanted.must & old.must;
    }
    return question;
}

void OpenPaths::follow(unsigned switchId, Write write) {
    auto const asked = _asked.find(switchId);
    if (asked == _asked.end()) {
        return;
    }
    bool isSilent = false;
    for (Question& question : asked->second) {
        ask(switchId, question, write);
        isSilent = isSilent || (question.needed & ~question.reached) != 0;
    }
    if (isSilent) {
        _silent.insert(switchId);
    } else {
        _silent.erase(switchId);
    }
    count(write);
}

void OpenPaths::count(Write write) {
    if (!_silent.empty()) {
        ++_silence.writes;
        _silence.first = _silence.first == 0 ? write : _silence.first;
        _silence.last = write;
    }
}

PortSet OpenPaths::reachedBy(unsigned switchId, Question const& question) {
    simulation::ChipForwarding const& chip = *_registers.getChips().at(switchId);
    PortSet all = 0;
    for (simulation::EthernetFrame const& frame : question.frames) {
        simulation::Decision const decision = chip.decide(question.port, frame);
        ++_questions;
        if (decision.isRefused()) {
            _notModelled.insert(fmt::format("{}.{}: {}", switchId, question.port, decision.notModelled));
            break;
        }
        all |= decision.getPorts();
        PortSet const suspects = (all & ~question.allowed) | (PortSet{1} << question.port);
        if ((suspects & question.trunks) == 0) {
            break;
        }
    }
    return all;
}

void OpenPaths::ask(unsigned switchId, Question& question, Write write) {
    question.reached = reachedBy(switchId, question);
    PortSet const leaks = question.reached & ~question.allowed;
    if (PortSet const closed = question.open & ~leaks) {
        end(switchId, question, closed, write);
    }
    if (PortSet const opened = leaks & ~question.open) {
        question.since.push_back({write, opened});
        auto const rules =
            _registers.getChips().at(switchId)->decide(question.port, question.frames.front()).rules;
        _rules.insert(fmt::format("{}", fmt::join(rules, " ")));
    }
    question.open = leaks;
}

void OpenPaths::end(unsigned switchId, Question& question, PortSet closed, Write write) {
    for (Since& since : question.since) {
        if (PortSet const ended = since.ports & closed) {
            _ended[{switchId, since.write, write}].push_back({&question, ended});
            since.ports &= ~ended;
        }
    }
    auto const over = std::remove_if(question.since.begin(), question.since.end(),
                                     [](Since const& since) { return since.ports == 0; });
    question.since.erase(over, question.since.end());
}

void OpenPaths::add(PathGrouping& grouping, PathLine::Key const& key, Fact const& fact) {
    Question const& question = *fact.question;
    grouping.add(key, question.tags, question.destination, question.port, {{}, fact.to});
}

std::vector<OpenPaths::Interval> OpenPaths::getIntervals() const {
    std::vector<Interval> intervals;
    for (auto const& [when, facts] : _ended) {
        auto const& [switchId, opened, closed] = when;
        PathGrouping grouping(_frames);
        for (Fact const& fact : facts) {
            add(grouping, leakOf(switchId), fact);
        }
        intervals.push_back({switchId, opened, closed, grouping.getLines()});
    }
    return intervals;
}

std::vector<PathLine> OpenPaths::getLeft() const {
    PathGrouping grouping(_frames);
    for (auto const& [switchId, questions] : _asked) {
        for (Question const& question : questions) {
            FrameKind const kind = _frames.getFrame(question.tags, question.destination);
            Intent::Answer const answer = _intent.ask(switchId, question.port, kind);
            for (unsigned const to : numbersOf(question.reached & ~question.wanted)) {
                PathLine::Key key = leakOf(switchId);
                key.reason = _intent.explain(switchId, question.port, kind, answer, to);
                add(grouping, key, {&question, PortSet{1} << to});
            }
        }
    }
    return grouping.getLines();
}

} // namespace board
