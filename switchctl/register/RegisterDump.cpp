#include "switchctl/register/RegisterDump.hpp"

#include <nlohmann/json.hpp>

#include "chips/ToolError.hpp"
#include "reference_host/InputFile.hpp"
#include "switchctl/register/DumpReader.hpp"

namespace switchctl::registers {

void RegisterDump::print(std::ostream& out, std::string const& transport) const {
    out << "chip " << catalogue->getModel() << "\nover " << transport << '\n';
    std::string unit;
    for (RegisterReading const& reading : readings) {
        if (reading.location.unit != unit) {
            unit = reading.location.unit;
            out << unit << '\n';
        }
        reading.printShort(out);
    }
}

nlohmann::ordered_json RegisterDump::toJson(std::string const& transport) const {
    nlohmann::ordered_json registers = nlohmann::ordered_json::array();
    for (RegisterReading const& reading : readings) {
        registers.push_back(reading.toJson());
    }
    return {{"chip", catalogue->getModel()}, {"over", transport}, {"registers", registers}};
}

RegisterDump RegisterDump::fromFile(std::string const& path) {
    try {
        return DumpReader(path).read(reference_host::InputFile::read(path));
    } catch (reference_host::InputFile::Error const& error) {
        throw chips::ToolError(chips::ExitStatus::badDocument, path + ": " + error.what());
    }
}

} // namespace switchctl::registers
