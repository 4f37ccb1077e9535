#pragma once

#include <functional>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "switchctl/status/StatusFacts.hpp"
#include "switchctl/status/StatusSampler.hpp"
#include "switchctl/terminal/WatchPace.hpp"

/// The models of an example after its bring-up, and a sampler of some of its ports.
class StatusBench {
public:
    /// \param texts each SWITCH.PORT or SWITCH.
    StatusBench(std::string const& example, std::vector<std::string> const& texts)
        : models(std::string(EXAMPLES_FOLDER) + "/" + example + ".xml"),
          _chips(models.getBoard()),
          _selection(models.getDocument(), models.getPath(), texts,
                     board::PortSelection::Texts::portsAndSwitches),
          sampler(_chips, _selection) {}

    simulation::SimulatedBoard& getBoard() { return models.getBoard(); }

    /// What a fact of the first port says.
    std::string textOf(std::string const& name) {
        auto const sample = sampler.sample();
        for (auto const& fact :
             switchctl::status::StatusFacts::of(sample.rows.at(0).status, models.getDocument())) {
            if (fact.name == name) {
                return fact.text;
            }
        }
        return "no fact " + name;
    }

    board::ModelBringUp models;

private:
    board::BoardAccess _chips;
    board::PortSelection _selection;

public:
    switchctl::status::StatusSampler sampler;
};

/// Waits take no time; what happens meanwhile is the test's.
class ScriptedPace : public switchctl::WatchPace {
public:
    /// What happens during each wait; the watch ends at the wait that follows them.
    explicit ScriptedPace(std::vector<std::function<void()>> steps) : _steps(std::move(steps)) {}

    double getSeconds() override { return 0; }
    bool wait(double /*seconds*/) override {
        if (_next == _steps.size()) {
            return false;
        }
        _steps[_next++]();
        return true;
    }

private:
    std::vector<std::function<void()>> _steps;
    std::size_t _next = 0;
};
