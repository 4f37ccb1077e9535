#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "chips/ChipImage.hpp"
#include "chips/RegisterTransport.hpp"
#include "simulation/AccessLog.hpp"

namespace chips {

/// The tables of a chip, as far as a bring-up determines them: entries that were written, and all of a
/// table that was cleared first, so that what else is in it is not the bring-up's. Or all of them.
class ChipTables {
public:
    virtual ~ChipTables() = default;

    /// An access of the bring-up to the chip; they come in order.
    virtual void take(simulation::AccessLog::Entry const& entry) = 0;

    /// From now on all of the tables counts as determined, written or not.
    virtual void takeAll() = 0;

    /// From now on addresses count, too, that come and go while frames pass: those that the chip learned, and
    /// where nothing but its age tells the others from these, all.
    virtual void takeLearned() = 0;

    /// What the tables are called in an image, when all are taken.
    virtual std::vector<std::string> getNames() const = 0;

    /// What is not read unless it is learned, in words.
    virtual std::vector<std::string> getLeftOut() const = 0;

    /// Reads what is determined, from any chip of the family. Throws ToolError (registerFailed).
    virtual void read(RegisterTransport& transport, ChipImage& image) const = 0;

protected:
    /// The low bytes of an address: "01:00:5e:01:02:03".
    static std::string addressText(std::uint64_t address, unsigned bytes);
};

} // namespace chips
