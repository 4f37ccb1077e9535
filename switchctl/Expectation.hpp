#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace switchctl {

/// What may stand at the cursor of a command line that is being typed, as far as the declared arguments tell.
/// Beside Arguments, the one class that knows the library that parses them.
class Expectation {
public:
    /// \param words from the program's name, which is left out, to the cursor; the last may be empty or
    /// incomplete.
    Expectation(CLI::App& program, std::vector<std::string> words);

    /// Commands, options and values that are listed in a declaration, not filtered by what is typed already.
    std::vector<std::string> const& getWords() const { return _words; }

    /// What the help calls the value that is expected, for example "SWITCH.PORT"; empty when there is none.
    std::string const& getValue() const { return _value; }

    /// What stands before the value in the word at the cursor, for example "--simulate=".
    std::string const& getPrefix() const { return _prefix; }

private:
    void follow(std::string const& word);
    void finish(std::string const& current);
    void addCommands();
    void addOptions();
    void expectValueOf(CLI::Option const& option);
    CLI::Option* findOption(std::string const& name) const;
    CLI::Option* getPositional() const;

    CLI::App* _command;
    /// The option that waits for a value.
    CLI::Option const* _open = nullptr;
    std::size_t _positionals = 0;
    std::vector<std::string> _words;
    std::string _value;
    std::string _prefix;
};

} // namespace switchctl
