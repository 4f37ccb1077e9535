#pragma once

#include <string>

/// Names a kind of active object; two types are the same when their names are.
class TypeOfActiveObject {
public:
    explicit TypeOfActiveObject(std::string name);

    /// Valid as long as this object lives.
    std::string const& getName() const;

private:
    std::string _name;
};
