#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "chips/ExitStatus.hpp"
#include "switchctl/Expectation.hpp"

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace switchctl {

/// What the words of a command line mean to a command: they are put into variables that the command binds
/// here, before its run. Only this class and Expectation know the
/// library that parses them.
class Arguments {
public:
    /// Thrown by a final check; what() says what is wrong with the line.
    using Wrong = std::invalid_argument;

    /// One option or positional argument; operations can be chained.
    class Option {
    public:
        explicit Option(CLI::Option& option) : _option(&option) {}

        /// What stands for the value in the help.
        Option& type(char const* name);
        Option& required(bool isRequired = true);
        /// Both ends are allowed.
        template <typename Number> Option& range(Number lowest, Number highest);
        Option& oneOf(std::vector<std::string> const& words);
        /// \param complaint returns what is wrong with a value, or nothing.
        Option& check(std::function<std::string(std::string const&)> const& complaint);
        /// Of an option that may be repeated: each value comes with the option's name.
        Option& oneEach();
        /// So many values stand behind the option's name.
        Option& values(unsigned count);
        /// The help tells what the variable holds now.
        Option& showDefault();
        Option& needs(Option const& other);
        Option& excludes(Option const& other);

    private:
        CLI::Option* _option;
    };

    /// Those of a program, which has commands.
    Arguments(char const* program, char const* purpose, std::string const& footer);

    /// An option, with dashes, or a positional argument, without. The variables have to outlive the parsing.
    template <typename Value> Option option(char const* name, Value& value, char const* text);

    /// An option that needs no value; given one, a text takes it, and otherwise becomes "true".
    template <typename Value> Option flag(char const* name, Value& value, char const* text);

    /// One that was added before.
    Option get(char const* name) const;

    /// A command of this command; one of them has to be chosen.
    Arguments subcommand(char const* name, char const* purpose);

    /// What the help ends with.
    void footer(std::string const& text);

    /// What --version prints.
    void version(std::string const& text);

    /// Called after parsing when the command is chosen; throws Wrong.
    void finally(std::function<void()> check);

    /// Whether the command line chose this command, and whether it has that option.
    bool isChosen() const;
    bool isGiven(char const* option) const;

    /// What may stand at the end of a line of the program that is being typed.
    /// \param words without the program's name; the last is the one at the cursor.
    Expectation expect(std::vector<std::string> const& words) const;

    /// Parses a program's command line, which comes without the program's name, and fills the variables.
    /// "help" with a command is that command's --help. \param out gets the help, `errors` what is wrong with
    /// the line. \return how the program ends, or nothing when one of its commands is to be run.
    std::optional<chips::ExitStatus> parse(std::vector<std::string> words, std::ostream& out,
                                           std::ostream& errors);

private:
    explicit Arguments(std::shared_ptr<CLI::App> app);
    chips::ExitStatus refuse(std::vector<std::string> const& words, std::string const& reason,
                             std::ostream& errors) const;

    /// Of a command it is kept by the program's.
    std::shared_ptr<CLI::App> _app;
};

} // namespace switchctl
