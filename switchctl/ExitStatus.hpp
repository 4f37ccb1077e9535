#pragma once

#include <string>

namespace switchctl {

/// How the program ends.
enum class ExitStatus : int {
    success = 0,
    switchMissing = 1,
    registersDiffer = 1,
    usage = 2,
    badDocument = 3,
    noHardware = 4,
    startUpFailed = 5,
    noStatistics = 6,
    noTrace = 7,
    registerFailed = 8,
    notConfirmed = 9,
};

/// The list of the statuses of bringing a board up, for people.
std::string exitStatusHelp();

/// As exitStatusHelp(), of the commands for registers.
std::string registerExitStatusHelp();

} // namespace switchctl
