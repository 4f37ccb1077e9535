#include "host/Xml.hpp"

Xml::~Xml() = default;
