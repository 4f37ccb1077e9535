#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "board/intent/Intent.hpp"
#include "board/paths/AskedFrames.hpp"
#include "board/paths/PathGrouping.hpp"
#include "board/paths/PathLine.hpp"
#include "board/paths/RegisterPaths.hpp"
#include "simulation/network/ChipForwarding.hpp"

namespace board {

/// Who reaches whom by the registers of chips, and where that is not what the document asks for: each port
/// is asked with each frame.
class PathComparison {
public:
    /// What is looked at of a switch; switches without an entry are left out.
    using Selection = std::map<unsigned, PortSet>;

    /// All of them must outlive the object.
    PathComparison(Intent const& intent, RegisterPaths const& registers, AskedFrames const& frames);

    /// \param selection frames from and to others do not count.
    PathComparison(Intent const& intent, RegisterPaths const& registers, AskedFrames const& frames,
                   Selection const& selection);

    AskedFrames const& getFrames() const { return _frames; }

    /// Who reaches whom, by VLAN of the document; frames that are in none come first.
    std::vector<PathLine> getPaths() const { return _paths.getLines(); }
    std::vector<PathLine> getDifferences() const { return _differences.getLines(); }

    /// What no model can say, each once: "0.3: ...".
    std::set<std::string> const& getNotModelled() const { return _notModelled; }

    /// What became of one of the line's frames.
    simulation::Decision getExample(PathLine const& line) const;

    /// How many questions were asked.
    std::uint64_t getQuestions() const { return _questions; }

private:
    /// One question, and both answers.
    struct Case {
        std::size_t tags;
        std::size_t destination;
        unsigned switchId;
        unsigned port;
        FrameKind frame;
        Intent::Answer wanted;
        simulation::Decision decision;
        std::vector<RegisterPaths::Copies> copies = {};
        // Of trunks: members that count as sending, though others do it for them; those of which none
        // sends some frame; those that send at once.
        PortSet spared = 0;
        PortSet unserved = 0;
        PortSet doubled = 0;
    };

    static Selection allPorts(RegisterPaths const& registers);
    void ask(std::size_t tags, std::size_t destination);
    void compare(Case& asked);
    void followTrunks(Case& asked) const;
    void followFlows(Case& asked, PortSet members) const;
    void addPaths(Case const& asked);
    void addLeaks(Case const& asked);
    void addAmbiguous(Case const& asked);
    void addForms(Case const& asked);
    void addDoubled(Case const& asked);
    void addMissing(Case const& asked);
    void add(Case const& asked, PathLine::Key key, unsigned to, FrameKind::Tags const& tags);
    static PathLine::Key keyOf(Case const& asked, PathLine::Kind kind);

    Intent const& _intent;
    RegisterPaths const& _registers;
    AskedFrames const& _frames;
    Selection const _selection;
    PathGrouping _paths;
    PathGrouping _differences;
    std::set<std::string> _notModelled;
    std::uint64_t _questions = 0;
};

} // namespace board
