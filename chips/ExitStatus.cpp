#include "chips/ExitStatus.hpp"

namespace chips {

std::string exitStatusHelp() {
    return "Exit status:\n"
           "  0  every switch of the document came up\n"
           "  1  a switch of the document is missing, or the document has no switch\n"
           "  2  the command line is wrong\n"
           "  3  the document cannot be read or is not well-formed\n"
           "  4  the hardware cannot be reached (/dev/mem)\n"
           "  5  start-up ended before the switches were ready\n"
           "  6  the statistics of a port could not be read\n"
           "  7  the trace could not be written\n";
}

std::string registerExitStatusHelp() {
    return "Exit status:\n"
           "  0  done; of diff: the dumps are equal\n"
           "  1  of diff: the dumps differ\n"
           "  2  the command line, a location or a value is wrong\n"
           "  3  a document or dump cannot be read or is not well-formed\n"
           "  4  the chip cannot be reached (/dev/mem, the serial line)\n"
           "  5  the simulated board did not come up\n"
           "  7  the trace could not be written\n"
           "  8  a register could not be read or written\n"
           "  9  nothing was written, as --yes was missing\n";
}

std::string planExitStatusHelp() {
    return "Exit status:\n"
           "  0  done; of two documents: their plans are equal\n"
           "  1  the plans of two documents differ\n"
           "  2  the command line is wrong\n"
           "  3  a document cannot be read or is not well-formed\n"
           "  5  a bring-up on models fails, or not every switch would come up\n";
}

std::string auditExitStatusHelp() {
    return "Exit status:\n"
           "  0  all chips are as the document determines\n"
           "  1  at least one register or table entry deviates\n"
           "  2  the command line, a location or a value is wrong\n"
           "  3  a document cannot be read or is not well-formed\n"
           "  4  the hardware cannot be reached (/dev/mem)\n"
           "  5  a bring-up on models fails, or not every switch would come up\n"
           "  8  a chip could not be read completely\n";
}

std::string statisticsExitStatusHelp() {
    return "Exit status:\n"
           "  0  all counters were read; of --watch: in the last round\n"
           "  2  the command line, a port or a counter is wrong\n"
           "  3  the document cannot be read, is not well-formed or has no ports\n"
           "  4  the hardware cannot be reached (/dev/mem)\n"
           "  5  the simulated board does not come up\n"
           "  6  at least one counter could not be read\n";
}

std::string replayExitStatusHelp() {
    return "Exit status:\n"
           "  0  the models did what the trace says\n"
           "  1  they did something else\n"
           "  2  the command line is wrong\n"
           "  3  the trace cannot be read or is not well-formed\n";
}

std::string checkExitStatusHelp() {
    return "Exit status:\n"
           "  0  nothing was found, or notes only\n"
           "  2  the command line is wrong\n"
           "  3  errors were found, or the document cannot be read or is not well-formed\n"
           " 10  warnings were found, and no errors\n";
}

std::string drawExitStatusHelp() {
    return "Exit status:\n"
           "  0  the picture was written\n"
           "  2  the command line is wrong\n"
           "  3  the document cannot be read, is not well-formed or has no switch\n"
           " 11  the picture could not be drawn or written\n";
}

} // namespace chips
