#pragma once

#include <string>
#include <string_view>

#include "platform/Files.h"

// The small helpers for text files and paths that the whole program shares. They work on the program's one
// file slot: none may be called while a file is open there.
class General {
 public:
  explicit General(FileSlot& slot) : slot_(slot) {}

  // The line behind the last line that reads "[key]", without regard to case. Empty where there is none or
  // anything fails; a failure behind the opening leaves the file slot taken.
  std::string ReadIniKey(const std::string& path, const std::string& key);
  // What left the slot taken: the host's path of the file and the key on its last line.
  struct Unfinished {
    std::string Path, Key;
  };
  Unfinished LastUnfinished;

  // The lines between "[key]" and "[end]", joined by CR LF; the last such block counts. Fails for a missing
  // file and for a block without its end.
  std::string ReadSectionText(const std::string& path, const std::string& key);

  bool FileExists(const std::string& path) const;
  bool FolderExists(const std::string& path) const;

 private:
  FileSlot& slot_;
  std::string LastKeyValue;
};

// The characters in reverse order.
std::string ReverseString(std::string_view text);
// What follows the last backslash. Fails for a path without one.
std::string LastFolderName(std::string_view path);
// The English name of a month, 1 to 12; "January" for any other number.
std::string MonthName(int month);
