#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "board/trace/TraceChips.hpp"
#include "chips/RegisterLocation.hpp"
#include "chips/TraceAccess.hpp"

namespace board {

/// How a trace is written; docs/trace-format.md has the grammar.
struct TraceFormat {
    /// The first line, with the version.
    static constexpr char const* firstLine = "switchctl trace 1";
    /// What it begins with, whatever the version.
    static constexpr char const* firstWords = "switchctl trace ";

    /// In the place of a number or value that there is not.
    static constexpr char const* none = "-";
    /// What stands for the register when the chip never took the access.
    static constexpr char const* busyChip = "SMICommand";

    static constexpr unsigned digitsOfSmiWord = 4;
    static constexpr char const* read = "R";
    static constexpr char const* write = "W";
    static constexpr char const* ok = "ok";
    static constexpr char const* failed = "failed";

    static char const* nameOf(chips::TraceAccess::Transport transport);
    static std::optional<chips::TraceAccess::Transport> transportOf(std::string const& name);

    /// Seconds with nine decimals.
    static std::string timeText(std::uint64_t nanoseconds);
    /// Nothing when the text is not such a time.
    static std::optional<std::uint64_t> timeOf(std::string const& text);

    /// Unit and register without blanks, for example "port1/PortControl"; "-" when it has no name.
    static std::string nameOf(chips::RegisterLocation const& location);

    /// The register, by its address as it is written; throws ToolError when the chip cannot have it.
    static chips::RegisterLocation find(chips::ChipCatalogue const& chip, std::string const& number);

    /// An access in one line, without a line end. Its chip must be one of `chips`.
    static std::string line(TraceChips const& chips, chips::TraceAccess const& access);

    /// The line of the header for a chip.
    static std::string chipLine(unsigned switchId, std::string const& model);
};

} // namespace board
