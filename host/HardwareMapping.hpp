#pragma once

#include <cstdint>
#include <memory>
#include <string>

class SystemLogInterface;

/// A window of physical addresses, mapped into the process.
///
/// The host provides everything of this class but set() and get(): these two are built into the
/// library, in a source file of their own and exported, so that a process which simulates the
/// hardware can supply definitions that the dynamic linker prefers.
class HardwareMapping {
public:
    virtual ~HardwareMapping();
    HardwareMapping(HardwareMapping const&) = delete;
    HardwareMapping& operator=(HardwareMapping const&) = delete;

    /// Stores a 32-bit value in the window.
    /// \param offset bytes from the start of the section; the low two bits of the resulting address
    ///        are cleared.
    /// \return false, without an access, when the window is not mapped.
    ///
    /// When the class-wide dummy section is mapped, every successful store is counted and the new
    /// count is stored in the first word of the dummy section.
    virtual bool set(unsigned int offset, unsigned int value);

    /// Loads a 32-bit value from the window; `value` is left alone when it is not mapped.
    /// \param offset as for set().
    /// \return false, without an access, when the window is not mapped.
    virtual bool get(unsigned int offset, unsigned int& value) const;

    /// Maps `size` bytes from `physicalAddress`; whatever was mapped before is unmapped.
    /// \return false when the window could not be mapped or must not be, the host having been told
    ///         not to touch hardware. The window is then unmapped and set() and get() fail.
    bool map(unsigned int physicalAddress, unsigned int size);

    /// Gives the window back. Does nothing when it is not mapped. Does not throw.
    void unMap();

protected:
    /// \param noHardwareAccess true: map() leaves the window unmapped.
    HardwareMapping(std::string const& name, SystemLogInterface& log, bool noHardwareAccess);

    /// The base address of a window that is not mapped: all ones.
    static constexpr std::uintptr_t notMapped = ~std::uintptr_t{0};

    /// Address of the first mapped page.
    std::uintptr_t _baseAddress;

    /// Bytes from the first mapped page to the start of the section.
    unsigned int _startOffset;

    /// A section whose first word shows how often the process has written to hardware, or null.
    static HardwareMapping* _dummySection;

    /// Successful stores so far, of all windows, while there is a dummy section. Not atomic: a host that
    /// has one runs one manager, and asks it for no diagnostics while it works.
    static unsigned int _dummySectionWriteCounts;

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};
