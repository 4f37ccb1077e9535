#pragma once

#include <memory>
#include <string>

#include "switchctl/Command.hpp"
#include "switchctl/Simulation.hpp"
#include "switchctl/doctor/ExaminedBoard.hpp"

namespace switchctl::doctor {

/// `switchctl doctor`: why a board does not answer, and what to measure next.
class DoctorCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit DoctorCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::unique_ptr<ExaminedBoard> reach(board::BoardReading const& document) const;
    std::string getExamined() const;

    std::string _memoryDevice;
    std::string _path;
    bool _serial = false;
    std::string _device = "/dev/ttyS1";
    bool _allowWrites = false;
    Simulation _simulation;
};

} // namespace switchctl::doctor
