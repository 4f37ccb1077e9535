#include "board/paths/PathLine.hpp"

#include <tuple>

namespace board {

PathLine::Form PathLine::Form::of(FrameKind::Tags const& sent, FrameKind::Tags const& received) {
    bool const isAsReceived = sent.count > 0 && sent == received;
    return {isAsReceived, isAsReceived ? FrameKind::Tags::none() : sent};
}

bool PathLine::Form::operator<(Form const& other) const {
    return std::tie(isAsReceived, tags) < std::tie(other.isAsReceived, other.tags);
}

std::string PathLine::Form::describe() const {
    return isAsReceived ? "as it came" : tags.describe();
}

bool PathLine::Key::operator<(Key const& other) const {
    return std::tie(kind, vlan, switchId, reason, wanted, rules) <
           std::tie(other.kind, other.vlan, other.switchId, other.reason, other.wanted, other.rules);
}

bool PathLine::Reach::operator<(Reach const& other) const {
    return std::tie(form, to) < std::tie(other.form, other.to);
}

PortSet PathLine::portsOf(std::vector<Reach> const& reach) {
    PortSet ports = 0;
    for (Reach const& entry : reach) {
        ports |= entry.to;
    }
    return ports;
}

PortSet PathLine::receiversOf(unsigned sender, PortSet reached) const {
    PortSet const self = PortSet{1} << sender;
    return from == self ? reached : reached & ~self;
}

char const* PathLine::name(Kind kind) {
    switch (kind) {
    case Kind::path:
        return "path";
    case Kind::leak:
        return "leak";
    case Kind::missing:
        return "missing";
    case Kind::ambiguous:
        return "ambiguous";
    case Kind::form:
        return "form";
    case Kind::doubled:
        return "double";
    case Kind::loop:
        return "loop";
    }
    return "";
}

} // namespace board
