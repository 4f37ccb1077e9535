#include "tests/traffic/TrafficReport.hpp"

#include <arpa/inet.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <set>

using board::BoardReading;

namespace {

constexpr simulation::EthernetFrame::Address broadcastTo = 0xFFFFFFFFFFFF;
constexpr simulation::EthernetFrame::Address bridges = 0x0180C2000000;
constexpr unsigned unknownVid = 77;
constexpr unsigned usualVid = 1;
constexpr char const* unknownGroup = "239.127.0.1";
using NoTrunks = std::vector<BoardReading::Trunk>;

// RFC 1112: the low 23 bits of a group's address.
simulation::EthernetFrame::Address groupMac(std::string const& text) {
    in_addr address{};
    inet_pton(AF_INET, text.c_str(), &address);
    return 0x01005E000000 | (ntohl(address.s_addr) & 0x7FFFFF);
}

} // namespace

TrafficReport::TrafficReport(TrafficBoard& board) : _board(board) {
    for (auto const& [id, chip] : board.getDocument().getSwitches()) {
        // The library makes no trunks of the others' ports.
        for (BoardReading::Trunk const& trunk : chip.isVitesse() ? chip.trunks : NoTrunks()) {
            Outcome::Ends members;
            for (xmlNodePtr const member : trunk.members) {
                members.insert({id, BoardReading::trunkPortIdOf(member)});
            }
            _trunks.push_back(members);
        }
    }
}

std::string TrafficReport::write() {
    std::string text = describeBoard();
    for (Vid const& vid : getVids()) {
        text += flood(vid) + answer(vid);
    }
    for (unsigned const id : _board.getSwitchIds()) {
        text += age(id);
    }
    return text;
}

std::string TrafficReport::describeBoard() {
    std::string text;
    Outcome::Ends stations;
    for (End const& station : _board.getStations()) {
        stations.insert(station);
    }
    for (unsigned const id : _board.getSwitchIds()) {
        text += fmt::format("switch {}: {}\n", id, _board.getModel(id));
    }
    return text + fmt::format("stations at {}\n", Outcome::describe(stations)) +
           "\"to\" leaves out the sender's own port. What is sent has passed all rules, M1 to M14 or V1 to "
           "V12.\n"
           "A drop has the number of the last rule asked: what V7 refuses, V8 may still learn.\n";
}

std::vector<TrafficReport::Vid> TrafficReport::getVids() const {
    std::set<unsigned> vids{usualVid, unknownVid};
    for (auto const& [id, vlan] : _board.getDocument().getVlans()) {
        if (vlan.tagBased) {
            vids.insert(id);
        }
    }
    std::vector<Vid> all{std::nullopt};
    all.insert(all.end(), vids.begin(), vids.end());
    return all;
}

std::vector<TrafficReport::Address> TrafficReport::getAddresses() const {
    std::vector<Address> addresses{{"unknown station", std::nullopt},
                                   {"broadcast", broadcastTo},
                                   {"bridges 01:80:C2:00:00:00", bridges},
                                   {std::string("group of no VLAN ") + unknownGroup, groupMac(unknownGroup)}};
    std::set<std::string> groups;
    for (BoardReading::Group const& group : _board.getDocument().getGroups()) {
        if (groups.insert(group.address).second) {
            addresses.push_back(
                {fmt::format("group {} of VLAN {}", group.address, group.vlanId), groupMac(group.address)});
        }
    }
    return addresses;
}

std::string TrafficReport::describe(Vid const& vid) const {
    if (!vid) {
        return "untagged";
    }
    auto const& vlans = _board.getDocument().getVlans();
    return fmt::format("tagged {} (0x{:X}){}", *vid, *vid,
                       vlans.count(*vid) == 0 ? ", which is no VLAN of the document" : "");
}

// Addresses whose frames take the same ways are told of once.
std::string TrafficReport::flood(Vid const& vid) {
    std::vector<std::pair<std::vector<std::string>, std::string>> sections;
    for (Address const& address : getAddresses()) {
        OutcomeTable table;
        for (End const& from : _board.getStations()) {
            table.add(from, send(from, make(address.mac.value_or(newStation()), newStation(), vid)));
        }
        std::string const text = table.describe({"from", "to"});
        auto const same = std::find_if(sections.begin(), sections.end(),
                                       [&text](auto const& section) { return section.second == text; });
        if (same == sections.end()) {
            sections.push_back({{address.name}, text});
        } else {
            same->first.push_back(address.name);
        }
    }
    std::string text;
    for (auto const& [names, section] : sections) {
        text += fmt::format("\n{}: {}\n{}", describe(vid), fmt::join(names, ", "), section);
    }
    return text;
}

