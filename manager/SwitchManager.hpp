#pragma once

#include <array>
#include <atomic>
#include <ctime>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/ActiveObject.hpp"
#include "host/Mutex.hpp"
#include "host/State.hpp"
#include "manager/PhyInterfacesHaveBeenPopulatedEvent.hpp"
#include "manager/SwitchManagementThread.hpp"
#include "manager/SwitchManagerThreadHasStartedEvent.hpp"
#include "model/MulticastGroupOrder.hpp"

class ManagedSwitch;
class ManagedSwitchPort;
class Vlan;
class Xml;
struct _xmlNode;

/// Brings a board's switch chips up and keeps them: the object that a host creates.
///
/// The host constructs it, takes the PHY callback (phyInterfaceParsedCallbackfunctions), calls
/// start(), runs the callback once when its PHY interfaces are set up, and is told how start-up has
/// ended (setStartUpEndedCallback), or by its populated callbacks when the switches are ready. In whatever
/// order the report and the start of the management thread come, start-up runs once, on the management
/// thread. The host ends that thread's event loop before it destroys the manager.
///
/// The queries may be used from any thread once the populated callbacks have run.
class SwitchManager : public ActiveObject {
public:
    enum StateId : unsigned int {
        startState = 0,
        waitingForSwitchManagementThreadToStart = 1,
        waitingForPhyInterfacesToBePopulated = 2,
        initialising = 3,
        idleState = 4,
    };

    /// A state of the manager and what it does when it is entered.
    class State : public ::State {
    public:
        using Action = StateId (SwitchManager::*)(Event const*);

        State(unsigned int id, std::string name, Action action);
        ~State() override;

        /// Runs the action on the manager. Returns the state to go to next.
        virtual StateId doAction(SwitchManager& manager, Event const* event);

    private:
        Action _action;
    };

    /// Nothing is started and no chip is accessed.
    /// \param application outlives the manager, and so does `document`.
    /// \param ignoredFlag has no effect.
    /// \param noHardwareAccess true: switches are created although their chips do not answer, and
    ///        nothing is written to any chip.
    SwitchManager(ThreadedApplication& application, Xml& document, bool ignoredFlag, bool noHardwareAccess);

    /// Waits for the management thread if it runs, then deletes VLANs, switches and states. The
    /// multicast groups are not deleted. The host has ended the thread's event loop before, or ends
    /// it meanwhile; otherwise this waits for good.
    ~SwitchManager() override;

    /// Starts the management thread.
    void start();

    /// As start(), and has `callbacks` called, on the management thread, when start-up has finished.
    /// They are copied. That thread reports what is a std::exception; what else one throws, such as the
    /// plain texts of the VSC7390's bus, goes on to the host's thread.
    void start(std::vector<std::function<void()>>& callbacks);

    /// Has `callback` called once, on the management thread, when start-up has ended: with null when the
    /// switches are populated, after the populated callbacks; else with the reason why it goes no
    /// further, a text that lasts for the call, after the message about it. That is what an exception
    /// says, a plain text itself, or that there is neither; or that the host has ended the event loop.
    /// Not called when start() throws: then there is no such thread. What it throws is treated like
    /// what a populated callback throws. Set it before start(); it replaces the one before.
    void setStartUpEndedCallback(std::function<void(char const* failure)> callback);

    void startSwitchManagementThread();

    /// Called on the management thread as its first act.
    void switchManagerThreadHasStarted();

    /// Dispatches one event, on the management thread. What start-up throws passes through.
    void processEvent(Event const* event);

    /// Where the transition table leads from the current state.
    unsigned int getNewState(Event const* event) const;

    /// Reports an event that must not arrive in the current state.
    void shouldNotHappen(Event const* event) override;

    /// The state object of an id, or null.
    State const* getState(unsigned int id) const override;

    StateId startStateAction(Event const* event);
    StateId waitingForSwitchManagementThreadToStartAction(Event const* event);
    StateId waitingForPhyInterfacesToBePopulatedAction(Event const* event);

    /// The whole of start-up. Throws std::runtime_error for a document that cannot be right and for a
    /// VSC7390 bus that stays dead in the middle of it. What a populated callback throws passes as it is.
    StateId initialisingAction(Event const* event);
    StateId idleStateAction(Event const* event);

    /// Finds and creates the document's switches, Marvell ones first, each family by ascending id.
    void detectSwitches();

    /// Creates a switch and adds it to the others. Throws std::runtime_error when the id is taken.
    /// \param macAddress six bytes.
    void createMarvellManagedSwitch(unsigned int id, unsigned char const* macAddress);
    void createVitesseManagedSwitch(unsigned int id, unsigned char const* macAddress);

    /// Sets the address ageing time of the switches that have one in the document.
    void configureSwitchSettings();

    /// Builds the VLANs and their members and has every switch program its chip.
    void configureVlans();
    void addVlan(_xmlNode* vlanElement);
    void addVlanPort(Vlan& vlan, _xmlNode* portElement);

