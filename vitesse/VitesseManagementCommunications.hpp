#pragma once

class Application;

/// Access to the registers of one Vitesse VSC7390 and of the PHYs behind it.
///
/// Meant for the management thread; a host's request for a port's counters comes from another one.
class VitesseManagementCommunications {
public:
    /// Where a register is. Registers hold 32 bits.
    struct Bsa {
        unsigned short block = 0;
        unsigned short subBlock = 0;
        unsigned short address = 0;
    };

    /// The chip's MII management controllers, by their sub-block.
    enum class MiiManagementLocation : unsigned short { controller0 = 0, controller1 = 1 };

    /// What a read that fails means for the change that it was for.
    enum class FailedRead {
        countsAsZero, ///< the register is written all the same
        endsChange,   ///< nothing is written
    };

    /// \param noHardwareAccess for the transports; not kept here.
    VitesseManagementCommunications(Application& application, bool noHardwareAccess);
    virtual ~VitesseManagementCommunications();
    VitesseManagementCommunications(VitesseManagementCommunications const&) = delete;
    VitesseManagementCommunications& operator=(VitesseManagementCommunications const&) = delete;

    /// \return here and below: false when the access failed; `value` is then left alone. What a
    ///         transport throws when the chip stops answering is told there.
    virtual bool readRegister(Bsa const& location, unsigned int& value) = 0;
    virtual bool writeRegister(Bsa const& location, unsigned int const& value) = 0;

    /// Reads a register of a PHY on one of the chip's MII management controllers (IEEE 802.3 clause 22).
    virtual bool phyReadRegister(MiiManagementLocation controller, unsigned short phyAddress,
                                 unsigned short registerAddress, unsigned short& value) = 0;
    virtual bool phyWriteRegister(MiiManagementLocation controller, unsigned short phyAddress,
                                  unsigned short registerAddress, unsigned short value) = 0;

    /// The registers of a port: the location of its first one.
    /// \return false for a port that the chip does not have; only the address is then set, to 0.
    bool portToBSA(unsigned char port, Bsa& location);

    /// Reads a register, replaces its value by `change(value)` and writes it back.
    template <typename Change>
    bool modifyRegister(Bsa const& location, Change change,
                        FailedRead failedRead = FailedRead::countsAsZero) {
        unsigned int value = 0;
        if (!readRegister(location, value) && failedRead == FailedRead::endsChange) {
            return false;
        }
        return writeRegister(location, change(value));
    }

protected:
    Application* _application;
};
