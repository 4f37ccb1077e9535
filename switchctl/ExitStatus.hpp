#pragma once

#include <string>

namespace switchctl {

/// How the program ends.
enum class ExitStatus : int {
    success = 0,
    switchMissing = 1,
    usage = 2,
    badDocument = 3,
    noHardware = 4,
    startUpFailed = 5,
    noStatistics = 6,
    noTrace = 7,
};

/// The list of all statuses, for people.
std::string exitStatusHelp();

} // namespace switchctl
