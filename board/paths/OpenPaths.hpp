#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "board/intent/Intent.hpp"
#include "board/paths/AskedFrames.hpp"
#include "board/paths/PathGrouping.hpp"
#include "board/paths/PathLine.hpp"
#include "board/paths/RegisterPaths.hpp"
#include "simulation/network/EthernetFrame.hpp"

namespace board {

/// Which paths that no document allows are open while registers are written, from which write to which: a
/// chip is asked anew, by each port with each frame, whenever one of its registers was written.
///
/// Which member of a trunk takes a frame, a chip tells by the addresses: what comes from or gets to one is
/// asked of many stations.
class OpenPaths {
public:
    /// The number of a write; 0 stands for what was before the first.
    using Write = std::size_t;

    /// What was open on a switch from one write to another, as lines of kind "leak" that tell no forms.
    struct Interval {
        unsigned switchId = 0;
        Write opened = 0;
        Write closed = 0;
        std::vector<PathLine> lines;
    };

    /// Writes after which something did not pass that all documents want and that passed before the first.
    struct Silence {
        std::size_t writes = 0;
        Write first = 0;
        Write last = 0;
    };

    /// Asks all chips what is open before the first write. All of them must outlive the object.
    /// \param wanted what is to be in the end.
    /// \param before what was to be until now; or null. What it allows, and what was open before the first
    ///        write, may be so as long as registers are written.
    OpenPaths(Intent const& wanted, Intent const* before, RegisterPaths const& registers,
              AskedFrames const& frames);

    /// A register of the switch was written. Switches that the document does not have say nothing.
    void follow(unsigned switchId, Write write);

    /// Those that have ended, by switch, beginning and end.
    std::vector<Interval> getIntervals() const;

    /// What is open now and not wanted in the end, by reason.
    std::vector<PathLine> getLeft() const;

    /// Without trunks, of which one member may take over from another. None without a document before.
    Silence const& getSilence() const { return _silence; }

    /// The forwarding rules that had a say in what was open, each list with blanks between its numbers.
    std::set<std::string> const& getRules() const { return _rules; }

    /// What no model can say, each once: "0.3: ...".
    std::set<std::string> const& getNotModelled() const { return _notModelled; }

    /// How many questions were asked.
    std::uint64_t getQuestions() const { return _questions; }

private:
    /// Ports that have been open since a write.
    struct Since {
        Write write;
        PortSet ports;
    };

    /// A port with a frame.
    struct Question {
        unsigned port = 0;
        std::size_t tags = 0;
        std::size_t destination = 0;
        /// One for each pair of addresses that it is asked with.
        std::vector<simulation::EthernetFrame> frames = {};
        /// Members of trunks; the frames after the first are for them.
        PortSet trunks = 0;
        PortSet wanted = 0;
        PortSet allowed = 0;
        /// What is not to be interrupted.
        PortSet needed = 0;
        /// At the last write that was followed.
        PortSet reached = 0;
        PortSet open = 0;
        std::vector<Since> since = {};
    };

    /// A way that a question's frame went.
    struct Fact {
        Question const* question;
        PortSet to;
    };
    using Facts = std::vector<Fact>;

    void addQuestions(unsigned switchId, Intent const* before);
    Question questionOf(unsigned switchId, unsigned port, std::size_t tags, std::size_t destination,
                        Intent const* before) const;
    void count(Write write);
    PortSet reachedBy(unsigned switchId, Question const& question);
    void ask(unsigned switchId, Question& question, Write write);
    void end(unsigned switchId, Question& question, PortSet closed, Write write);
    static void add(PathGrouping& grouping, PathLine::Key const& key, Fact const& fact);

    Intent const& _intent;
    RegisterPaths const& _registers;
    AskedFrames const& _frames;
    std::map<unsigned, std::vector<Question>> _asked;
    // By switch, beginning and end.
    std::map<std::tuple<unsigned, Write, Write>, Facts> _ended;
    // Switches on which something is interrupted at the moment.
    std::set<unsigned> _silent;
    Silence _silence;
    std::set<std::string> _rules;
    std::set<std::string> _notModelled;
    std::uint64_t _questions = 0;
};

} // namespace board
