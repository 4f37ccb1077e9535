#include "tests/fuzz/SerialReplyTarget.hpp"

#include <stdexcept>

#include "board/ClockAdoption.hpp"
#include "reference_host/HostApplication.hpp"
#include "simulation/PseudoTerminal.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

namespace fuzz {

namespace {

constexpr std::uint64_t second = 1'000'000'000;
constexpr std::uint64_t betweenPieces = 700'000'000;
/// The time-out, its rounding to whole seconds, and what follows a complete reply.
constexpr std::uint64_t patience = 8 * second;
constexpr std::size_t registerReplyLength = 12;
constexpr std::size_t phyReplyLength = 8;

using Communications = VitesseSerialCommunications;

class SerialBench {
public:
    void comeInPieces(std::string const& text) {
        std::uint64_t time = betweenPieces;
        for (std::size_t start = 0; start <= text.size(); time += betweenPieces) {
            std::size_t const end = std::min(text.find('|', start), text.size());
            std::string const piece = text.substr(start, end - start);
            _clock.callAt(time, [this, piece] { send(piece); });
            start = end + 1;
        }
    }

    void read(bool phy) {
        std::size_t const needed = phy ? phyReplyLength : registerReplyLength;
        unsigned int value = 0;
        unsigned short phyValue = 0;
        bool const isRead = phy ? _communications.phyReadRegister(
                                      Communications::MiiManagementLocation::controller1, 3, 2, phyValue)
                                : _communications.readRegister({7, 0, 0x18}, value);
        if (_clock.getNanoseconds() > patience) {
            throw std::logic_error("a read went on for longer than its time-out");
        }
        if (isRead && _arrived < needed) {
            throw std::logic_error("a reply that was too short was believed");
        }
    }

private:
    void send(std::string const& piece) {
        std::size_t const sent = _line.send(piece);
        _arrived += sent;
        _line.waitUntilReadable(sent);
    }

    simulation::VirtualClock _clock;
    simulation::PseudoTerminal _line;
    test_support::RecordingLog _log;
    test_support::NullMemory _memory;
    reference_host::HostApplication _application{_log, _memory};
    Communications _communications{_application, false, _line.getDevicePath()};
    std::size_t _arrived = 0;
    board::ClockAdoption _adoption{_clock};
};

} // namespace

void SerialReplyTarget::run(std::string const& input) {
    constexpr std::size_t longest = 1024; // what a terminal holds for sure
    if (input.empty() || input.size() > longest) {
        return;
    }
    SerialBench bench;
    bench.comeInPieces(input.substr(1));
    bench.read(input.front() == 'p');
}

} // namespace fuzz
