#pragma once

#include <string>

/// A terminal of 24 rows and 80 columns: programs have the device, the test reads what they write to it.
class TerminalWindow {
public:
    TerminalWindow();
    ~TerminalWindow();
    TerminalWindow(TerminalWindow const&) = delete;
    TerminalWindow& operator=(TerminalWindow const&) = delete;

    /// The device, for use in this process.
    int getDevice() const { return _device; }

    /// Closes the device in this process: what follows ends when all others have closed it.
    void closeDevice();

    /// Reads on until the text of all reads together contains `text`, and returns it all; also when
    /// everybody has closed the device before that.
    std::string const& readUntil(std::string const& text);

    /// Reads on until everybody has closed the device.
    std::string const& readToEnd();

    /// What is there to read now is not waited for.
    std::string const& readAvailable();

    /// As if typed.
    void type(std::string const& text) const;

private:
    bool readMore();

    int _window;
    int _device = -1;
    std::string _read;
};
