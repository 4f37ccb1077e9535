#pragma once

#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "switchctl/Command.hpp"
#include "switchctl/new/BoardDraft.hpp"

namespace switchctl::draft {

/// `switchctl new`: writes the document of a board, by options or by answers.
class NewCommand : public Command {
public:
    /// \param answers where somebody can be asked; null where nobody can.
    explicit NewCommand(std::istream* answers);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    using Take = std::function<void(std::string const&)>;

    BoardDraft fromOptions() const;
    BoardDraft fromAnswers(std::ostream& questions) const;
    void ask(std::ostream& questions, std::string const& question, bool isMany, Take const& take) const;

    std::istream* _answers;
    std::vector<std::string> _chips;
    std::string _cpu;
    std::vector<std::string> _links;
    std::vector<std::string> _vlans;
    std::string _output = "-";
};

} // namespace switchctl::draft
