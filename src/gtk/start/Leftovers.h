#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What earlier runs left in the program's folder, dealt with before anything in it is used.
namespace Leftovers {

// In a folder that a first start is still filling.
inline constexpr const char* InstallMark = ".installing";

// Removes the temporary files of processes that there are no more: only what bears the name of something
// that the program itself writes there, and nothing through a link.
void Clear(const std::filesystem::path& folder);

// Removes what an earlier version kept for speed in the folder of the engine's own data, where that isn't the
// place for it any more. What sites have promised lies beside it and stays. May take long.
void ClearOldCache(const std::filesystem::path& engine);

// A store of the engine's that is damaged, and under which name it was put aside.
struct Damaged {
  std::filesystem::path store, aside;
};

// Puts aside what of the engine's own data can't be what it should be: the cookies, and the databases of
// sites. `engine` is the folder of that data.
std::vector<Damaged> PutAside(const std::filesystem::path& engine);

}  // namespace Leftovers
