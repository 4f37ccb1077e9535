#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "chips/ExitStatus.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/Arguments.hpp"

namespace switchctl {

using chips::ExitStatus;
using chips::ToolError;

/// Something that the program can do: a verb of its command line, or what stands behind a verb.
class Command {
public:
    Command(char const* name, char const* purpose);
    virtual ~Command();
    Command(Command const&) = delete;
    Command& operator=(Command const&) = delete;

    /// Adds the command to those of a program or of another command.
    void addTo(Arguments& parent);

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// Does what it is for, and says on `errors` why it could not; throws nothing.
    ExitStatus run(std::ostream& out, std::ostream& errors) const;

    /// How the command ends, for the help.
    std::string explainStatuses() const;

protected:
    /// A status that the command may end with, and what it means.
    struct StatusLine {
        /// With the meaning that most commands give it.
        StatusLine(ExitStatus status); // NOLINT(google-explicit-constructor): rows of a table
        StatusLine(ExitStatus status, char const* text) : number(static_cast<int>(status)), meaning(text) {}

        int number;
        char const* meaning;
    };

    /// Binds the command's variables to its arguments.
    virtual void declare(Arguments& arguments) = 0;
    /// What the help says below the options; the statuses follow.
    virtual std::string getHelp() const = 0;
    virtual std::vector<StatusLine> getStatuses() const = 0;
    /// As run(); may throw.
    virtual ExitStatus perform(std::ostream& out, std::ostream& errors) const = 0;

    /// Adds --format and its short form --json.
    /// \param formats the words that it takes, of which one is "json".
    /// \param usual what holds without it.
    void addJson(Arguments& arguments, std::vector<std::string> const& formats = {"text", "json"},
                 std::string const& usual = "text");
    std::string getFormat() const { return _json ? "json" : _format; }
    bool isJson() const { return getFormat() == "json"; }

    /// "2026-11-22T04:05:06Z", whatever clock the thread lives by.
    static std::string timeOfDay();

    /// Prints an object with the version of the JSON documents before its members.
    static void print(std::ostream& out, nlohmann::ordered_json const& json);
    /// As print(), with the time, for what changes from one moment to the next.
    static void printWithTime(std::ostream& out, nlohmann::ordered_json const& json);
    /// As printWithTime(), in one line.
    static void printLineWithTime(std::ostream& out, nlohmann::ordered_json const& json);

private:
    char const* _name;
    char const* _purpose;
    std::optional<Arguments> _arguments;
    std::string _format;
    bool _json = false;
};

} // namespace switchctl
