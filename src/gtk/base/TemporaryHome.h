#pragma once

#include <string>

namespace TemporaryHome {

// Makes a folder that goes with this process, however that ends. To be called while the process has one
// thread. Fails where it can't be made.
std::string Make();

}  // namespace TemporaryHome
