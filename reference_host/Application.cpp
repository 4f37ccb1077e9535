#include "host/Application.hpp"

Application::~Application() = default;
