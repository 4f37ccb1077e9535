#include "board/paths/PathWording.hpp"

#include <fmt/format.h>

#include "board/Wording.hpp"

namespace board {

namespace {

/// VIDs that follow one another are a range.
std::string vidsText(std::vector<FrameKind::Tags> const& frames) {
    constexpr std::size_t shortestRange = 3;
    std::string text;
    for (std::size_t first = 0; first < frames.size();) {
        std::size_t end = first + 1;
        while (end < frames.size() && frames[end].vid == frames[end - 1].vid + 1) {
            ++end;
        }
        end = end - first < shortestRange ? first + 1 : end;
        text += fmt::format(" {}", frames[first].vid);
        text += end == first + 1 ? "" : fmt::format("-{}", frames[end - 1].vid);
        first = end;
    }
    return text;
}

std::string tagsText(std::vector<FrameKind::Tags> frames) {
    bool const isUntagged = !frames.empty() && frames.front().count == 0;
    frames.erase(frames.begin(), frames.begin() + (isUntagged ? 1 : 0));
    std::string const vids = vidsText(frames);
    if (vids.empty()) {
        return "untagged";
    }
    return (isUntagged ? "untagged, tagged" : "tagged") + vids;
}

} // namespace

std::string framesText(AskedFrames const& asked, std::vector<FrameKind::Tags> const& frames,
                       std::vector<std::size_t> const& destinations) {
    std::string tags = tagsText(frames);
    if (destinations.size() == asked.getDestinations().size()) {
        return tags;
    }
    std::vector<std::string> names;
    names.reserve(destinations.size());
    for (std::size_t const index : destinations) {
        names.push_back(asked.getDestinations()[index].name);
    }
    return tags + ", " + listed(names);
}

std::vector<unsigned> numbersOf(PortSet ports) {
    std::vector<unsigned> numbers;
    for (unsigned port = 0; ports != 0; ++port, ports >>= 1U) {
        if ((ports & 1U) != 0) {
            numbers.push_back(port);
        }
    }
    return numbers;
}

std::vector<std::string> addressesOf(unsigned switchId, PortSet ports) {
    std::vector<std::string> addresses;
    for (unsigned const port : numbersOf(ports)) {
        addresses.push_back(portAddress(static_cast<int>(switchId), static_cast<int>(port)));
    }
    return addresses;
}

std::string namesOf(Labels const& labels, std::vector<std::string> const& addresses) {
    std::string text;
    for (std::string const& address : addresses) {
        text += (text.empty() ? "" : " ") + labels.nameOf(address);
    }
    return text;
}

} // namespace board
