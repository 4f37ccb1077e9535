#pragma once

#include <string>
#include <vector>

/// What a program did that has ended.
struct ChildProcess {
    /// The exit status, or -1 when a signal ended it.
    int status = -1;
    std::string out;
    std::string errors;

    /// What its standard streams are, where they are not what a test looks at; "closed" for a closed one.
    struct Streams {
        std::string in = "/dev/null";
        std::string out;
    };

    /// Runs switchctl with these arguments and waits for its end.
    static ChildProcess runSwitchctl(std::vector<std::string> const& arguments) {
        return runSwitchctl(arguments, Streams());
    }
    static ChildProcess runSwitchctl(std::vector<std::string> const& arguments, Streams const& streams);
};
