#pragma once

#include <string>
#include <vector>

// A line that names a program, as the user wrote it, taken apart: the program and its arguments. A line that
// as it stands is the whole path of a file is that program alone, whatever blanks, quotes and backslashes are
// in it; any other is read as a shell reads its words. Fails for a line without words, and for a quote
// without its end.
std::vector<std::string> TakeApart(const std::string& line);
