#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/BoardReading.hpp"
#include "board/audit/Deviation.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/PortSettings.hpp"

namespace switchctl::port {

/// Has the library set something on one port of a board that runs, and reads all settings of the chip before
/// and after it.
///
/// The library's port objects are made for it, without a start-up: nothing else is set up, and no table is
/// touched.
class PortChange {
public:
    /// Throws ToolError: registerFailed when the chip does not answer or cannot be read before anything was
    /// set, usage when the settings do not fit what is found.
    /// \param owner the port's switch; \param reading where it is from.
    PortChange(board::BoardAccess& board, board::BoardReading::Switch const& owner,
               chips::PortAddress const& port, chips::PortSettings const& settings);

    /// What the library or the bus complained of; empty when all was set.
    std::string const& getFailure() const { return _failure; }

    /// \name The chip's own idea of the port, in words; "unread" where it could not be read
    /// @{
    std::string const& getStateBefore() const { return _before; }
    std::string const& getStateAfter() const { return _after; }
    /// @}

    /// Of each field that is another one now, `expected` is what it was.
    std::vector<board::Deviation> const& getChanges() const { return _changes; }
    /// How many registers were compared.
    std::size_t getCompared() const { return _compared; }
    /// What could not be read and why; empty when all could.
    std::string const& getUnread() const { return _unread; }

private:
    chips::ChipImage readSettings();
    void readRegisters(chips::ChipImage& image);
    void requireSpeed();
    void carryOut(chips::PortSettings const& settings);
    bool use(std::function<bool(ManagedSwitchPort&)> const& action);
    std::string readState();
    void compare(chips::ChipImage const& before, chips::ChipImage const& after);

    board::BoardAccess& _board;
    board::BoardReading::Switch const& _owner;
    chips::PortAddress _port;
    chips::ChipCatalogue _catalogue;
    std::unique_ptr<chips::RegisterTransport> _transport;
    std::string _failure;
    std::string _before;
    std::string _after;
    std::vector<board::Deviation> _changes;
    std::size_t _compared = 0;
    std::string _unread;
};

} // namespace switchctl::port
