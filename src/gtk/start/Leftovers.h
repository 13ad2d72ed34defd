#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What earlier runs left in the program's folder, dealt with before anything in it is used.
namespace Leftovers {

// Removes the temporary files of processes that there are no more.
void Clear(const std::filesystem::path& folder);

// A store of the engine's that is damaged, and under which name it was put aside.
struct Damaged {
  std::filesystem::path store, aside;
};

// Puts aside what of the engine's own data can't be what it should be: the cookies, and the databases of
// sites. `engine` is the folder of that data.
std::vector<Damaged> PutAside(const std::filesystem::path& engine);

}  // namespace Leftovers
