#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <optional>

#include "marvell/Arm920tMdioAccess.hpp"
#include "simulation/MdioBus.hpp"

namespace chips {

/// Looks at all addresses of the MDIO bus, without writing to what is there: only the MAC of the processor is
/// told to read, and its management clock is set while the scan exists.
class MdioScan {
public:
    enum class End {
        complete,
        /// The master showed busy for a second.
        masterBusy,
        /// An access to the master's own registers failed.
        accessFailed,
        /// It took longer than `mostSeconds`.
        tooSlow,
    };

    /// Registers 2 and 3 are read everywhere: identifiers of PHYs, and harmless in all that answers. Register
    /// 0 is read only where these say nothing.
    struct Address {
        std::uint16_t identifier1 = 0;
        std::uint16_t identifier2 = 0;
        std::uint16_t command = 0;
        bool isCommandRead = false;
        /// Whether all that was read twice was the same twice.
        bool isSteady = true;

        bool isAll(std::uint16_t value) const {
            return identifier1 == value && identifier2 == value && isCommandRead && command == value;
        }
        bool operator==(Address const& other) const;
    };

    static constexpr unsigned numberOfAddresses = simulation::MdioBus::numberOfAddresses;
    static constexpr double mostSeconds = 3.0;

    explicit MdioScan(Application& application);

    End run();

    /// Those below getDone() were read.
    Address const& at(unsigned address) const { return _addresses.at(address); }
    unsigned getDone() const { return _done; }
    bool isEverywhere(std::uint16_t value) const;
    bool hasUnsteady() const;

    /// What the master's own registers last read as: its status, and its control, which was written before.
    std::uint32_t getStatus() const { return _mdio.status; }
    std::optional<std::uint32_t> readControl();

    /// Reads register 0 until its highest bit, an 88E6096's busy, is 0; for a tenth of a second.
    bool becomesFree(unsigned address);

private:
    /// The library's access, with failures that it leaves aside noticed.
    class Access : public Arm920tMdioAccess {
    public:
        explicit Access(Application& application) : Arm920tMdioAccess(application, false) {}
        bool set(unsigned int offset, unsigned int value) override;
        bool get(unsigned int offset, unsigned int& value) const override;

        mutable bool hasFailed = false;
        mutable std::uint32_t status = 0;
    };

    bool look(unsigned address);
    bool readTwice(unsigned address, unsigned reg, std::uint16_t& value, bool& isSteady);

    Access _mdio;
    std::array<Address, numberOfAddresses> _addresses{};
    unsigned _done = 0;
};

} // namespace chips
