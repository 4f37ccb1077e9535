#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "switchctl/doctor/ExaminedBoard.hpp"

namespace switchctl::doctor {

/// What an examination shows, in text and JSON.
class DoctorReport {
public:
    /// All must outlive the report.
    /// \param examined what was looked at, for example "the board's chips".
    DoctorReport(board::BoardReading const& document, std::vector<ExaminedBoard::Family> const& families,
                 std::string path, std::string examined);

    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    /// Whether there are switches in the document, and all of them answer as they should.
    bool isWell() const;
    /// Whether those that answer were asked which product they are.
    bool isIdentified() const;

private:
    struct State {
        /// Nothing where it was not looked at.
        std::optional<bool> answers;
        std::string text;
    };
    State stateOf(board::BoardReading::Wanted const& wanted) const;
    void printReadings(std::ostream& out) const;
    void printFindings(std::ostream& out) const;
    std::vector<std::string> getUnread() const;

    board::BoardReading const& _document;
    std::vector<ExaminedBoard::Family> const& _families;
    std::string _path;
    std::string _examined;
};

} // namespace switchctl::doctor
