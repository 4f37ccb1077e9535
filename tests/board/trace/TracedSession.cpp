#include "TracedSession.hpp"

#include <fstream>
#include <sstream>

#include "board/BoardSession.hpp"
#include "board/trace/BringUpTrace.hpp"
#include "reference_host/XmlDocument.hpp"

using board::BoardReading;
using board::BoardSession;
using board::BringUpTrace;
using reference_host::XmlDocument;

TracedSession::TracedSession(std::string const& document, Disturb const& disturb) {
    auto const xml = XmlDocument::fromText(document, "board");
    std::ostringstream out;
    board::BringUpTrace trace(out, board::BoardReading(*xml));
    board::BoardSession::Options options;
    options.simulate = true;
    options.wrapMemory = [&](auto memory) { return trace.wrap(std::move(memory)); };
    {
        board::BoardSession session(*xml, options);
        if (disturb) {
            disturb(*session.getBoard());
        }
        _isPopulated = session.bringUp().populated;
    }
    trace.finish();
    _text = out.str();
}

std::string const& TracedSession::getText() const {
    return _text;
}

std::vector<std::string> TracedSession::getAccesses() const {
    std::istringstream in(_text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (line.find(" ok") != std::string::npos || line.find(" failed") != std::string::npos) {
            lines.push_back(line);
        }
    }
    return lines;
}

bool TracedSession::isPopulated() const {
    return _isPopulated;
}

std::string TracedSession::exampleText(std::string const& example) {
    std::ifstream const file(std::string(EXAMPLES_FOLDER) + "/" + example + ".xml");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}
