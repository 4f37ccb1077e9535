#pragma once

#include <string>

/// A named state of an active object.
class State {
public:
    State(unsigned int id, std::string const& name);
    virtual ~State();
    State(State const&) = delete;
    State& operator=(State const&) = delete;

    unsigned int getId() const;

    /// Valid as long as this object lives.
    std::string const& getName() const;

private:
    unsigned int _id;
    std::string _name;
};
