#include "switchctl/draw/BoardDrawing.hpp"

#include <array>
#include <optional>
#include <utility>

#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "chips/PortAddress.hpp"
#include "switchctl/draw/VlanColours.hpp"

namespace switchctl::draw {

namespace {

struct TypeColour {
    char const* connectedTo;
    char const* colour;
};

constexpr std::array<TypeColour, 6> typeColours = {{
    {"external", "#E8F1FA"},
    {"smac", "#EAF6E6"},
    {"hmac", "#EAF6E6"},
    {"cpu", "#FFE9B3"},
    {"dsp", "#F3E6F6"},
    {"switchInterlink", "#E6E6E6"},
}};

char const* colourOf(std::string const& connectedTo) {
    for (TypeColour const& entry : typeColours) {
        if (connectedTo == entry.connectedTo) {
            return entry.colour;
        }
    }
    return "#FFFFFF";
}

std::string escaped(std::string const& text) {
    static std::map<char, char const*> const entities = {
        {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\\', "&#92;"}};
    std::string result;
    for (char const character : text) {
        auto const entity = entities.find(character);
        if (entity == entities.end()) {
            result += character;
        } else {
            result += entity->second;
        }
    }
    return result;
}

std::string nodeOf(board::BoardReading::Switch const& owner) {
    return "switch" + std::to_string(owner.id);
}

std::string portNode(int switchId, int portId) {
    return "switch" + std::to_string(switchId) + ":port" + std::to_string(portId);
}

std::string linkNode(chips::PortAddress const& port) {
    return "switch" + std::to_string(port.switchId) + ":link" + std::to_string(port.portId) + ":w";
}

std::optional<int> trunkOf(board::BoardReading::Switch const& owner, unsigned int portId) {
    for (board::BoardReading::Trunk const& trunk : owner.trunks) {
        for (xmlNodePtr const member : trunk.members) {
            unsigned int const number = board::BoardReading::trunkPortIdOf(member);
            if (number == portId && owner.findPort(number) != nullptr) {
                return trunk.id;
            }
        }
    }
    return std::nullopt;
}

void cell(std::ostream& out, std::string const& attributes, std::string const& text) {
    out << "<TD" << attributes << '>' << (text.empty() ? " " : escaped(text)) << "</TD>";
}

} // namespace

BoardDrawing::BoardDrawing(Reading const& board, board::Cables const& cables, std::string title)
    : _board(board), _cables(cables), _title(std::move(title)) {}

std::string BoardDrawing::getDot() {
    _out.str("");
    _out << "graph board {\n"
         << "  graph [label=<<B>" << escaped(_title)
         << "</B>>, labelloc=t, rankdir=LR, ranksep=2.5, nodesep=0.3,"
         << " fontname=\"Helvetica\"]\n"
         << "  node [fontname=\"Helvetica\", fontsize=11]\n"
         << "  edge [fontname=\"Helvetica\", fontsize=9, penwidth=1.4]\n";
    for (auto const& entry : _board.getSwitches()) {
        addSwitch(entry.second);
    }
    addCables();
    addInterlinks();
    std::size_t number = 0;
    for (auto const& entry : _board.getVlans()) {
        addVlan(entry.second, vlanColour(number++));
    }
    addLegend();
    _out << "}\n";
    return _out.str();
}

void BoardDrawing::addSwitch(Reading::Switch const& owner) {
    _out
        << "  " << nodeOf(owner)
        << " [shape=plain, label=<<TABLE BORDER=\"1\" CELLBORDER=\"0\" CELLSPACING=\"0\" CELLPADDING=\"4\">\n"
        << R"(    <TR><TD COLSPAN="4" BGCOLOR="#333333"><FONT COLOR="white"><B>switch )"
        << escaped(owner.getName() + _board.getLabels().after(std::to_string(owner.id))) << "  "
        << owner.chipName() << "</B></FONT></TD></TR>\n";
    for (auto const& entry : owner.ports) {
        addPort(owner, entry.second);
    }
    _out << "    </TABLE>>]\n";
}

void BoardDrawing::addPort(Reading::Switch const& owner, Reading::Port const& port) {
    std::string const background =
        std::string(R"( ALIGN="LEFT" BGCOLOR=")") + colourOf(port.connectedTo) + "\"";
    std::optional<int> const trunk = trunkOf(owner, port.id);
    _out << "    <TR>";
    cell(_out, background + " PORT=\"link" + std::to_string(port.id) + "\"",
         port.getName() + _board.getLabels().after(chips::PortAddress{owner.id, port.id}.getText()));
    cell(_out, background, port.connectedTo + (isCpuPort(owner, port) ? " (CPU port)" : ""));
    cell(_out, background, port.portStatus);
    cell(_out, background + " PORT=\"port" + std::to_string(port.id) + "\"",
         trunk ? "trunk " + std::to_string(*trunk) : "");
    _out << "</TR>\n";
}

void BoardDrawing::addCables() {
    for (std::string const& text : _cables.getTexts()) {
        auto const [one, other] = *board::Cables::read(text);
        _out << "  " << linkNode(one) << " -- " << linkNode(other)
             << " [color=\"#999999\", penwidth=3, constraint=false]\n";
    }
}

// Of those without a cable nobody says where they lead.
void BoardDrawing::addInterlinks() {
    std::ostringstream edges;
    std::size_t switches = 0;
    for (auto const& entry : _board.getSwitches()) {
        std::size_t ports = 0;
        for (auto const& port : entry.second.ports) {
            bool const isInterlink = port.second.connectedTo == "switchInterlink";
            if (isInterlink) {
                ++ports;
            }
            if (isInterlink && !_cables.follow({entry.first, port.first})) {
                edges << "  interlink:e -- " << nodeOf(entry.second) << ":link" << port.first
                      << ":w [color=\"#999999\", penwidth=3]\n";
            }
        }
        switches += ports == 0 ? 0 : 1;
    }
    if (switches > 1 && edges.tellp() != 0) {
        _out << R"(  interlink [shape=box, style="rounded,filled", fillcolor="#E6E6E6",)"
             << " label=\"interlink between\\nswitches\"]\n"
             << edges.str();
    }
}

void BoardDrawing::addVlan(Reading::Vlan const& vlan, std::string const& colour) {
    _out << "  vlan" << vlan.id << " [shape=box, style=rounded, color=\"" << colour << "\", fontcolor=\""
         << colour << "\", penwidth=2, label=\"" << escaped(vlan.getName()) << "\\n"
         << (vlan.tagBased ? "tag-based" : "port-based") << "\"]\n";
    for (Reading::Member const& member : vlan.members) {
        addMember(vlan, member, colour);
    }
}

void BoardDrawing::addMember(Reading::Vlan const& vlan, Reading::Member const& member,
                             std::string const& colour) {
    if (member.outcome != Reading::Outcome::added || (vlan.tagBased && !member.hasKnownTags())) {
        return;
    }
    bool const untagged =
        !vlan.tagBased || board::attribute(member.element, "egress").value_or("") == "stripTag";
    _out << "  " << portNode(member.switchId, member.portId) << ":e -- vlan" << vlan.id << ":w [color=\""
         << colour << "\", style=" << (untagged ? "dashed" : "solid") << "]\n";
}

void BoardDrawing::addLegend() {
    _out << "  legend [shape=plain, label=<<TABLE BORDER=\"0\" CELLBORDER=\"0\" CELLSPACING=\"2\">\n"
         << "    <TR><TD ALIGN=\"LEFT\">solid: frames leave with a tag</TD></TR>\n"
         << "    <TR><TD ALIGN=\"LEFT\">dashed: frames leave without a tag</TD></TR>\n"
         << "    </TABLE>>]\n";
}

// The first of its kind on a switch; of several switches, the one with the highest id wins.
bool BoardDrawing::isCpuPort(Reading::Switch const& owner, Reading::Port const& port) const {
    std::optional<std::pair<unsigned int, unsigned int>> found;
    for (auto const& entry : _board.getSwitches()) {
        for (auto const& candidate : entry.second.ports) {
            if (candidate.second.connectedTo == "cpu") {
                found = {entry.first, candidate.first};
                break;
            }
        }
    }
    return found == std::pair(owner.id, port.id);
}

} // namespace switchctl::draw
