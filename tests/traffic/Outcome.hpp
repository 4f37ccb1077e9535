#pragma once

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "tests/traffic/TrafficBoard.hpp"

/// What became of a frame, or of the same frame from several ports, in words of the network.
struct Outcome {
    using End = TrafficBoard::End;
    using Ends = std::set<End>;

    struct Destination {
        /// A port; of a trunk all members, one of which got the frame.
        Ends ports;
        /// For example "tagged 4".
        std::string how;

        bool operator<(Destination const& other) const {
            return std::tie(how, ports) < std::tie(other.how, other.ports);
        }
        bool operator==(Destination const& other) const { return how == other.how && ports == other.ports; }
    };

    std::set<Destination> destinations;
    /// Whatever else is to be told, a line each.
    std::set<std::string> notes;

    bool operator==(Outcome const& other) const {
        return destinations == other.destinations && notes == other.notes;
    }

    /// \param trunks the members of each.
    static Outcome of(TrafficBoard::Result const& result, End const& from, std::vector<Ends> const& trunks);

    /// Without the port, and without the trunk that it is in.
    Outcome without(End const& port) const;

    /// The trunk that the port is in, or the port alone.
    static Ends withTrunk(End const& port, std::vector<Ends> const& trunks);

    /// The tags of a frame, for example "untagged" or "tagged 4 before 5".
    static std::string describeTags(simulation::EthernetFrame frame);

    /// For example "0.0-0.2, 2.7".
    static std::string describe(Ends const& ports);
};
