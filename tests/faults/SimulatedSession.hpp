#pragma once

#include "board/BoardSession.hpp"

namespace fault_test {

/// Options of a session with a simulated board that says everything to `log`.
board::BoardSession::Options simulatedSession(reference_host::LogSink& log);

} // namespace fault_test
