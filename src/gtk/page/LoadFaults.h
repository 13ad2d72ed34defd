#pragma once

#include <string>

#include "gtk/page/text/LoadErrors.h"

// What an error of the engine's means for the load of an address.
LoadFault FaultOf(const std::string& uri, const GError* error);
