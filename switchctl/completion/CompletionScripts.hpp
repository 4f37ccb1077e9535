#pragma once

#include <map>
#include <string>

namespace switchctl::completion {

/// What shells load to complete the program's command lines.
class CompletionScripts {
public:
    /// By the shell's name.
    static std::map<std::string, std::string> const& getAll();
};

} // namespace switchctl::completion