    /// Has every switch program its trunk groups.
    void configureTrunks();

    /// Builds the forwarded multicast groups and has every switch program its chip.
    void configureMulticastFilters();
    void addMulticastGroup(_xmlNode* groupElement);

    /// The group of an element, told by address text and VLAN; null if there is none yet.
    MulticastGroup* getMulticastGroup(_xmlNode* groupElement) const;
    void addMulticastGroupPort(MulticastGroup& group, _xmlNode* groupElement);

    /// Has every switch set its ports up.
    void configurePorts();

    /// The switch of that id, or null. Takes no lock.
    ManagedSwitch* getManagedSwitch(unsigned int id) const;

    /// All switches by ascending id. Takes no lock.
    std::map<unsigned int, ManagedSwitch*> const& getManagedSwitches() const;

    /// How many switches there are; also while they are being created.
    unsigned int getManagedSwitchesCount();

    /// The port that connects the switches to the host's processor. Start-up overrides it when the
    /// document has such a port. The port stays its switch's.
    void setCpuPort(ManagedSwitchPort& port);

    /// The port that connects the switches to the host's processor, or null. Takes no lock.
    ManagedSwitchPort* getCpuPort() const;

    /// Not supported: false, and nothing is touched.
    bool getMacAddress(unsigned char* buffer, unsigned int length, timespec& time, std::string& text);

    /// Not supported: false, and nothing is touched.
    bool setDefaultMacAddress(unsigned int id, timespec& time, std::string& text);

    /// Appends the callback that the host runs when its PHY interfaces are set up.
    void phyInterfaceParsedCallbackfunctions(std::vector<std::function<void()>>& callbacks);

    /// The host's PHY interfaces are set up. Any thread; takes no lock and does not wait, so it
    /// returns at once even while start-up runs.
    void phyInterfacesHaveNowBeenSetup();

    void iterateManagedSwitchPopulatedCallbacks();

    /// Writes one port's counters as text.
    /// \return false when there is no such port or the counters could not be read.
    ///
    /// Reads the chip on the caller's thread, without a lock: the chip's statistics unit must not be
    /// in use by another thread. So the host asks once the populated callbacks have run, or in one of
    /// them, and for one port of a switch at a time; 88E6096 chips share the MDIO bus, so for one of
    /// their ports at a time.
    bool collectSwitchPortDiagnostics(unsigned int switchId, unsigned int portId, std::ostream& out,
                                      timespec& time, std::string& text);

private:
    friend class SwitchManagementThread;

    using AgeTimes = std::map<unsigned int, unsigned short>;
    using DetectedSwitches = std::map<unsigned short, unsigned char const*>;

    void eventHandled();
    void eventFailed(char const* reason);
    void startUpEnded(char const* failure);
    void bringUp();
    void findCpuPort();
    void detectSwitch(_xmlNode* node, DetectedSwitches& marvellSwitches, DetectedSwitches& vitesseSwitches);
    template <typename Switch>
    void createManagedSwitch(unsigned int id, unsigned char const* macAddress, std::string const& operation);
    ManagedSwitchPort* findMember(int switchId, int portId, char const* operation, char const* what);
    void applyAgeTime(ManagedSwitch& managedSwitch);
    template <typename Configure> void forEachSwitch(Configure configure);
    template <typename Configure> void forEachSwitchWithHardware(Configure configure);
    void addTransition(StateId from, SwitchManagerEvent::SwitchManagerEventId event, StateId to);
    void addState(StateId id, char const* name, State::Action action);
    State* findState(unsigned int id) const;
    char const* nameOfState(unsigned int id) const;
    StateId currentState() const;

    ManagedSwitchPort* _cpuPort = nullptr;
    bool _noHardwareAccess;
    SwitchManagementThread _switchManagementThread;
    SwitchManagerThreadHasStartedEvent _switchManagerThreadHasStartedEvent;
    PhyInterfacesHaveBeenPopulatedEvent _phyInterfacesHaveBeenPopulatedEvent;
    Mutex _managedSwitchesMutex;
    std::map<unsigned int, ManagedSwitch*> _managedSwitches;
    std::map<unsigned int, Vlan*> _vlans;
    std::vector<MulticastGroup*> _multicastGroups;
    AgeTimes _atuAgeTimes;
    Xml& _xml;
    std::vector<std::function<void()>> _managedSwitchPopulatedCallbacks;
    std::atomic<bool> _phyInterfacesPopulated;
    [[maybe_unused]] unsigned int _reserved32;
    std::array<std::unique_ptr<State>, 6> _states;
    [[maybe_unused]] unsigned short _reserved152;
    /// The same groups by key.
    std::set<MulticastGroup*, MulticastGroupOrder> _multicastGroupsByKey;
    /// Empty once it has been called.
    std::function<void(char const*)> _startUpEndedCallback;
};
