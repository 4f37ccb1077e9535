#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterDump.hpp"

namespace switchctl::registers {

/// Reads a dump from text.
class DumpReader {
public:
    /// \param name what the text is called in messages.
    explicit DumpReader(std::string name);

    /// Throws ToolError (badDocument).
    RegisterDump read(std::string const& text);

private:
    void readText(std::string const& text);
    void readLine(std::string const& line);
    void readJson(std::string const& text);
    nlohmann::json parseJson(std::string const& text);
    void setChip(std::string const& model, std::string const& where);
    void addRegister(std::string const& unit, std::string const& name, std::uint32_t value,
                     std::string const& where);
    std::string here() const;

    [[noreturn]] static void refuse(std::string const& where, std::string const& reason);

    std::string _name;
    std::size_t _line = 0;
    std::string _unit;
    RegisterDump _dump;
};

} // namespace switchctl::registers
