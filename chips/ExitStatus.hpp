#pragma once

namespace chips {

/// How the program ends.
enum class ExitStatus : int {
    success = 0,
    switchMissing = 1,
    registersDiffer = 1,
    plansDiffer = 1,
    chipsDeviate = 1,
    traceDiverges = 1,
    notDelivered = 1,
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
    errorsFound = 12,
    notAsDetermined = 13,
    noProgress = 14,
    outputLost = 15,
    notLookedAt = 16,
};

} // namespace chips
