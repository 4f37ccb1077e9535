#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "switchctl/Command.hpp"
#include "switchctl/replay/Replay.hpp"

namespace switchctl::replay {

/// `switchctl replay`: whether chip models do what a trace says.
class ReplayCommand : public Command {
public:
    ReplayCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    nlohmann::ordered_json toJson(board::TraceReader const& trace,
                                  std::optional<Replay::Divergence> const& divergence) const;
    void print(std::ostream& out, board::TraceReader const& trace,
               Replay::Divergence const& divergence) const;

    std::string _path;
};

} // namespace switchctl::replay
