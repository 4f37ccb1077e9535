#pragma once

#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"

namespace simulation::vitesse {

/// A PHY beside the chip. What IEEE 802.3 has of a link (clause 22, annex 28, clause 40) shows who is at
/// the other end; registers past those are plain storage.
class Phy : public RegisterFile {
public:
    /// `context` must outlive the PHY.
    Phy(Context& context, unsigned number);

    /// An unplugged PHY does not answer.
    bool isPlugged() const { return _isPlugged; }
    void setPlugged(bool plugged) { _isPlugged = plugged; }

    /// \name The link, or rather what a test said of it
    /// @{
    void plugLink(unsigned megabits, bool fullDuplex);
    void unplugLink();
    bool hasLink() const;
    /// Nobody has ever said whether somebody is at the other end.
    bool isLinkUntold() const { return _link == Link::untold; }
    /// @}

    /// A driver has read a register: that the link was lost shows until then.
    void wasRead(unsigned address);

private:
    enum class Link { untold, up, down };

    RegisterTable table();
    Register row(unsigned address);
    std::uint32_t status(std::uint32_t stored) const;
    std::uint32_t partner(unsigned address) const;

    bool _isPlugged = true;
    Link _link = Link::untold;
    bool _wasLost = false;
    unsigned _megabits = 0;
    bool _fullDuplex = false;
};

} // namespace simulation::vitesse
