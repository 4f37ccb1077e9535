#include "chips/88e6096/MarvellExaminer.hpp"

#include "chips/ChipCatalogue.hpp"
#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/PhyControl.hpp"

namespace chips {

using Cause = Examination::Cause;
using Texts = std::vector<std::string>;
using simulation::UnitKind;

namespace {

namespace marvell = simulation::marvell;

constexpr std::uint16_t allOnes = marvell::absent;
constexpr std::uint16_t allZeros = 0;
constexpr std::uint32_t onesOfWindow = 0xFFFFFFFF;
constexpr unsigned digits = 4;
constexpr unsigned firstGlobal = 1;
constexpr unsigned secondGlobal = 2;

Texts measureChip() {
    return {"the chip's supplies, core and I/O, at its pins",
            "RESETn: high since some 10 ms after the supplies, and not pulled low again",
            "the 25 MHz reference clock at XTAL_IN"};
}

Texts measureStraps() {
    return {"the pull-ups and pull-downs of the straps that select multi-chip mode and the MDIO address, and "
            "their "
            "levels while RESETn goes high"};
}

Texts measureLine() {
    return {
        "MDC and MDIO at the chips' pins with an oscilloscope: frames arrive, with levels of the I/O supply",
        "MDIO's pull-up (1.5 to 10 kOhm to the I/O supply), series resistors and level shifters"};
}

Texts together(Texts first, Texts const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

MarvellExaminer::MarvellExaminer(ChipKind const& kind, ChipKind::Reach const& reach,
                                 ExaminationRequest const& request)
    : _kind(kind),
      _reach(reach),
      _request(request),
      _catalogue(kind.getFacts().model),
      _scan(reach.application) {}

Examination MarvellExaminer::run() {
    for (Switch const& wanted : _request.switches) {
        _wanted.insert(wanted.id);
    }
    MdioScan::End const end = _scan.run();
    for (unsigned address = 0; address < _scan.getDone(); ++address) {
        _isSingleChip = _isSingleChip || isPortOfSingleChip(address);
    }
    showReadings();
    std::string const complaints = _reach.errors.take();
    if (!_wanted.empty()) {
        explainBus(end);
    }
    bool const isBusDead = !_result.findings.empty();
    for (Switch const& wanted : _request.switches) {
        if (!isBusDead) {
            examine(wanted);
        }
    }
    if (_scan.getDone() < MdioScan::numberOfAddresses) {
        std::string const from = std::to_string(_scan.getDone());
        _result.unread.push_back(
            "MDIO addresses " + from + " to " + std::to_string(MdioScan::numberOfAddresses - 1) +
            ": the scan ended before them" + (complaints.empty() ? "" : ", " + complaints));
    }
    if (!_request.allowsWrites && !isBusDead && !_result.answers.empty()) {
        _result.isIdentified = false;
        _result.unread.emplace_back(
            "identifiers, straps and PHYs inside the 88E6096: to read them, the chip's command "
            "register is written; see --allow-writes");
    }
    return _result;
}

/// Neighbours that read the same are one.
void MarvellExaminer::showReadings() {
    for (unsigned address = 0; address < _scan.getDone();) {
        MdioScan::Address const& found = _scan.at(address);
        unsigned last = address;
        while (last + 1 < _scan.getDone() && _scan.at(last + 1) == found) {
            ++last;
        }
        Examination::Reading reading;
        reading.place = last == address
                            ? "MDIO address " + std::to_string(address)
                            : "MDIO addresses " + std::to_string(address) + " to " + std::to_string(last);
        if (found.isCommandRead) {
            reading.words.push_back({"register 0", NumberText::hexadecimal(found.command, digits)});
        }
        reading.words.push_back({"register 2", NumberText::hexadecimal(found.identifier1, digits)});
        reading.words.push_back({"register 3", NumberText::hexadecimal(found.identifier2, digits)});
        reading.meaning = meaningOf(address);
        _result.readings.push_back(reading);
        address = last + 1;
    }
}

std::string MarvellExaminer::meaningOf(unsigned number) const {
    MdioScan::Address const& address = _scan.at(number);
    if (!address.isSteady) {
        return "reads that differ from one another";
    }
    if (address.isAll(allOnes)) {
        return "nothing answers";
    }
    if (address.isAll(allZeros)) {
        return "all zeros";
    }
    if (_isSingleChip && number >= marvell::firstPortDevice) {
        return "part of an 88E6096 in single-chip mode";
    }
    return address.isCommandRead ? "like an 88E6096 in multi-chip mode" : "a PHY or another chip";
}

bool MarvellExaminer::answersAsChip(unsigned address) const {
    MdioScan::Address const& found = _scan.at(address);
    bool const isPart = _isSingleChip && address >= marvell::firstPortDevice;
    return !isPart && found.isSteady && found.isCommandRead && !found.isAll(allOnes) &&
           !found.isAll(allZeros);
}

bool MarvellExaminer::isPortOfSingleChip(unsigned address) const {
    ChipKind::Facts const& facts = _kind.getFacts();
    return address >= marvell::firstPortDevice && address < marvell::firstPortDevice + facts.ports &&
           facts.product.get(_scan.at(address).identifier2) == facts.productNumber;
}

std::string MarvellExaminer::whereOf(unsigned address) const {
    return "MDIO address " + std::to_string(address);
}

void MarvellExaminer::explainBus(MdioScan::End end) {
    switch (end) {
    case MdioScan::End::accessFailed:
        _result.add(
            Cause::accessFails, std::nullopt,
            "the processor cannot access the registers of its own MAC, of which the MDIO master is part: it "
            "is not mapped, or an access failed",
            {"rights on the memory device, and whether the kernel leaves 0x80010000 to programs",
             "the clock and the reset of the processor's Ethernet MAC"});
        return;
    case MdioScan::End::masterBusy:
        explainBusyMaster();
        return;
    case MdioScan::End::tooSlow:
        _result.add(Cause::masterStuck, std::nullopt,
                    "the MDIO master takes far longer for a frame than it should",
                    {"the frequency of MDC, at most 2.5 MHz and usually close to it, and the MAC's clock"});
        return;
    case MdioScan::End::complete:
        break;
    }
    if (_scan.hasUnsteady()) {
        _result.add(
            Cause::unsteady, std::nullopt,
            "the same register reads differently twice: frames are disturbed, or something else uses the bus",
            together(measureLine(), {"whether another program accesses the MAC meanwhile"}));
    } else {
        explainFlatLine();
    }
}

void MarvellExaminer::explainBusyMaster() {
    if (_scan.getStatus() == onesOfWindow) {
        _result.add(Cause::allOnes, std::nullopt,
                    "the MAC's own registers read as ones: the fault is between the processor and its MAC, "
                    "not on MDIO",
                    {"the clock and the reset of the processor's Ethernet MAC"});
        return;
    }
    _result.add(Cause::masterStuck, std::nullopt,
                "the MDIO master's busy bit does not clear within a second: its frame never ends",
                {"MDC at the processor's pin while this runs: it has to toggle, at 2.5 MHz at most",
                 "the clock and the reset of the processor's Ethernet MAC"});
}

void MarvellExaminer::explainFlatLine() {
    if (_scan.isEverywhere(allOnes)) {
        _result.add(
            Cause::allOnes, std::nullopt,
            "all 32 MDIO addresses read as ones: no chip pulls MDIO low, the line is cut or held high, or "
            "no chip runs",
            together(measureLine(), together(measureChip(), measureStraps())));
    } else if (_scan.isEverywhere(allZeros)) {
        bool const isMacDead = _scan.readControl().value_or(0) == 0;
        if (isMacDead) {
            _result.add(
                Cause::allZeros, std::nullopt,
                "all reads are 0, and so is what was just written to the MAC: the fault is between the "
                "processor and its MAC, not on MDIO",
                {"the clock and the reset of the processor's Ethernet MAC"});
        } else {
            _result.add(Cause::allZeros, std::nullopt, "all 32 MDIO addresses read as 0: MDIO is held low",
                        {"MDIO with a meter while nothing is sent: low means a short, or no pull-up to the "
                         "I/O supply",
                         "the I/O supply of each chip on MDIO: one without it pulls the line down"});
        }
    }
}

void MarvellExaminer::examine(Switch const& wanted) {
    if (wanted.id >= MdioScan::numberOfAddresses) {
        _result.add(Cause::noPlace, wanted.id,
                    "the id is the MDIO address of an 88E6096, and a bus has 0 to 31",
                    {"the document: the id of the switch"});
    } else if (answersAsChip(wanted.id)) {
        _result.answers[wanted.id] = "answers at " + whereOf(wanted.id) + " like an 88E6096";
        if (!_scan.becomesFree(wanted.id)) {
            _result.add(Cause::chipStuck, wanted.id,
                        "the chip's command register stays busy: it takes frames, but does no work",
                        measureChip());
        } else if (_request.allowsWrites) {
            readInside(wanted);
        }
    } else {
        explainSilence(wanted.id);
    }
    if (!_result.findings.empty() && _result.findings.back().switchId == wanted.id) {
        _result.answers.erase(wanted.id);
    }
}

void MarvellExaminer::explainSilence(unsigned id) {
    if (_isSingleChip) {
        _result.add(Cause::wrongStrap, id,
                    "the ports of an 88E6096 answer at addresses of their own: the chip is strapped to "
                    "single-chip mode, and start-up needs multi-chip mode",
                    measureStraps());
        return;
    }
    Texts free;
    for (unsigned address = 0; address < MdioScan::numberOfAddresses; ++address) {
        if (_wanted.count(address) == 0 && answersAsChip(address)) {
            free.push_back(std::to_string(address));
        }
    }
    MdioScan::Address const& found = _scan.at(id);
    if (!found.isAll(allOnes) && !found.isAll(allZeros)) {
        _result.add(Cause::otherChip, id,
                    "a PHY or another chip answers at " + whereOf(id) + ", with identifier " +
                        NumberText::hexadecimal(found.identifier1, digits) + " " +
                        NumberText::hexadecimal(found.identifier2, digits),
                    together({"which chip is strapped to that address"}, measureStraps()));
    } else if (!free.empty()) {
        std::string text;
        for (std::string const& address : free) {
            text += (text.empty() ? "" : ", ") + address;
        }
        _result.add(Cause::otherAddress, id,
                    "nothing answers at " + whereOf(id) + ", but what looks like an 88E6096 does at " + text +
                        ", where the document has none",
                    together(measureStraps(), {"the document: the id of the switch is its MDIO address"}));
    } else {
        _result.add(Cause::nothingThere, id,
                    "nothing answers at " + whereOf(id) +
                        ", while other addresses of the bus do not read the same",
                    together(measureChip(), together(measureStraps(), measureLine())));
    }
}

void MarvellExaminer::readInside(Switch const& wanted) {
    try {
        auto const transport = _kind.connect(ChipKind::Transport::smi,
                                             {_reach.application, _reach.errors, wanted.id, _reach.line});
        readIdentifier(wanted.id, *transport);
        if (_result.findings.empty() || _result.findings.back().switchId != wanted.id) {
            readPhys(wanted, *transport);
        } else {
            _result.unread.push_back("PHYs of switch " + std::to_string(wanted.id) +
                                     ": it is not as it should be");
        }
    } catch (ToolError const& error) {
        _result.add(Cause::chipStuck, wanted.id,
                    std::string("the chip does not carry out a read: ") + error.what(), measureChip());
    }
}

void MarvellExaminer::readIdentifier(unsigned id, RegisterTransport& transport) {
    ChipKind::Facts const& facts = _kind.getFacts();
    RegisterLocation const location = _catalogue.at(facts.identifierUnit, 0, facts.identifier);
    std::uint32_t const word = transport.read(location);
    std::string const text = location.getText() + " " + NumberText::hexadecimal(word, digits);
    _result.readings.push_back(
        {whereOf(id), {{location.getText(), NumberText::hexadecimal(word, digits)}}, ""});
    if (facts.product.get(word) != facts.productNumber) {
        _result.readings.back().meaning = "not an 88E6096";
        _result.add(Cause::otherChip, id,
                    "the chip says that it is another product: " + text + ", product " +
                        NumberText::hexadecimal(facts.product.get(word), 3) + " where an 88E6096 has " +
                        NumberText::hexadecimal(facts.productNumber, 3),
                    {"the marking of the chip against the parts list"});
        return;
    }
    _result.readings.back().meaning = "an 88E6096";
    _result.answers[id] += "; " + text;
    RegisterLocation const status = _catalogue.at(UnitKind::global, firstGlobal, marvell::global1::status);
    std::uint32_t const mode = marvell::global1::switchMode.get(transport.read(status));
    if (mode == marvell::global1::cpuAttached) {
        _result.add(
            Cause::wrongStrap, id,
            "the chip is strapped to wait for a processor (" + status.getText() +
                ", SWMode 0): all its ports start disabled, and start-up does not open those without link "
                "settings",
            {"the SW_MODE straps: pulled to stand-alone while RESETn goes high"});
    }
}

void MarvellExaminer::readPhys(Switch const& wanted, RegisterTransport& transport) {
    RegisterLocation const unit =
        _catalogue.at(UnitKind::global, secondGlobal, marvell::global2::smiPhyCommand);
    for (unsigned const port : wanted.portsWithPhy) {
        if (port >= simulation::Marvell88E6096TestSide::numberOfPhys) {
            continue;
        }
        RegisterLocation const location = _catalogue.at(UnitKind::phy, port, simulation::phy::identifier1);
        std::uint32_t const word = transport.read(location);
        std::uint32_t const command = transport.read(unit);
        if (marvell::busy.isSet(command)) {
            _result.add(Cause::chipStuck, wanted.id,
                        "the chip's unit for PHYs stays busy: " + unit.getText() + " " +
                            NumberText::hexadecimal(command, digits),
                        measureChip());
            _result.unread.push_back("PHYs of switch " + std::to_string(wanted.id) + ", from port " +
                                     std::to_string(port) + " on");
            return;
        }
        if (word == allOnes || word == allZeros) {
            _result.add(Cause::phyAbsent, wanted.id,
                        "the PHY of port " + std::to_string(port) + " does not answer: " +
                            location.getText() + " " + NumberText::hexadecimal(word, digits),
                        {"the analogue supply of the chip's PHYs, and the bias resistor (RSET)"});
        }
    }
}

} // namespace chips
