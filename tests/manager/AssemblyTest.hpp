#pragma once

#include "model/ManagedSwitch.hpp"
#include "tests/manager/ManagerTest.hpp"

/// A manager that has found switches 0 (ports 0, 1, 8) and 4 (port 1), all 88E6096, without hardware.
class AssemblyTest : public ManagerTest {
protected:
    /// \param elements what stands beside the switches; `inPort` goes into port 8 of switch 0.
    void assemble(std::string const& elements, std::string const& inPort = "") {
        manage("<board><switches><switch id='0' switchModel='88e6096'>"
               "<port id='0' connectedTo='cpu' portStatus='forwarding'/>"
               "<port id='1' connectedTo='external' portStatus='forwarding'/>"
               "<port id='8' connectedTo='external' portStatus='forwarding'>" +
               inPort +
               "</port></switch>"
               "<switch id='4' switchModel='88e6096'><port id='1' connectedTo='external' "
               "portStatus='forwarding'/>"
               "</switch></switches>" +
               elements + "</board>");
        manager->detectSwitches();
        takeLines();
    }

    /// Runs a query and hands out its first node.
    xmlNodePtr first(std::string const& query) { return document->find(query)->nodeTab[0]; }
};
