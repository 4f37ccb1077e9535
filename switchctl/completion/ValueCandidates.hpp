#pragma once

#include <string>
#include <vector>

namespace switchctl::completion {

/// What may be typed where a command line wants a value of a kind that chips and documents know.
class ValueCandidates {
public:
    /// \param words of the line up to the word at the cursor: a document among them has the switches and
    /// ports.
    explicit ValueCandidates(std::vector<std::string> words);

    /// Whether such a value is the name of a file.
    static bool areFiles(std::string const& value);

    /// \param value what the help calls it, for example "SWITCH.PORT".
    /// \param typed of the value so far. What follows its next "/", ":" or "=" comes once that is typed.
    std::vector<std::string> get(std::string const& value, std::string const& typed) const;

private:
    using Words = std::vector<std::string>;

    Words getPorts() const;
    Words getRegisters(std::string const& typed) const;
    Words getAssignments(std::string const& typed) const;
    Words getSettings(std::string const& typed) const;
    Words getDeviations(std::string const& typed) const;
    Words getFaults(std::string const& typed) const;
    Words getSeeds(std::string const& typed) const;
    std::string getModel() const;
    bool has(char const* word) const;

    Words _words;
};

} // namespace switchctl::completion
