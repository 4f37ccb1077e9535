#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/traffic/Outcome.hpp"
#include "tests/traffic/OutcomeTable.hpp"
#include "tests/traffic/TrafficBoard.hpp"

/// Who gets which frames on a board, as a text for people.
class TrafficReport {
public:
    /// \param board must outlive the report.
    explicit TrafficReport(TrafficBoard& board);

    /// Sends the frames.
    std::string write();

private:
    using End = TrafficBoard::End;
    using Frame = simulation::EthernetFrame;
    using Vid = std::optional<unsigned>;

    /// Somewhere to send a frame to.
    struct Address {
        std::string name;
        /// None for a station that nobody has heard yet.
        std::optional<Frame::Address> mac;
    };

    std::string describeBoard();
    std::vector<Vid> getVids() const;
    std::vector<Address> getAddresses() const;
    std::string describe(Vid const& vid) const;

    std::string flood(Vid const& vid);
    std::string answer(Vid const& vid);
    /// To the source of the question, with its tag, from a station that nobody has heard yet.
    Frame answerTo(Frame const& question);
    std::string describeAnswer(End const& asker, End const& answerer, Frame const& frame);
    std::string age(unsigned switchId);
    std::string ageFrom(End const& talker, End const& listener, Frame const& answer);

    Frame make(Frame::Address destination, Frame::Address source, Vid const& vid) const;
    Frame::Address newStation() { return 0x020000000000 + ++_stations; }
    Outcome send(End const& from, Frame const& frame);

    TrafficBoard& _board;
    std::vector<Outcome::Ends> _trunks;
    Frame::Address _stations = 0;
};
