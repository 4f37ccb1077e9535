#pragma once

#include <optional>
#include <string>
#include <vector>

#include "chips/ChipKind.hpp"
#include "model/ManagedSwitchPort.hpp"

namespace chips {

/// What the library is to set on a port, as people write it: "up", "down", "speed 100 half",
/// "flow-control off", "mdix auto", "learning off". What is not named stays as it is.
class PortSettings {
public:
    using Speed = ManagedSwitchPort::SpeedSetting;

    /// Throws ToolError (usage) that names the word which cannot be understood.
    explicit PortSettings(std::vector<std::string> const& words);

    /// What may follow after these words.
    static std::vector<std::string> getNext(std::vector<std::string> const& words);

    /// 10, 100 or 1000; nothing for others.
    static std::optional<Speed> speedOf(std::string const& megabits);

    /// Throws ToolError (usage) when the library cannot set that on such a port.
    void requirePossible(ChipKind::Facts const& chip, PortAddress const& port) const;

    /// Whether the port starts without a speed.
    bool startsAsItWas() const { return _link == Link::enabled && !_speed; }

    /// Whether the port is started or stopped, or goes through a stop.
    bool setsLink() const { return _link || _speed; }

    /// Has the library set it. Throws ToolError (usage) when it says neither up nor down and the port is
    /// neither.
    /// \return false when an access failed.
    bool apply(ManagedSwitchPort& port, ChipKind::Settings const& chip) const;

    /// Has the library start the port: at that speed where the chip's ports need one, full duplex and with
    /// flow control, as it starts ports itself; otherwise at the speed that is negotiated.
    static bool start(ManagedSwitchPort& port, ChipKind::Settings const& chip, Speed speed);

    /// In words, one for each setting.
    std::vector<std::string> const& getTexts() const { return _texts; }

private:
    using Link = ManagedSwitchPort::LinkSetting;
    using FlowControl = ManagedSwitchPort::FlowControlSetting;

    std::string take(std::vector<std::string> const& words, std::size_t& at);
    void set(std::string const& name, std::string const& value);
    void requireOnce(bool isFirst, std::string const& name) const;
    Link chooseLink(ManagedSwitchPort& port, ChipKind::Settings const& chip) const;

    std::optional<Link> _link;
    std::optional<Speed> _speed;
    bool _isHalfDuplex = false;
    std::optional<FlowControl> _flowControl;
    std::optional<ManagedSwitchPort::MdixSetting> _mdix;
    std::optional<bool> _learning;
    std::vector<std::string> _texts;
};

} // namespace chips
