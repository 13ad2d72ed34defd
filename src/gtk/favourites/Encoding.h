#pragma once

#include <string>

// A file's text as UTF-8: by its byte order mark; else UTF-8 where it is that; else what `declared` names;
// else the Western code page of Windows. No zero bytes and no invalid ones.
std::string ToUtf8(const std::string& content, const std::string& declared = "");
