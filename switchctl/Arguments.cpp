#include "switchctl/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <dtl/dtl.hpp>
#include <iterator>
#include <limits>
#include <utility>

namespace switchctl {

namespace {

std::string nearestTo(std::string const& word, std::vector<CLI::App*> const& commands) {
    std::string nearest;
    auto shortest = std::numeric_limits<long long>::max();
    for (CLI::App const* const command : commands) {
        std::string const name = command->get_name();
        dtl::Diff<char, std::string> difference(word, name);
        difference.compose();
        // Who shortens a word keeps its beginning.
        auto const end = std::mismatch(word.begin(), word.end(), name.begin(), name.end()).first;
        long long const distance = difference.getEditDistance() - std::distance(word.begin(), end);
        if (distance < shortest) {
            shortest = distance;
            nearest = name;
        }
    }
    return nearest;
}

/// The commands that a line names, one inside the other.
struct Path {
    Path(CLI::App& program, std::vector<std::string> const& words)
        : command(&program), text(program.get_name()) {
        for (auto word = words.begin(); word != words.end() && isOpen(); ++word) {
            if (word->rfind('-', 0) == 0) {
                skipValue(word, words.end());
            } else if (CLI::App* const next = find(*word)) {
                command = next;
                text += " " + *word;
            } else {
                unknown = *word;
            }
        }
    }

    std::string explainUnknown() const {
        std::string const nearest = nearestTo(unknown, command->get_subcommands(nullptr));
        return "there is no \"" + text + " " + unknown + "\"" + "; the nearest is \"" + text + " " + nearest +
               "\"";
    }

    CLI::App* command;
    /// As they are typed.
    std::string text;
    /// What stands in the place of a command and is none.
    std::string unknown;

private:
    bool isOpen() const { return unknown.empty() && command->get_require_subcommand_min() != 0; }

    CLI::App* find(std::string const& name) const {
        auto const found =
            command->get_subcommands([&](CLI::App const* app) { return app->get_name() == name; });
        return found.empty() ? nullptr : found.front();
    }

    void skipValue(std::vector<std::string>::const_iterator& word,
                   std::vector<std::string>::const_iterator end) const {
        auto const* const option = command->get_option_no_throw(*word);
        int const values = option == nullptr ? 0 : option->get_expected_min();
        for (int value = 0; value < values && word + 1 != end; ++value) {
            ++word;
        }
    }
};

} // namespace

Arguments::Option& Arguments::Option::type(char const* name) {
    _option->type_name(name);
    return *this;
}

Arguments::Option& Arguments::Option::required(bool isRequired) {
    _option->required(isRequired);
    return *this;
}

template <typename Number> Arguments::Option& Arguments::Option::range(Number lowest, Number highest) {
    _option->check(CLI::Range(lowest, highest));
    return *this;
}
template Arguments::Option& Arguments::Option::range(unsigned, unsigned);
template Arguments::Option& Arguments::Option::range(double, double);

Arguments::Option& Arguments::Option::oneOf(std::vector<std::string> const& words) {
    _option->check(CLI::IsMember(words));
    return *this;
}

Arguments::Option& Arguments::Option::check(std::function<std::string(std::string const&)> const& complaint) {
    _option->check(complaint);
    return *this;
}

Arguments::Option& Arguments::Option::oneEach() {
    _option->allow_extra_args(false);
    return *this;
}

Arguments::Option& Arguments::Option::values(unsigned count) {
    _option->expected(static_cast<int>(count));
    return *this;
}

Arguments::Option& Arguments::Option::showDefault() {
    _option->capture_default_str();
    return *this;
}

Arguments::Option& Arguments::Option::needs(Option const& other) {
    _option->needs(other._option);
    return *this;
}

Arguments::Option& Arguments::Option::excludes(Option const& other) {
    _option->excludes(other._option);
    return *this;
}

Arguments::Arguments(char const* program, char const* purpose, std::string const& footer)
    : _app(std::make_shared<CLI::App>(purpose, program)) {
    _app->footer(footer);
}

Arguments::Arguments(std::shared_ptr<CLI::App> app) : _app(std::move(app)) {}

template <typename Value>
Arguments::Option Arguments::option(char const* name, Value& value, char const* text) {
    return Option(*_app->add_option(name, value, text));
}
template Arguments::Option Arguments::option(char const*, std::string&, char const*);
template Arguments::Option Arguments::option(char const*, std::vector<std::string>&, char const*);
template Arguments::Option Arguments::option(char const*, unsigned&, char const*);
template Arguments::Option Arguments::option(char const*, std::optional<unsigned>&, char const*);
template Arguments::Option Arguments::option(char const*, std::optional<double>&, char const*);

template <typename Value>
Arguments::Option Arguments::flag(char const* name, Value& value, char const* text) {
    return Option(*_app->add_flag(name, value, text));
}
template Arguments::Option Arguments::flag(char const*, bool&, char const*);
template Arguments::Option Arguments::flag(char const*, std::string&, char const*);

Arguments::Option Arguments::get(char const* name) const {
    return Option(*_app->get_option(name));
}

Arguments Arguments::subcommand(char const* name, char const* purpose) {
    _app->require_subcommand(1);
    return Arguments(std::shared_ptr<CLI::App>(_app, _app->add_subcommand(name, purpose)));
}

void Arguments::footer(std::string const& text) {
    _app->footer(text);
}

void Arguments::version(std::string const& text) {
    _app->set_version_flag("--version", text);
}

void Arguments::finally(std::function<void()> check) {
    _app->final_callback([check = std::move(check)] {
        try {
            check();
        } catch (Wrong const& error) {
            throw CLI::ParseError(error.what(), CLI::ExitCodes::ValidationError);
        }
    });
}

Expectation Arguments::expect(std::vector<std::string> const& words) const {
    return {*_app, words};
}

bool Arguments::isChosen() const {
    return _app->parsed();
}

bool Arguments::isGiven(char const* option) const {
    return isChosen() && _app->count(option) != 0;
}

std::optional<chips::ExitStatus> Arguments::parse(std::vector<std::string> words, std::ostream& out,
                                                  std::ostream& errors) {
    if (!words.empty() && words.front() == "help") {
        words.erase(words.begin());
        words.emplace_back("--help");
    }
    Path const path(*_app, words);
    if (!path.unknown.empty()) {
        return refuse(words, path.explainUnknown(), errors);
    }
    // The parser takes them from the end.
    std::vector<std::string> const reversed(words.rbegin(), words.rend());
    try {
        auto remaining = reversed;
        _app->parse(remaining);
        return std::nullopt;
    } catch (CLI::Success const& success) {
        _app->exit(success, out, errors);
        return chips::ExitStatus::success;
    } catch (CLI::ParseError const& error) {
        return refuse(words, error.what(), errors);
    }
}

chips::ExitStatus Arguments::refuse(std::vector<std::string> const& words, std::string const& reason,
                                    std::ostream& errors) const {
    errors << _app->get_name() << ": " << reason << "\nSee \"" << Path(*_app, words).text << " --help\".\n";
    return chips::ExitStatus::usage;
}

} // namespace switchctl
