#include "switchctl/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

namespace switchctl {

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

Arguments::Option& Arguments::Option::oneOf(std::initializer_list<std::string> words) {
    _option->check(CLI::IsMember(std::vector<std::string>(words)));
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

void Arguments::finally(std::function<void()> check) {
    _app->final_callback([check = std::move(check)] {
        try {
            check();
        } catch (Wrong const& error) {
            throw CLI::ParseError(error.what(), CLI::ExitCodes::ValidationError);
        }
    });
}

bool Arguments::isChosen() const {
    return _app->parsed();
}

bool Arguments::isGiven(char const* option) const {
    return isChosen() && _app->count(option) != 0;
}

std::optional<chips::ExitStatus> Arguments::parse(std::vector<std::string> words, std::ostream& out,
                                                  std::ostream& errors) {
    // The parser takes them from the end.
    std::reverse(words.begin(), words.end());
    try {
        _app->parse(words);
        return std::nullopt;
    } catch (CLI::ParseError const& error) {
        return _app->exit(error, out, errors) == 0 ? chips::ExitStatus::success : chips::ExitStatus::usage;
    }
}

} // namespace switchctl
