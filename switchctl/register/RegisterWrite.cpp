#include "switchctl/register/RegisterWrite.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterSession.hpp"

namespace switchctl::registers {

RegisterWrite::RegisterWrite(std::string memoryDevice)
    : RegisterAction("write", "Write registers, one after the other"),
      _memoryDevice(std::move(memoryDevice)) {}

void RegisterWrite::declare(Arguments& arguments) {
    _transport.addTo(arguments, [this](Arguments& transport) {
        transport
            .option("ASSIGNMENT", _assignments,
                    "LOCATION=VALUE, or LOCATION:FIELD=VALUE[,FIELD=VALUE]... to read the register and "
                    "change fields of it")
            .required();
        transport.option("--then-read", _thenRead, "Registers to read afterwards; all that follow")
            .type("LOCATION...");
        transport.flag("--yes", _yes, "Do write; without it, only tell what would be written");
        addJson(transport);
    });
}

std::string RegisterWrite::getHelp() const {
    return "Examples:\n"
           "  switchctl register write smi --switch 0 port3/PortControl:PortState=3 --yes\n"
           "  switchctl register write phy --serial --simulate --yes 3/Control:PowerDown=1\n"
           "  switchctl register write parallel --simulate --yes analyser/VLANTIDX=10 \\\n"
           "      analyser/VLANACCESS=0x10000022 analyser/VLANACCESS=1 --then-read analyser/VLANACCESS\n"
           "\n";
}

ExitStatus RegisterWrite::perform(std::ostream& out, std::ostream& errors) const {
    chips::ChipCatalogue const catalogue(_transport.getModel());
    std::vector<chips::RegisterAssignment> assignments;
    for (std::string const& text : _assignments) {
        assignments.push_back(chips::RegisterAssignment::parse(catalogue, text, _transport.isPhysOnly()));
    }
    auto const locations = find(catalogue, _thenRead, _transport.isPhysOnly());
    requireConsent(assignments);
    std::vector<RegisterReading> written;
    std::vector<RegisterReading> read;
    {
        RegisterSession session(_transport, _memoryDevice, out, errors);
        for (chips::RegisterAssignment const& assignment : assignments) {
            written.push_back(write(session.getTransport(), assignment));
        }
        for (chips::RegisterLocation const& location : locations) {
            read.push_back({location, session.getTransport().read(location)});
        }
        session.finish();
    }
    print(_transport.chooseOutput(out, errors), written, read);
    return ExitStatus::success;
}

void RegisterWrite::requireConsent(std::vector<chips::RegisterAssignment> const& assignments) const {
    if (_yes) {
        return;
    }
    std::string text = "nothing was written, since --yes is missing; it would have been";
    for (chips::RegisterAssignment const& assignment : assignments) {
        text += "\n  " + assignment.getText();
    }
    throw ToolError(ExitStatus::notConfirmed, text);
}

RegisterReading RegisterWrite::write(chips::RegisterTransport& transport,
                                     chips::RegisterAssignment const& assignment) {
    chips::RegisterLocation const& location = assignment.getLocation();
    std::uint32_t const before = assignment.isPartial() ? transport.read(location) : 0;
    std::uint32_t const value = assignment.apply(before);
    transport.write(location, value);
    return {location, value};
}

void RegisterWrite::print(std::ostream& out, std::vector<RegisterReading> const& written,
                          std::vector<RegisterReading> const& read) const {
    if (isJson()) {
        printWithTime(out, {{"written", toJson(written)}, {"read", toJson(read)}});
        return;
    }
    for (RegisterReading const& reading : written) {
        out << "wrote " << reading.location.getText() << " (" << reading.location.address.getText()
            << ") = " << reading.getValueText() << '\n';
    }
    RegisterAction::print(out, read);
}

} // namespace switchctl::registers
