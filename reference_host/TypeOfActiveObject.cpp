#include "host/TypeOfActiveObject.hpp"

#include <utility>

TypeOfActiveObject::TypeOfActiveObject(std::string name) : _name(std::move(name)) {}

std::string const& TypeOfActiveObject::getName() const {
    return _name;
}
