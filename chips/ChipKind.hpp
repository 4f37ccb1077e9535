#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "chips/AccessErrors.hpp"
#include "chips/ChipTables.hpp"
#include "chips/Counter.hpp"
#include "chips/CounterReader.hpp"
#include "chips/Examination.hpp"
#include "chips/PortAddress.hpp"
#include "chips/PortStatusReader.hpp"
#include "chips/RegisterTransport.hpp"
#include "chips/TableReader.hpp"
#include "chips/TraceAccess.hpp"
#include "chips/TraceSink.hpp"
#include "chips/WindowDecoder.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "simulation/SimulatedBoard.hpp"

class Application;
class ManagedSwitch;

namespace chips {

/// What tools know of a chip family besides its model's tables. ChipKinds has those that there are.
class ChipKind {
public:
    using Transport = TraceAccess::Transport;

    /// What the library can set on a port, and what the chip says of it.
    struct Settings {
        /// What ManagedSwitchPort::portStatus() stands for; the first means stopped, the last started.
        std::vector<std::string> states;
        /// What it takes for half duplex.
        ManagedSwitchPort::DuplexSetting halfDuplex;
        /// The ports before this one are Fast Ethernet, with a PHY of the chip's whose crossover it sets.
        unsigned firstGigabitPort;
        /// Whether it can have a port not learn addresses.
        bool hasLearning;
        /// Where a port that starts needs a speed: its register, and the field, which is 0 before the first
        /// one.
        std::optional<unsigned> speedRegister = {};
        simulation::Field speed = {"", 0, 0};
        /// What else is set when one port is; empty when nothing is.
        std::string sideEffect = {};
    };

    struct Facts {
        /// The text of the switchModel attribute, and what people call the chip.
        std::string model;
        std::string name;
        unsigned ports;
        /// The ways to a chip; a board has the first.
        std::vector<Transport> transports;
        /// Where a chip says what it is, and what a chip of the family says.
        simulation::UnitKind identifierUnit;
        unsigned identifier;
        simulation::Field product;
        unsigned productNumber;
        /// Those of a port, as the library's text has them.
        std::vector<Counter> counters;
        /// Whether PHYs are part of the chip; others may or may not be on a board.
        bool hasOwnPhys = false;
        /// Whether the library sets up trunks on it.
        bool hasTrunks = false;
        Settings settings = {};
    };

    /// What a transport takes.
    struct Reach {
        Application& application;
        AccessErrors& errors;
        unsigned switchId;
        /// Path of the serial line, where it goes over one.
        std::string line = {};
    };

    explicit ChipKind(Facts facts) : _facts(std::move(facts)) {}
    virtual ~ChipKind() = default;
    ChipKind(ChipKind const&) = delete;
    ChipKind& operator=(ChipKind const&) = delete;

    Facts const& getFacts() const { return _facts; }
    bool isReachedOver(Transport transport) const;

    /// The way to a chip's registers. What `reach` names must outlive it.
    virtual std::unique_ptr<RegisterTransport> connect(Transport transport, Reach const& reach) const = 0;

    /// Whether a chip of the kind answers; throws ToolError (registerFailed) when nothing does.
    bool answers(ChipCatalogue const& catalogue, RegisterTransport& transport) const;

    /// What reads the counters; one whose counters are all registers of the port needs nothing else.
    virtual std::unique_ptr<CounterReader> makeCounterReader(ChipCatalogue const& catalogue,
                                                             RegisterTransport& transport) const;

    /// What reads the state of ports.
    virtual std::unique_ptr<PortStatusReader> makePortStatusReader(ChipCatalogue const& catalogue,
                                                                   RegisterTransport& transport) const = 0;

    /// What reads the chip's tables for people, and flushes addresses.
    virtual std::unique_ptr<TableReader> makeTableReader(ChipCatalogue const& catalogue,
                                                         RegisterTransport& transport) const = 0;

    /// Has a counter of a model hold the value. Throws std::out_of_range when the board has no such chip.
    virtual void seed(simulation::SimulatedBoard& board, PortAddress const& port, Counter const& counter,
                      std::uint64_t value) const = 0;

    /// \param catalogue must outlive the tables.
    virtual std::unique_ptr<ChipTables> makeTables(ChipCatalogue const& catalogue) const = 0;

    /// Has the accesses to a chip decoded, in its bus's window; `sink` gets them.
    virtual void decode(unsigned switchId, TraceSink& sink, DecodedWindows& windows) const = 0;

    /// Whether the library's switch is one of the family.
    virtual bool drives(ManagedSwitch const& managedSwitch) const = 0;

    /// Looks whether the switches of a document answer, for a board that may not: without a bring-up, in a
    /// time that is bounded, and writing to no chip unless that is allowed. Throws ToolError (noHardware)
    /// when there is no way to look at all. \param reach has the path of a serial line where the chips are to
    /// be reached over it; its switch id says
    ///        nothing.
    virtual Examination examine(Reach const& reach, ExaminationRequest const& request) const = 0;

    /// Throws ToolError (registerFailed) when no chip of the family answers.
    void requireChip(ChipCatalogue const& catalogue, RegisterTransport& transport) const;

    /// Has the library's own port object act, which is made for it, and those of the switch's other ports
    /// beside it. Making them sets nothing up but the bus, as each way to a chip does.
    /// \param ports that the switch knows; `port` is one of them.
    /// \return what `use` returns. May throw a text (char const*).
    virtual bool usePort(Reach const& reach, std::vector<unsigned> const& ports, unsigned port,
                         std::function<bool(ManagedSwitchPort&)> const& use) const = 0;

private:
    Facts _facts;
};

} // namespace chips
