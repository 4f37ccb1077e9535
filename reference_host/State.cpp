#include "host/State.hpp"

State::State(unsigned int id, std::string const& name) : _id(id), _name(name) {}

State::~State() = default;

unsigned int State::getId() const {
    return _id;
}

std::string const& State::getName() const {
    return _name;
}
