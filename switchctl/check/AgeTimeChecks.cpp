#include "switchctl/check/CheckTable.hpp"

#include <cstdint>
#include <limits>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"

namespace switchctl::check {

namespace {

constexpr unsigned int step = 15;
constexpr unsigned int halfStep = 7;
constexpr unsigned int longest = 255 * step;
constexpr unsigned int notConfigured = std::numeric_limits<std::uint16_t>::max();

/// A switch element with an age time: as it is written, and as it is kept.
struct AgeTime {
    xmlNodePtr element = nullptr;
    std::string text;
    unsigned int seconds = 0;
};

template <typename Use>
void forEachAgeTime(board::BoardReading const& board, board::BoardReading::Chip chip, Use use) {
    for (xmlNodePtr const element : board.find("//switches/switch[@atuAgeTime]")) {
        if (board::BoardReading::chipOf(element) == chip) {
            AgeTime time;
            time.element = element;
            time.text = board::attribute(element, "atuAgeTime").value_or("");
            time.seconds = static_cast<std::uint16_t>(board::decimalPrefix(time.text).value_or(0));
            use(time);
        }
    }
}

template <typename Use> void forEachMarvellAgeTime(board::BoardReading const& board, Use use) {
    forEachAgeTime(board, board::BoardReading::Chip::marvell88E6096, use);
}

bool isCut(AgeTime const& time) {
    std::optional<int> const written = board::decimalPrefix(time.text);
    return written && *written != static_cast<int>(time.seconds);
}

std::string inSteps() {
    return "Write a multiple of 15 from 15 to 3825, or 0 for addresses that are never forgotten.";
}

void rounded(board::BoardReading const& board, Report const& report) {
    forEachMarvellAgeTime(board, [&](AgeTime const& time) {
        if (time.seconds < step || time.seconds > longest || time.seconds % step == 0) {
            return;
        }
        unsigned int const nearest = (time.seconds + halfStep) / step * step;
        report(time.element,
               "The chip counts in steps of 15 seconds: the library sets " + std::to_string(nearest) +
                   " seconds instead of " + std::to_string(time.seconds) + ".",
               inSteps());
    });
}

void outOfRange(board::BoardReading const& board, Report const& report) {
    forEachMarvellAgeTime(board, [&](AgeTime const& time) {
        bool const tooShort = time.seconds > 0 && time.seconds < step;
        bool const tooLong = time.seconds > longest && time.seconds != notConfigured;
        if (tooShort || tooLong) {
            report(time.element,
                   "The chip cannot count " + std::to_string(time.seconds) +
                       " seconds: the library warns and sets " + std::to_string(tooShort ? step : longest) +
                       ".",
                   inSteps());
        }
    });
}

void cut(board::BoardReading const& board, Report const& report) {
    forEachMarvellAgeTime(board, [&](AgeTime const& time) {
        if (isCut(time)) {
            report(time.element,
                   "The library keeps 16 bits of the number: " + time.text + " becomes " +
                       std::to_string(time.seconds) +
                       (time.seconds == notConfigured ? ", which means not configured." : " seconds."),
                   inSteps());
        }
    });
}

void notANumber(board::BoardReading const& board, Report const& report) {
    forEachMarvellAgeTime(board, [&](AgeTime const& time) {
        if (!board::decimalPrefix(time.text)) {
            report(time.element,
                   "The library reads a text that does not begin with a number as 0: the switch never "
                   "forgets an address.",
                   "Write seconds as a number, or leave the attribute out to keep the chip's own time.");
        } else if (!isCut(time) && std::to_string(time.seconds) != time.text && !board::isDigits(time.text)) {
            report(time.element,
                   "The library reads " + std::to_string(time.seconds) + " and ignores the rest of \"" +
                       time.text + "\".",
                   "Write digits only.");
        }
    });
}

void meansDefault(board::BoardReading const& board, Report const& report) {
    forEachMarvellAgeTime(board, [&](AgeTime const& time) {
        if (time.seconds == notConfigured && !isCut(time)) {
            report(time.element, "65535 means not configured: the chip keeps its own time.",
                   "Leave the attribute out, or write at most 3825.");
        }
    });
}

void ignored(board::BoardReading const& board, Report const& report) {
    forEachAgeTime(board, board::BoardReading::Chip::vitesse7390, [&](AgeTime const& time) {
        report(time.element, "The library sets the age time of 88E6096 switches only and ignores this one.",
               "Leave the attribute out.");
    });
}

} // namespace

std::vector<Check> ageTimeChecks() {
    return {
        {"age-time-rounded", Severity::note, "an age time that is no multiple of 15 seconds", rounded},
        {"age-time-out-of-range", Severity::warning, "an age time that the chip cannot count", outOfRange},
        {"age-time-cut", Severity::error, "an age time of more than 16 bits", cut},
        {"age-time-not-a-number", Severity::error, "an age time that is not a number", notANumber},
        {"age-time-means-default", Severity::note, "an age time of 65535", meansDefault},
        {"age-time-ignored", Severity::warning, "an age time of a VSC7390", ignored},
    };
}

} // namespace switchctl::check
