#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "simulation/MisuseReport.hpp"
#include "simulation/PseudoTerminal.hpp"
#include "simulation/SerialControllerChip.hpp"
#include "simulation/SerialControllerCommand.hpp"
#include "simulation/SerialControllerLine.hpp"
#include "simulation/VirtualClock.hpp"

namespace simulation {

class SimulatedBoard;

/// The small controller beside a board's VSC7390: takes one-line commands from a serial line, which
/// is a pseudo-terminal, and carries them out on the chip's parallel bus.
///
///     r BLOCK SUB-BLOCK ADDRESS          answered by 0x, eight hexadecimal digits, CR LF
///     w BLOCK SUB-BLOCK ADDRESS VALUE
///     i PHY REGISTER                     answered by 0x, four hexadecimal digits, CR LF
///     o PHY REGISTER VALUE
///
/// Operands are decimal, lines end with CR LF. Lines that are no command, and reads that the chip does
/// not answer, get no answer; the former show in the board's misuse report. PHYs are reached through
/// the chip's MII controller 1.
///
/// Works on a thread of its own, by the clock of the machine. Any thread may call.
class SerialController {
public:
    /// `board` must outlive the controller. Throws std::out_of_range when it has no VSC7390, and
    /// std::system_error when the machine has no pseudo-terminal.
    explicit SerialController(SimulatedBoard& board);

    /// Answers that are still to come are lost.
    ~SerialController();
    SerialController(SerialController const&) = delete;
    SerialController& operator=(SerialController const&) = delete;

    /// What drivers open.
    std::string const& getDevicePath() const;

    /// \name What went over the line
    /// @{

    /// Every character so far: from the driver, and to it.
    std::string getReceived() const;
    std::string getSent() const;

    /// Lines that have been dealt with, good and bad. Their effects are there, and their answers are on
    /// the line unless they are delayed.
    unsigned getCommands() const;

    /// Waits, at most ten seconds, until that many lines have been dealt with.
    bool waitForCommands(unsigned count) const;

    /// The device as the driver sees it.
    PseudoTerminal const& getTerminal() const;
    /// @}

    /// \name Faults
    /// @{
    enum class Disturbance {
        none,
        /// No answer at all.
        silent,
        /// The last characters are missing.
        shortened,
        /// Question marks instead of the digits.
        garbled,
        /// Plus signs after the line end.
        lengthened,
    };

    /// Answers are like that from now on.
    /// \param characters how many are missing or too many.
    void disturb(Disturbance disturbance, unsigned characters = 1);

    /// The next answer is this text, whatever the command reads. Disturbances do not apply to it.
    void answerNext(std::string const& text);

    /// Something happens to one character of the line; see SerialControllerLine::disturb.
    void disturbCharacter(SerialControllerLine::Direction direction, std::size_t character,
                          SerialControllerLine::CharacterFault fault);

    /// Waits, at most ten seconds, until so many characters that the driver has written are dealt with.
    bool waitForCharacters(std::size_t count) const;

    /// From now on answers come that much later as `clock` counts; 0 is at once. The clock must outlive
    /// the controller or the next call.
    void delayAnswers(VirtualClock& clock, std::uint64_t nanoseconds);
    /// @}

private:
    void run();
    void take(std::string const& text);
    void countCharacters();
    void finishLine();
    void execute(std::string const& line);
    void carryOut(SerialControllerCommand const& command);
    void answer(std::optional<std::uint32_t> value, unsigned digits);
    void transmit(std::string const& text);
    void report(std::string const& line, std::string const& reason);
    void countCommand();

    MisuseReport& _misuse;
    SerialControllerChip _chip;
    std::shared_ptr<SerialControllerLine> _line;
    /// Readable once the thread is to end.
    int _end;

    /// Of the thread.
    std::string _pending;

    mutable std::mutex _mutex;
    mutable std::condition_variable _changed;
    unsigned _commands = 0;
    std::size_t _characters = 0;
    Disturbance _disturbance = Disturbance::none;
    unsigned _disturbedCharacters = 0;
    std::optional<std::string> _nextAnswer;
    VirtualClock* _delayClock = nullptr;
    std::uint64_t _delayNanoseconds = 0;

    std::thread _thread;
};

} // namespace simulation
