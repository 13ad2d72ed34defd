#pragma once

#include <string>
#include <vector>

// The source names of the cookies that the engine's store on the disk holds and that haven't expired, read
// without the engine. No store yet is an empty one. Fails where it is locked, broken or can't be read.
std::vector<std::string> CookiesOnDisk(const std::string& file);
