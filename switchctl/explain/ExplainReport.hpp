#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "board/BoardReading.hpp"
#include "board/intent/Intent.hpp"
#include "board/paths/PathExplanation.hpp"
#include "switchctl/explain/FrameQuestion.hpp"
#include "switchctl/explain/FrameWay.hpp"
#include "switchctl/explain/StepOrigin.hpp"

namespace switchctl::explain {

/// The way of a frame as text and JSON.
class ExplainReport {
public:
    /// All but the first and the last must outlive the object.
    ExplainReport(std::string file, board::BoardReading const& reading, board::Intent const& intent,
                  FrameWay const& way, FrameQuestion question)
        : _file(std::move(file)),
          _reading(reading),
          _intent(intent),
          _way(way),
          _question(std::move(question)) {}

    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    using Hop = FrameWay::Hop;

    void print(std::ostream& out, Hop const& hop) const;
    void printSteps(std::ostream& out, Hop const& hop) const;
    void printEnd(std::ostream& out, Hop const& hop) const;
    nlohmann::ordered_json toJson(Hop const& hop) const;
    nlohmann::ordered_json stepsToJson(Hop const& hop) const;

    /// Ports with their labels.
    std::string nameOf(chips::PortAddress const& port) const;
    std::string nameOf(Hop const& hop, unsigned port) const { return nameOf({hop.from.switchId, port}); }
    std::string placeOf(int line) const;
    int lineOf(chips::PortAddress const& port) const;
    std::string vlanOf(unsigned vid) const;
    std::string frameOf(board::FrameKind::Tags const& tags) const;
    std::string sentOf(Hop const& hop) const;
    std::string adviceOf(Hop const& hop) const;
    std::string adviceBefore(Hop const& hop) const;
    std::string leftOutOf(unsigned switchId, unsigned port) const;
    std::string wantedOf(Hop const& hop) const;
    StepOrigin originOf(Hop const& hop) const;
    static bool isEnd(Hop const& hop);
    static std::string_view ruleOf(Hop const& hop);
    static std::string reasonOf(Hop const& hop);

    std::string _file;
    board::BoardReading const& _reading;
    board::Intent const& _intent;
    FrameWay const& _way;
    FrameQuestion _question;
};

} // namespace switchctl::explain
