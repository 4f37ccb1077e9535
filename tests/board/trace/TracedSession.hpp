#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulation/SimulatedBoard.hpp"

/// The trace of a bring-up on models that a test may disturb first.
class TracedSession {
public:
    using Disturb = std::function<void(simulation::SimulatedBoard&)>;

    /// \param document its text.
    explicit TracedSession(std::string const& document, Disturb const& disturb = nullptr);

    std::string const& getText() const;

    /// The lines for accesses, without header.
    std::vector<std::string> getAccesses() const;

    /// Whether start-up got to its end.
    bool isPopulated() const;

    static std::string exampleText(std::string const& example);

private:
    std::string _text;
    bool _isPopulated = false;
};
