#pragma once

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/ExitStatus.hpp"
#include "switchctl/register/RegisterReading.hpp"
#include "switchctl/register/TransportOptions.hpp"

namespace switchctl::registers {

/// Something that `switchctl register` can do.
class RegisterAction {
public:
    RegisterAction(CLI::App& command, char const* name, char const* text);
    virtual ~RegisterAction();
    RegisterAction(RegisterAction const&) = delete;
    RegisterAction& operator=(RegisterAction const&) = delete;

    /// Whether the parsed command line asks for it.
    bool isChosen() const;

    /// \param out gets the results.
    /// \param errors gets what the library prints.
    /// Throws CommandError.
    virtual chips::ExitStatus run(std::ostream& out, std::ostream& errors) const = 0;

protected:
    CLI::App& getApp();

    static std::vector<chips::RegisterLocation> find(chips::ChipCatalogue const& catalogue,
                                                     std::vector<std::string> const& texts, bool physOnly);
    static nlohmann::ordered_json toJson(std::vector<RegisterReading> const& readings);
    static void print(std::ostream& out, std::vector<RegisterReading> const& readings);

private:
    CLI::App* _app;
};

} // namespace switchctl::registers
