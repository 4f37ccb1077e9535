#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "board/intent/Intent.hpp"
#include "switchctl/explain/FrameWay.hpp"

namespace switchctl::explain {

/// The way of a frame as text and JSON.
class ExplainReport {
public:
    /// Both must outlive the object.
    ExplainReport(std::string file, board::Intent const& intent, FrameWay const& way)
        : _file(std::move(file)), _intent(intent), _way(way) {}

    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    void print(std::ostream& out, FrameWay::Hop const& hop) const;
    void printRemedies(std::ostream& out, FrameWay::Hop const& hop) const;
    nlohmann::ordered_json toJson(FrameWay::Hop const& hop) const;

    static std::string outcomeOf(FrameWay::Hop const& hop);
    std::string wantedOf(FrameWay::Hop const& hop) const;
    int lineOf(FrameWay::Hop const& hop, unsigned port) const;

    std::string _file;
    board::Intent const& _intent;
    FrameWay const& _way;
};

} // namespace switchctl::explain