std::string TrafficReport::answer(Vid const& vid) {
    OutcomeTable table;
    for (End const& asker : _board.getStations()) {
        Frame::Address const address = newStation();
        auto const heard = _board.send(asker, make(broadcastTo, address, vid));
        // A storm brings it more than once.
        std::map<End, Frame> answers;
        for (TrafficBoard::Arrival const& arrival : heard.arrivals) {
            answers.emplace(arrival.at, answerTo(arrival.frame));
        }
        Outcome outcome;
        for (auto const& [answerer, frame] : answers) {
            outcome.destinations.insert(
                {Outcome::withTrunk(answerer, _trunks), describeAnswer(asker, answerer, frame)});
        }
        if (!answers.empty()) {
            table.add(asker, outcome);
        }
    }
    std::string const text = table.describe({"asked from", "answers of"});
    return text.empty() ? ""
                        : fmt::format("\n{}: answers to who asked by broadcast\n{}", describe(vid), text);
}

TrafficReport::Frame TrafficReport::answerTo(Frame const& question) {
    auto const tag = question.getTag();
    Frame const answer = make(question.getSource(), newStation(), std::nullopt);
    return tag ? answer.withTagPushed(*tag) : answer;
}

std::string TrafficReport::describeAnswer(End const& asker, End const& answerer, Frame const& frame) {
    auto const result = _board.send(answerer, frame);
    if (!result.findings.empty()) {
        return "start a storm";
    }
    if (result.arrivals.empty()) {
        auto const& step = result.steps.back();
        return fmt::format("are dropped by {}", step.decision.rules.back());
    }
    // An answer to one port of a trunk may go out by another.
    Outcome::Ends const asking = Outcome::withTrunk(asker, _trunks);
    bool const isHeard =
        std::any_of(result.arrivals.begin(), result.arrivals.end(),
                    [&asking](auto const& arrival) { return asking.count(arrival.at) != 0; });
    if (!isHeard) {
        return "go elsewhere, not to who asked";
    }
    return result.arrivals.size() == 1 ? "reach only who asked" : "flood";
}

// The first two ports of the switch that reach each other and, by a flood, a third one.
std::string TrafficReport::age(unsigned switchId) {
    simulation::ChipForwarding const& forwarding = _board.getForwarding(switchId);
    for (Vid const& vid : getVids()) {
        for (End const& talker : _board.getStations()) {
            if (talker.switchId != switchId) {
                continue;
            }
            Frame const question = make(broadcastTo, newStation(), vid);
            for (auto const& copy : forwarding.decide(talker.port, question).egress) {
                Frame const answer = answerTo(copy.frame);
                bool const floods = forwarding.decide(copy.port, answer).egress.size() > 1;
                _board.send(talker, question);
                if (floods && forwarding.decide(copy.port, answer).getPorts() == 1U << talker.port) {
                    return ageFrom(talker, {switchId, copy.port}, answer);
                }
            }
        }
    }
    return fmt::format("\nswitch {}: no VLAN reaches three ports, so that nobody notices ageing\n", switchId);
}

std::string TrafficReport::ageFrom(End const& talker, End const& listener, Frame const& answer) {
    constexpr unsigned secondsOfAnHour = 3600;
    simulation::ChipForwarding const& forwarding = _board.getForwarding(talker.switchId);
    unsigned seconds = 0;
    while (seconds < secondsOfAnHour &&
           forwarding.decide(listener.port, answer).getPorts() == 1U << talker.port) {
        _board.passSecond();
        ++seconds;
    }
    OutcomeTable table;
    table.add(listener, send(listener, answer));
    return fmt::format("\nswitch {}: an address heard at {}, {} s later\n{}", talker.switchId,
                       talker.describe(), seconds, table.describe({"asked for from", "to"}));
}

TrafficReport::Frame TrafficReport::make(Frame::Address destination, Frame::Address source,
                                         Vid const& vid) const {
    constexpr unsigned ipType = 0x0800;
    Frame const frame = Frame::make(destination, source, ipType);
    return vid ? frame.withTagPushed({*vid, 0, false}) : frame;
}

Outcome TrafficReport::send(End const& from, Frame const& frame) {
    return Outcome::of(_board.send(from, frame), from, _trunks);
}
