#pragma once

#include <csignal>

namespace switchctl {

/// Has the signals that end a command (SIGINT, SIGTERM) wait until they are asked for, on the thread that
/// constructs it and all that are made meanwhile.
class EndSignals {
public:
    EndSignals();
    ~EndSignals();
    EndSignals(EndSignals const&) = delete;
    EndSignals& operator=(EndSignals const&) = delete;

    /// Returns once one of them has come.
    void wait() const;

    /// \param seconds of the machine's time, whatever clock the thread lives by.
    /// \return whether one of them has come; false once the time is over.
    bool waitFor(double seconds) const;

private:
    sigset_t _signals{};
    sigset_t _before{};
};

} // namespace switchctl
