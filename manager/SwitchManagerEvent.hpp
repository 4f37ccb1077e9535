#pragma once

#include <string>

#include "host/Event.hpp"

/// An event of the switch manager's state machine. All of them share one event type.
class SwitchManagerEvent : public Event {
public:
    static constexpr Event::Type eventType = 3;

    enum SwitchManagerEventId : unsigned int {
        switchManagerThreadHasStarted = 2,
        phyInterfacesHaveBeenPopulated = 3,
    };

    /// \param thread the thread that is to process the event.
    SwitchManagerEvent(Thread& thread, TypeOfActiveObject const& objectType, SwitchManagerEventId id,
                       unsigned int instanceId, std::string name);
    ~SwitchManagerEvent() override;
};
