#include "chips/vsc7390/LineProbe.hpp"

#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"

namespace chips {

namespace {

constexpr int answerLength = 12;
constexpr std::size_t valueLength = 10;

} // namespace

LineProbe::LineProbe(std::string const& device) : _port(device, SerialPort::baud9600) {
    if (!_port.Open() || !_port.setBaud(SerialPort::baud9600)) {
        throw ToolError(ExitStatus::noHardware, device + ": no serial line can be opened there");
    }
}

std::string LineProbe::ask(unsigned block, unsigned subBlock, unsigned address) {
    std::string question = "r " + std::to_string(block) + " " + std::to_string(subBlock) + " " +
                           std::to_string(address) + "\r\n";
    _port.Write(question);
    std::string answer;
    _port.Read(answer, answerLength);
    return answer;
}

std::optional<std::uint32_t> LineProbe::valueOf(std::string const& answer) {
    bool const isAnswer =
        answer.size() == answerLength && answer.substr(0, 2) == "0x" && answer.substr(valueLength) == "\r\n";
    return isAnswer ? NumberText::parse(answer.substr(0, valueLength)) : std::nullopt;
}

std::string LineProbe::visible(std::string const& text) {
    std::string result;
    for (char const character : text) {
        auto const code = static_cast<unsigned char>(character);
        bool const isPrintable = code >= ' ' && code < 0x7F;
        result += character == '\r'   ? "\\r"
                  : character == '\n' ? "\\n"
                  : isPrintable       ? std::string(1, character)
                                      : "\\" + NumberText::hexadecimal(code, 2).substr(1);
    }
    return result;
}

} // namespace chips
