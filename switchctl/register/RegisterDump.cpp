#include "switchctl/register/RegisterDump.hpp"

#include <cerrno>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <system_error>

#include "chips/ToolError.hpp"
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
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    // Of a folder, the first character tells that it cannot be read.
    file.peek();
    if (!file.is_open() || file.bad()) {
        throw chips::ToolError(chips::ExitStatus::badDocument,
                               path + ": " + std::generic_category().message(errno));
    }
    std::ostringstream content;
    content << file.rdbuf();
    return DumpReader(path).read(content.str());
}

} // namespace switchctl::registers
