#include "board/dump/DumpedChip.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "chips/ToolError.hpp"

namespace board {

using chips::ChipImage;

DumpedChip::DumpedChip(ChipScope const& scope, std::vector<RegisterDump> const& dumps, bool isOnlyOne)
    : _scope(scope) {
    for (RegisterDump const& dump : dumps) {
        auto const id = dump.getSwitchId();
        if (dump.catalogue->getModel() == scope.getModel() && (id ? *id == scope.getSwitchId() : isOnlyOne)) {
            _dumps.push_back(&dump);
        }
    }
}

ChipImage DumpedChip::getRegisters() const {
    std::map<std::string, std::uint32_t> const values = getValues();
    ChipImage image;
    for (ChipScope::Item const& item : _scope.getRegisters()) {
        chips::RegisterLocation const& location = item.location;
        auto const value = values.find(location.getText());
        if (value != values.end()) {
            image.addRegister(location.unit, location.name, item.fieldsOf(value->second), !item.isWritten);
        } else if (location.address.space != chips::RegisterAddress::Space::phy) {
            refuse(fmt::format("{}: {} is missing, a register of {}", getPaths(), location.getText(),
                               _scope.getChip()));
        } else if (!image.isUnread(location.unit)) {
            image.addUnread(location.unit, location.unit);
        }
    }
    return image;
}

std::map<std::string, std::uint32_t> DumpedChip::getValues() const {
    std::map<std::string, std::uint32_t> values;
    for (RegisterDump const* const dump : _dumps) {
        for (RegisterReading const& reading : dump->readings) {
            if (!values.emplace(reading.location.getText(), reading.value).second) {
                refuse(fmt::format("{}: {} of {} is in another dump, too", dump->path,
                                   reading.location.getText(), _scope.getChip()));
            }
        }
    }
    return values;
}

std::vector<RegisterDump::Table const*> DumpedChip::getTables() const {
    std::vector<RegisterDump::Table const*> tables;
    std::vector<std::string> missing;
    for (std::string const& name : _scope.getTables().getNames()) {
        RegisterDump::Table const* found = nullptr;
        for (RegisterDump const* const dump : _dumps) {
            RegisterDump::Table const* const table = dump->findTable(name);
            if (table != nullptr && found != nullptr) {
                refuse(dump->path + ": table " + name + " of " + _scope.getChip() +
                       " is in another dump, too");
            }
            found = table != nullptr ? table : found;
        }
        if (found != nullptr) {
            tables.push_back(found);
        } else {
            missing.push_back(name);
        }
    }
    if (!missing.empty()) {
        refuse(fmt::format("{}: tables of {} are missing: {}; \"register dump --tables\" reads them",
                           getPaths(), _scope.getChip(), fmt::join(missing, ", ")));
    }
    return tables;
}

void DumpedChip::refuse(std::string const& text) {
    throw chips::ToolError(chips::ExitStatus::badDocument, text);
}

std::string DumpedChip::getPaths() const {
    std::vector<std::string> paths;
    for (RegisterDump const* const dump : _dumps) {
        paths.push_back(dump->path);
    }
    return fmt::format("{}", fmt::join(paths, ", "));
}

} // namespace board
