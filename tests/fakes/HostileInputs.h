#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fakes/Spoiler.h"
#include "platform/scene/Drawing.h"

// Good files with a few of their bytes spoilt, fed to the readers of what the program didn't write. A reader
// may refuse a file or make something of it, but may not crash, hang or return nonsense. The same seed makes
// the same inputs.
class HostileInputs {
 public:
  explicit HostileInputs(uint32_t seed);
  ~HostileInputs();

  struct Counts {
    long Pictures = 0, Taken = 0;  // tried; and of these, how many were pictures still
    long IniFiles = 0, Tabs = 0, Histories = 0;
  };
  // Goes on for so many inputs. Throws std::logic_error for a nonsensical result, and leaves the input that
  // made it in the working folder as "hostile-input".
  Counts Run(long inputs);
  Counts TryOne();

 private:
  void TryPicture(const std::string& content);
  void TryIni(const std::string& content);
  void TryTabs(const std::string& content);
  void TryHistory(const std::string& content);
  void Write(const std::string& content);

  Spoiler spoiler_;
  int file_;  // in memory: a disk would take most of the time
  std::string path_;
  std::unique_ptr<Drawing> drawing_ = MakeDrawing();
  std::vector<std::string> pictures_, ini_files_, tabs_, histories_;
  Counts counts_;
};
