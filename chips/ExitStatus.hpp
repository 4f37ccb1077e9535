#pragma once

#include <string>

namespace chips {

/// How the program ends.
enum class ExitStatus : int {
    success = 0,
    switchMissing = 1,
    registersDiffer = 1,
    plansDiffer = 1,
    chipsDeviate = 1,
    traceDiverges = 1,
    usage = 2,
    badDocument = 3,
    noHardware = 4,
    startUpFailed = 5,
    noStatistics = 6,
    noTrace = 7,
    registerFailed = 8,
    notConfirmed = 9,
    documentWarnings = 10,
    noPicture = 11,
};

/// The list of the statuses of bringing a board up, for people.
std::string exitStatusHelp();

/// As exitStatusHelp(), of the commands for registers.
std::string registerExitStatusHelp();

/// As exitStatusHelp(), of the plan of a bring-up, of the audit of a board and of a trace's replay.
std::string planExitStatusHelp();
std::string auditExitStatusHelp();
std::string replayExitStatusHelp();

/// As exitStatusHelp(), of the statistics of ports.
std::string statisticsExitStatusHelp();

/// As exitStatusHelp(), of the check of a document.
std::string checkExitStatusHelp();

/// As exitStatusHelp(), of drawing a board.
std::string drawExitStatusHelp();

} // namespace chips
