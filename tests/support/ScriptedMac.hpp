#pragma once

#include "simulation/BusDevice.hpp"

namespace test_support {

/// A MAC whose MDIO frames a derived script answers. A frame that fails keeps the MAC busy for the
/// second that a driver waits, and lets go after it.
class ScriptedMac : public simulation::BusDevice {
public:
    bool read(unsigned int offset, unsigned int& value) override;
    bool write(unsigned int offset, unsigned int value) override;

    /// The MAC control register, which holds the management clock.
    unsigned int getControl() const { return _control; }
    void setControl(unsigned int value) { _control = value; }

    /// What a driver finds in the control register before it comes, so that restoring it shows.
    static constexpr unsigned int initialControl = 0x0000'5A00;

    /// What a driver puts there for as long as it lives.
    static constexpr unsigned int mdioClock = 0x0000'3E00;

    /// How many words have been read or written.
    int wordAccesses() const { return _wordAccesses; }

protected:
    /// A frame on the bus.
    /// \return false when the MAC is to stay busy.
    virtual bool frameRead(unsigned int address, unsigned int registerNumber, unsigned short& value) = 0;
    virtual bool frameWrite(unsigned int address, unsigned int registerNumber, unsigned short value) = 0;

private:
    unsigned int readStatus();
    void runCommand(unsigned int command);

    unsigned int _control = initialControl;
    unsigned int _data = 0;
    bool _stuck = false;
    int _wordAccesses = 0;
};

} // namespace test_support
