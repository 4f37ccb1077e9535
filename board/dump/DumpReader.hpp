#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "board/dump/RegisterDump.hpp"
#include "chips/ToolError.hpp"

namespace board {

/// Reads a dump from text.
class DumpReader {
public:
    /// \param name what the text is called in messages.
    explicit DumpReader(std::string name);

    /// What the line of a table begins with.
    static constexpr char const* tableWord = "table ";

    /// Throws ToolError (badDocument).
    RegisterDump read(std::string const& text);

private:
    void readText(std::string const& text);
    void readLine(std::string const& line);
    void readEntry(std::string const& line);
    void readJson(std::string const& text);
    void readJsonTable(nlohmann::json const& table);
    nlohmann::json parseJson(std::string const& text);
    void setChip(std::string const& model, std::string const& where);
    void addRegister(std::string const& unit, std::string const& name, std::uint32_t value,
                     std::string const& where);
    void addTable(std::string const& name, std::string const& where);
    /// To the last table.
    void addEntry(RegisterDump::Entry const& entry);
    std::string here() const;
    static std::uint32_t valueOf(nlohmann::json const& number, std::string const& where);

    [[noreturn]] static void refuse(std::string const& where, std::string const& reason);

    std::string _name;
    std::size_t _line = 0;
    std::string _unit;
    bool _isInTable = false;
    /// Of the last table.
    std::set<std::string> _entryNames;
    RegisterDump _dump;
};

} // namespace board
