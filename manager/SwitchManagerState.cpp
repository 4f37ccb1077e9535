// The states of SwitchManager.

#include "host/ThreadedApplication.hpp"
#include "manager/SwitchManager.hpp"

SwitchManager::State::State(unsigned int id, std::string name, Action action)
    : ::State(id, name), _action(action) {}

SwitchManager::State::~State() = default;

SwitchManager::StateId SwitchManager::State::doAction(SwitchManager& manager, Event const* event) {
    manager.getApplication().log(3, "SwitchManager::State::doAction(%s)\n",
                                 manager.nameOfState(manager.getCurrentState()));
    return (manager.*_action)(event); // GCOVR_EXCL_BR_LINE: not virtual
}
