#pragma once

#if defined(__GNUC__)
#define HOST_PRINTF_FORMAT(formatIndex, firstValueIndex)                                                     \
    __attribute__((format(printf, formatIndex, firstValueIndex)))
#else
#define HOST_PRINTF_FORMAT(formatIndex, firstValueIndex)
#endif

/// The message operations that the host offers to everything it hosts.
///
/// The order of the virtual operations is part of the contract: a host that was built against
/// these headers and a library that was built against them meet in the virtual table.
///
/// Every operation may be called from any thread, at any time between the construction and the
/// destruction of the host's application object, and must not throw. The texts are printf formats
/// of the library's own; received or configured text only ever arrives as a value. Most texts carry
/// their own line end, some do not.
class SystemLogInterface {
public:
    /// A condition that ends the host. The library never calls it.
    virtual void logCritical(char const* format, ...) HOST_PRINTF_FORMAT(2, 3) = 0;

    /// Something did not work: a register access, a reference in the document, a time-out.
    virtual void logError(char const* format, ...) HOST_PRINTF_FORMAT(2, 3) = 0;

    /// Something works, but not as it was asked for.
    virtual void logWarning(char const* format, ...) HOST_PRINTF_FORMAT(2, 3) = 0;

    /// A fact about the board or about a step of start-up.
    virtual void logInfo(char const* format, ...) HOST_PRINTF_FORMAT(2, 3) = 0;

    /// The name of a step, for following the state machine.
    virtual void logDebug(char const* format, ...) HOST_PRINTF_FORMAT(2, 3) = 0;

    /// A message of the given detail level. The library uses the levels 0 to 4; what a host makes
    /// of a level is its own affair.
    virtual void log(unsigned int level, char const* format, ...) HOST_PRINTF_FORMAT(3, 4) = 0;

    virtual ~SystemLogInterface();
};
