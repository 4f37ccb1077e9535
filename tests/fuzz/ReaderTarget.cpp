#include "tests/fuzz/ReaderTarget.hpp"

#include <sstream>
#include <stdexcept>

#include "board/dump/DumpReader.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/PortAddress.hpp"
#include "chips/RegisterAssignment.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/register/EntryDifference.hpp"
#include "switchctl/register/RegisterDifference.hpp"

using namespace switchctl;

namespace fuzz {

namespace {

/// A dump that was understood is the same dump when it is written and read again.
void readDump(std::string const& text) {
    board::RegisterDump const dump = board::DumpReader("input").read(text);
    std::ostringstream written;
    dump.print(written);
    board::RegisterDump const again = board::DumpReader("again").read(written.str());
    if (!registers::RegisterDifference::between(dump, again).empty() ||
        !registers::EntryDifference::between(dump, again).empty()) {
        throw std::logic_error("a dump is not read as it was written");
    }
}

void readAssignment(char const* model, std::string const& text) {
    chips::ChipCatalogue const catalogue(model);
    chips::RegisterAssignment::parse(catalogue, text, false).apply(0);
}

/// A port that was understood is the same port when it is written and read again.
void readPort(std::string const& text) {
    auto const port = chips::PortAddress::fromText(text);
    if (!port) {
        return;
    }
    std::ostringstream written;
    written << *port;
    auto const again = chips::PortAddress::fromText(written.str());
    if (!again || again->switchId != port->switchId || again->portId != port->portId) {
        throw std::logic_error("a port is not read as it was written");
    }
}

} // namespace

void ReaderTarget::run(std::string const& input) {
    if (input.empty()) {
        return;
    }
    std::string const text = input.substr(1);
    try {
        switch (input.front()) {
        case 'm':
            return readAssignment("88e6096", text);
        case 'v':
            return readAssignment("vsc7390", text);
        case 'p':
            return readPort(text);
        default:
            return readDump(text);
        }
    } catch (chips::ToolError const& error) {
        if (std::string(error.what()).empty()) {
            throw std::logic_error("a refusal without a reason");
        }
    }
}

} // namespace fuzz
