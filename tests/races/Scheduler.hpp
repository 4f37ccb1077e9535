#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace race_test {

/// Runs threads one at a time, from one point of theirs to the next, in an order that it is told.
///
/// A participant stops at its points until it is its turn. Between two points it must not wait for
/// another participant.
class Scheduler {
public:
    /// One decision: which of how many that could go on did.
    struct Choice {
        std::size_t chosen;
        std::size_t possible;
    };

    /// \param plan the decisions to take, modulo the number of those who can go on, as long as there are
    ///        any; afterwards the first one that can.
    explicit Scheduler(std::vector<std::size_t> plan);
    Scheduler(Scheduler const&) = delete;
    Scheduler& operator=(Scheduler const&) = delete;

    /// The one of the calling thread, or null.
    static Scheduler* current();

    /// \name On the thread of a participant
    /// @{

    /// The calling thread takes part from now on, and stops.
    /// \param expected it has been announced by expect().
    void enter(std::string const& name);

    /// The calling thread stops. It can go on when `isPossible` says so; called by any thread.
    void stop(std::function<bool()> isPossible = [] { return true; });

    /// The calling thread goes to wait for something that another one will announce by wake().
    void sleep();

    /// The calling thread takes part no longer.
    void leave();
    /// @}

    /// A participant of that name is on its way: nothing goes on until it has entered.
    void expect(std::string const& name);

    /// A sleeping participant is about to wake up by itself; one that does not sleep is let alone.
    void wake(std::string const& name);

    /// Whether the participant sleeps.
    bool isAsleep(std::string const& name) const;

    /// Lets the participants run until nobody can.
    /// \return false when somebody is left that has stopped, or nothing has happened for a long time.
    bool run();

    /// What was decided so far.
    std::vector<Choice> const& getChoices() const;

private:
    enum class State { running, stopped, asleep, gone };
    struct Participant {
        State state = State::running;
        std::function<bool()> isPossible;
    };

    bool isAnyoneRunning() const;
    std::vector<Participant*> whoCanGoOn();
    std::size_t decide(std::size_t possible);

    std::vector<std::size_t> _plan;
    std::vector<Choice> _choices;
    mutable std::mutex _mutex;
    std::condition_variable _changed;
    std::map<std::string, Participant> _participants;
};

} // namespace race_test
