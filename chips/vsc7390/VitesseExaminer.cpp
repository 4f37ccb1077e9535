#include "chips/vsc7390/VitesseExaminer.hpp"

#include <array>

#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "chips/vsc7390/LineProbe.hpp"
#include "simulation/PhyControl.hpp"
#include "simulation/vsc7390/Registers.hpp"

namespace chips {

using Cause = Examination::Cause;
using Texts = std::vector<std::string>;
using simulation::UnitKind;

namespace {

namespace vitesse = simulation::vitesse;

constexpr std::uint32_t allOnes = 0xFFFFFFFF;
constexpr unsigned digits = 8;
constexpr unsigned digitsOfPhy = 4;
constexpr unsigned bitsOfByte = 8;
constexpr std::uint32_t byteMask = 0xFF;

std::string hexadecimal(std::uint32_t word) {
    return NumberText::hexadecimal(word, digits);
}

/// All orders of bytes that a bus of 8, 16 or 32 bits may be wired in, but the right one.
std::array<std::uint32_t, 3> otherOrders(std::uint32_t word) {
    auto const byte = [word](unsigned number) { return word >> (number * bitsOfByte) & byteMask; };
    auto const of = [](std::uint32_t b3, std::uint32_t b2, std::uint32_t b1, std::uint32_t b0) {
        return b3 << (3 * bitsOfByte) | b2 << (2 * bitsOfByte) | b1 << bitsOfByte | b0;
    };
    return {of(byte(0), byte(1), byte(2), byte(3)), of(byte(1), byte(0), byte(3), byte(2)),
            of(byte(2), byte(3), byte(0), byte(1))};
}

Texts measureChip() {
    return {"the chip's supplies, core and I/O, at its pins",
            "the chip's reset: high, and not pulled low again",
            "the reference clock at the chip's pin, and that its PLL runs from it"};
}

Texts measureBus() {
    return {"chip select, read strobe and ready of the parallel bus at the chip while this runs: select "
            "falls with "
            "each access",
            "the processor's set-up of that chip select (0xf3000000): width, wait states, ready"};
}

Texts measureLine() {
    return {"the line between the processor's UART and the controller with an oscilloscope: 9600 baud, a bit "
            "takes "
            "104 us, 8 data bits, no parity, one stop bit",
            "RX and TX: not swapped, and with levels that both ends take"};
}

Texts together(Texts first, Texts const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

VitesseExaminer::VitesseExaminer(ChipKind const& kind, ChipKind::Reach const& reach,
                                 ExaminationRequest const& request)
    : _kind(kind), _reach(reach), _request(request), _catalogue(kind.getFacts().model) {}

Examination VitesseExaminer::run() {
    // Without a chip select there, a processor may stop at the first access.
    if (_request.switches.empty()) {
        _result.unread.emplace_back("the window of a VSC7390: the document has none");
        return _result;
    }
    isOverLine() ? examineLine() : examineWindow();
    _reach.errors.take();
    if (isGood() && _request.allowsWrites) {
        readPhys();
    } else {
        _result.unread.emplace_back(
            std::string("PHYs of the VSC7390: ") +
            (_request.allowsWrites ? "it is not as it should be"
                                   : "to read them, its MII controller is written to; see --allow-writes"));
    }
    if (!isGood()) {
        _result.answers.clear();
    }
    refuseFurther();
    return _result;
}

void VitesseExaminer::add(Cause cause, std::string const& text, Texts const& measure) {
    _result.add(cause, getId(), text, measure);
}

void VitesseExaminer::refuseFurther() {
    for (std::size_t place = 1; place < _request.switches.size(); ++place) {
        _result.add(Cause::noPlace, _request.switches[place].id,
                    "the board's parallel bus has room for one VSC7390, and switch " +
                        std::to_string(getId()) + " comes first in the document",
                    {"the document: which switches there are"});
    }
}

void VitesseExaminer::examineWindow() {
    if (_request.allowsWrites) {
        // Sets the chip's bus up, as start-up does.
        _kind.connect(ChipKind::Transport::parallel, _reach);
    }
    WindowProbe probe(_reach.application);
    auto const read = [&] { return probe.read(vitesse::block::system, 0, vitesse::system::chipIdentifier); };
    auto const first = read();
    auto const second = read();
    if (!first || !second) {
        std::string const complaint = _reach.errors.take();
        add(Cause::accessFails,
            "the processor's access to the window at 0xf3000000 fails" +
                (complaint.empty() ? "" : ": " + complaint),
            together({"rights on the memory device, and whether the kernel leaves 0xf3000000 to programs"},
                     measureBus()));
        return;
    }
    _result.readings.push_back({"window 0xf3000000", {{"system/CHIPID", hexadecimal(*first)}}, ""});
    if (*first != *second) {
        _result.readings.back().words.push_back({"again", hexadecimal(*second)});
        _result.readings.back().meaning = "reads that differ from one another";
        add(Cause::unsteady, "the identifier reads differently twice: accesses are disturbed, or too fast",
            together(measureBus(), {"the data lines for contention: a second chip with its select low"}));
        return;
    }
    explainWord(*first);
    if (isGood()) {
        examineFetch(probe);
    }
}

void VitesseExaminer::explainWord(std::uint32_t word) {
    std::string& meaning = _result.readings.back().meaning;
    if (word == allOnes || word == 0) {
        meaning = word == 0 ? "all zeros" : "nothing answers";
        add(word == 0 ? Cause::allZeros : Cause::allOnes,
            word == 0 ? "the window reads as 0: the data lines are held low, or the chip is selected and "
                        "does not run"
                      : "the window reads as ones: nothing drives the data lines, as on a bus without a chip",
            together(measureBus(), measureChip()));
        return;
    }
    ChipKind::Facts const& facts = _kind.getFacts();
    for (std::uint32_t const other : otherOrders(word)) {
        if (facts.product.get(word) != facts.productNumber &&
            facts.product.get(other) == facts.productNumber) {
            meaning = "a VSC7390, its bytes in another order";
            add(Cause::byteOrder,
                "the chip answers, with its bytes in another order: " +
                    std::string(
                        _request.allowsWrites
                            ? "its bus set-up was written and did not help, so the data lines are wired so"
                            : "its bus set-up was not written yet (--allow-writes does), or the data lines "
                              "are wired so"),
                {"the order of the data lines between processor and chip, and the straps of its bus"});
            return;
        }
    }
    requireProduct(word, "system/CHIPID " + hexadecimal(word));
}

void VitesseExaminer::requireProduct(std::uint32_t word, std::string const& seen) {
    ChipKind::Facts const& facts = _kind.getFacts();
    if (facts.product.get(word) == facts.productNumber) {
        _result.readings.back().meaning = "a VSC7390";
        _result.answers[getId()] =
            std::string("answers ") + (isOverLine() ? "over the serial line" : "in its window") + "; " + seen;
        return;
    }
    _result.readings.back().meaning = "not a VSC7390";
    add(Cause::otherChip,
        "what answers says that it is another product: " + seen + ", product " +
            NumberText::hexadecimal(facts.product.get(word), 4) + " where a VSC7390 has " +
            NumberText::hexadecimal(facts.productNumber, 4),
        {"the marking of the chip against the parts list",
         "the data lines for a stuck one: compare the two numbers"});
}

/// Most registers have to be fetched, which needs the chip's own clock; the identifier does not.
void VitesseExaminer::examineFetch(WindowProbe& probe) {
    WindowProbe::Fetched const fetched =
        probe.fetch(vitesse::block::analyser, 0, vitesse::analyser::vlanMask);
    if (fetched.value) {
        _result.readings.push_back({"window 0xf3000000",
                                    {{"analyser/VLANMASK", hexadecimal(*fetched.value)}},
                                    "fetched by the chip"});
    } else if (fetched.hasFailed) {
        add(Cause::accessFails, "the processor's access to the window at 0xf3000000 fails now and then",
            measureBus());
    } else {
        add(Cause::chipStuck,
            "the chip says what it is, but never has the value of a register that it fetches: its core does "
            "not run",
            measureChip());
    }
}

void VitesseExaminer::examineLine() {
    LineProbe probe(_reach.line);
    std::string const first = probe.ask(vitesse::block::system, 0, vitesse::system::chipIdentifier);
    auto const value = LineProbe::valueOf(first);
    _result.readings.push_back(
        {"serial line", {{"system/CHIPID", value ? hexadecimal(*value) : "none"}}, ""});
    if (!value) {
        explainLine(first);
        return;
    }
    // What came too much shows before the next answer.
    std::string const second = probe.ask(vitesse::block::system, 0, vitesse::system::chipIdentifier);
    if (second != first) {
        _result.readings.back().meaning = "answers that differ from one another";
        add(Cause::unsteady,
            "the second answer to the same question is \"" + LineProbe::visible(second) +
                "\", the first was \"" + LineProbe::visible(first) + "\"",
            measureLine());
        return;
    }
    if (*value == 0 || *value == allOnes) {
        explainWord(*value);
    } else {
        requireProduct(*value, "system/CHIPID " + hexadecimal(*value));
    }
}

void VitesseExaminer::explainLine(std::string const& reply) {
    std::string& meaning = _result.readings.back().meaning;
    if (reply.empty()) {
        meaning = "no answer";
        add(Cause::lineSilent, "the far end of the serial line does not answer within 5 s",
            together(measureLine(),
                     {"the controller's supply, reset and clock, and that it has its program",
                      "whether the controller reaches the chip: it does not answer when a read fails"}));
        return;
    }
    meaning = "\"" + LineProbe::visible(reply) + "\"";
    add(Cause::lineGarbled,
        "the far end answers \"" + LineProbe::visible(reply) +
            "\" where 0x, eight hexadecimal digits and a line end have to be: characters are lost or "
            "misread, as with "
            "a wrong baud rate",
        together({"the baud rate of the controller: its clock and the divider of its UART"}, measureLine()));
}

void VitesseExaminer::readPhys() {
    auto const transport =
        _kind.connect(isOverLine() ? ChipKind::Transport::serial : ChipKind::Transport::parallel, _reach);
    _reach.errors.take();
    for (unsigned const port : _request.switches.front().portsWithPhy) {
        if (port < _kind.getFacts().ports && !readPhy(*transport, port)) {
            return;
        }
    }
}

/// \return false when no further one can be read.
bool VitesseExaminer::readPhy(RegisterTransport& transport, unsigned port) {
    RegisterLocation const location = _catalogue.at(UnitKind::phy, port, simulation::phy::identifier1);
    Texts const measure = {"the supply, reset and clock of that PHY",
                           "the PHY's address straps: that of port N is N, on MII controller 1",
                           "MDC and MDIO between the VSC7390 and the PHY, and MDIO's pull-up"};
    try {
        std::uint32_t const word = transport.read(location);
        if (word == 0 || word == (allOnes & 0xFFFFU)) {
            add(Cause::phyAbsent,
                "the PHY of port " + std::to_string(port) + " does not answer: " + location.getText() + " " +
                    NumberText::hexadecimal(word, digitsOfPhy),
                measure);
        }
        return true;
    } catch (ToolError const& error) {
        std::string const text = error.what();
        if (text.find("No reply from phy") != std::string::npos) {
            add(Cause::phyAbsent, "the PHY of port " + std::to_string(port) + " does not answer", measure);
            return true;
        }
        add(Cause::chipStuck, "the chip's controller of PHYs does not work: " + text, measureChip());
        _result.unread.push_back("PHYs from port " + std::to_string(port) + " on");
        return false;
    }
}

} // namespace chips
