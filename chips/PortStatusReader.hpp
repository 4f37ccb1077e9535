#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/CounterReader.hpp"
#include "chips/PortStatus.hpp"
#include "chips/RegisterTransport.hpp"

namespace chips {

class ChipKind;

/// Reads what a chip's registers tell of its ports, by one of the library's transports. It changes no setting
/// and clears no counter; a PHY's status forgets, by being read, that the link was lost.
class PortStatusReader {
public:
    /// All must outlive the reader.
    PortStatusReader(ChipKind const& kind, ChipCatalogue const& catalogue, RegisterTransport& transport);
    virtual ~PortStatusReader() = default;
    PortStatusReader(PortStatusReader const&) = delete;
    PortStatusReader& operator=(PortStatusReader const&) = delete;

    /// \param unread gets a line for each register that could not be read. When the chip is gone, nothing
    /// else of the port is tried.
    PortStatus read(PortAddress const& port, std::vector<std::string>& unread);

protected:
    /// Nothing when it could not be read.
    std::optional<std::uint32_t> tryRead(simulation::UnitKind unit, unsigned number, unsigned address);

    /// Its two identifiers: those of a PHY that does not answer on a bus without pull-down are all ones.
    PortStatus::Fact<std::string> readIdentity(unsigned phy);

    /// Whether a register of a PHY could not be read since no PHY answers, of chips that tell. Throws
    /// ToolError (registerFailed).
    virtual bool isPhyAbsent(RegisterTransport& /*transport*/, ChipCatalogue const& /*catalogue*/) {
        return false;
    }
    /// After a register of a PHY was tried.
    bool wasPhyAbsent() const { return _isPhyAbsent; }

private:
    virtual void readInto(unsigned port, PortStatus& status) = 0;
    void complain(bool isPhy, std::string const& reason);
    PortStatus::Fact<std::uint64_t> readErrors(PortAddress const& port);

    ChipKind const& _kind;
    ChipCatalogue const& _catalogue;
    RegisterTransport& _transport;
    std::unique_ptr<CounterReader> _counters;
    std::string _port;
    std::vector<std::string>* _unread = nullptr;
    bool _isLost = false;
    bool _isPhyAbsent = false;
};

} // namespace chips
