#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace chips {

/// What the registers of a chip tell of a port and of the PHY behind it.
struct PortStatus {
    /// A value that was read, that could not be read, or that no register of the chip tells.
    template <typename Value> class Fact {
    public:
        /// Not told.
        Fact() = default;
        Fact(Value value) : _value(std::move(value)) {} // NOLINT(google-explicit-constructor): stands for it

        static Fact unread() {
            Fact fact;
            fact._isUnread = true;
            return fact;
        }

        /// Of a register's contents, which may not have been read.
        template <typename Reading>
        static Fact of(std::optional<std::uint32_t> const& word, Reading const& reading) {
            return word ? Fact(reading(*word)) : unread();
        }

        bool isUnread() const { return _isUnread; }
        std::optional<Value> const& get() const { return _value; }

        bool operator==(Fact const& other) const {
            return _value == other._value && _isUnread == other._isUnread;
        }
        bool operator!=(Fact const& other) const { return !(*this == other); }

    private:
        std::optional<Value> _value;
        bool _isUnread = false;
    };

    Fact<bool> link;
    /// There is link, and it was lost since the last look at it.
    bool wasLost = false;
    /// 10, 100 or 1000.
    Fact<unsigned> megabits;
    Fact<bool> fullDuplex;
    /// "on", "off", or which half of it is on: "obeyed", "sent".
    Fact<std::string> flowControl;
    /// "disabled", "blocking", "learning" or "forwarding".
    Fact<std::string> state;
    /// Of frames without a tag, where none of the document's settings say otherwise.
    Fact<unsigned> defaultVid;
    /// How frames leave: "kept" as they are, "untagged", "tagged", "but 5" where one VLAN leaves untagged.
    Fact<std::string> tagging;
    /// What becomes of frames of VLANs that the port is not in, in the words of the chip.
    Fact<std::string> filtering;
    /// Its two identifiers, "0141:0c80", or "none" when none answers.
    Fact<std::string> phy;
    /// Frames and events in the port's error counters, as they stand.
    Fact<std::uint64_t> errors;

    /// Nothing of it was read.
    static PortStatus unread() {
        using Text = Fact<std::string>;
        return {Fact<bool>::unread(), false,          Fact<unsigned>::unread(),     Fact<bool>::unread(),
                Text::unread(),       Text::unread(), Fact<unsigned>::unread(),     Text::unread(),
                Text::unread(),       Text::unread(), Fact<std::uint64_t>::unread()};
    }
};

} // namespace chips
