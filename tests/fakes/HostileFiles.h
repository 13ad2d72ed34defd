#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "fakes/Rig.h"
#include "fakes/Spoiler.h"

// Spoilt files in the folder of a whole program, one after the other: its settings, skins, lists, templates,
// layouts and favourites, and what other starts and programs hand it. The program may refuse a file or make
// something of it, but may not crash, hang or lose its footing.
class HostileFiles {
 public:
  explicit HostileFiles(uint32_t seed);

  // One file. Throws std::logic_error, which names the kind, where the program has lost its footing.
  void TryOne();

  struct Kind {
    const char* name;
    long tried = 0, refused = 0;
    void (HostileFiles::*attempt)() = nullptr;
  };
  const std::vector<Kind>& Kinds() const { return kinds_; }

 private:
  void Settings();
  void SkinSettings();
  void SkinPicture();
  void TypedList();
  void Launch();
  void Templates();
  void DayPage();
  void Layout();
  void DropTabs();
  void Shortcut();
  void BookmarkFile();
  void HandedOver();
  void Read(const char* name, const std::string& good);
  void Check(bool fine) const;

  Spoiler spoiler_;
  Rig rig_;
  std::vector<Kind> kinds_;
  Kind* current_ = nullptr;
  std::string content_;  // of the last file
};
