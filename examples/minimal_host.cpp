#include <future>
#include <iostream>

#include "manager/SwitchManager.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/StreamLog.hpp"
#include "reference_host/XmlDocument.hpp"

int main(int argc, char** argv) try {
    reference_host::StreamLog log(std::cerr);
    reference_host::DeviceMemory memory; // the board's registers, through /dev/mem
    reference_host::HostApplication application(log, memory);
    auto const document = reference_host::XmlDocument::fromFile(argc > 1 ? argv[1] : "board.xml");

    std::promise<bool> populated;
    SwitchManager manager(application, *document, false, false);
    std::vector<std::function<void()>> phyCallbacks;
    manager.phyInterfaceParsedCallbackfunctions(phyCallbacks);
    manager.setStartUpEndedCallback([&](char const* failure) {
        if (failure != nullptr) {
            std::cerr << "start-up has failed: " << failure << '\n';
        }
        populated.set_value(failure == nullptr);
    });
    manager.start();
    phyCallbacks.front()(); // the host's PHY interfaces are set up

    bool const ready = populated.get_future().get();
    std::cout << manager.getManagedSwitchesCount() << " switches are up\n";

    application.getThreads().endEventLoops(); // before the manager goes
    return ready ? 0 : 1;
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
