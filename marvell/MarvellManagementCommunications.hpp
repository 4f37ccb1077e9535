#pragma once

class Application;

/// Access to the registers of one Marvell 88E6096.
///
/// One access at a time: the chip has a single command register for all of them. Meant for the
/// management thread.
class MarvellManagementCommunications {
public:
    /// One register of the chip and the value that goes there or came from there.
    struct MarvelRegisterValues {
        MarvelRegisterValues() = default;
        MarvelRegisterValues(unsigned short device, unsigned short registerNumber,
                             unsigned short initialValue = 0)
            : deviceAddress(device), registerAddress(registerNumber), value(initialValue) {}

        /// Internal device: a port, Global 1 or Global 2.
        unsigned short deviceAddress = 0;
        /// 0 to 31.
        unsigned short registerAddress = 0;
        unsigned short value = 0;
    };

    /// \param switchAddress the chip's address on the MDIO bus, the switch's id.
    /// \param noHardwareAccess true: every register access fails at once, without bus traffic.
    MarvellManagementCommunications(Application& application, unsigned short switchAddress,
                                    bool noHardwareAccess);
    virtual ~MarvellManagementCommunications();
    MarvellManagementCommunications(MarvellManagementCommunications const&) = delete;
    MarvellManagementCommunications& operator=(MarvellManagementCommunications const&) = delete;

    /// Prepares the access path.
    /// \return here and below: false when the access failed.
    virtual bool initialise() = 0;

    /// Fills `registerValues.value`, which is left alone on failure.
    virtual bool readRegister(MarvelRegisterValues& registerValues) = 0;

    virtual bool writeRegister(MarvelRegisterValues registerValues) = 0;

    /// Reads a register of one of the chip's PHYs (IEEE 802.3 clause 22).
    virtual bool phyReadRegister(unsigned short phyAddress, unsigned short phyRegister,
                                 unsigned short& value) = 0;

    virtual bool phyWriteRegister(unsigned short phyAddress, unsigned short phyRegister,
                                  unsigned short value) = 0;

    /// Reads a register, replaces its value by `change(value)` and writes it back.
    /// \return false when the read, after which nothing is written, or the write failed.
    template <typename Change>
    bool modifyRegister(unsigned short device, unsigned short registerNumber, Change change) {
        MarvelRegisterValues registerValues(device, registerNumber);
        if (!readRegister(registerValues)) {
            return false;
        }
        registerValues.value = change(registerValues.value);
        return writeRegister(registerValues);
    }

protected:
    Application& _application;
    unsigned short _switchAddress;
    bool _noHardwareAccess;
};
