#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "switchctl/ChosenBoard.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/table/BoardTableReader.hpp"

namespace switchctl::table {

/// `switchctl table`: the tables of a board's chips, and addresses to be forgotten.
class TableCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit TableCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    void requireSense() const;
    void hear(board::ModelBringUp& models) const;
    std::vector<std::string> show(BoardTable const& table, board::BoardReading const& document,
                                  std::ostream& out) const;
    std::vector<std::string> flush(BoardTableReader& reader, BoardTable& table,
                                   board::BoardReading const& document, std::ostream& out) const;
    static void requireConsent(BoardTable const& table, board::BoardReading const& document);
    std::string getSource() const { return ChosenBoard::getSource(_simulation, _path); }

    std::string _memoryDevice;
    std::string _path;
    std::string _table;
    TableFilter _filter;
    bool _flush = false;
    bool _yes = false;
    std::vector<std::string> _stations;
    Simulation _simulation;
};

} // namespace switchctl::table
