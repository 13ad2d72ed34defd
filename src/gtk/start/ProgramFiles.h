#pragma once

#include <filesystem>
#include <string>
#include <thread>

#include "gtk/base/Callbacks.h"

// The program's folder: $MARLOWICK_HOME if set, else the folder of the executable if `browser.ini` lies
// there, else $XDG_DATA_HOME/marlowick. Where it isn't there yet, or is empty, it is installed from the
// delivered files; a folder with anything in it is taken as it is.
struct HomeFolder {
  std::filesystem::path path;
  bool usual = true;   // neither named nor carried about with the program
  bool fresh = false;  // installed by this start

  // Fails where the folder can't be made or written.
  static HomeFolder Find();
};

// What lies in the folder, for the one program that has it.
//
// A first start installs the skins, hundreds of files, only once its page is on
// show. Until all is there and on the disk, the folder holds a mark, by which the next start finishes what
// this one didn't.
class ProgramFiles {
 public:
  // Fails where what another start left half done can't be finished.
  ProgramFiles(const HomeFolder& folder, Callbacks::Runner runner);
  ~ProgramFiles() { Finish(); }

  std::string Folder() const { return folder_.string(); }
  // The rest of a first start, in a while and beside the program.
  void FinishLater();
  // Returns once nothing is left to be installed. What can't be is tried again by the next start, which
  // tells.
  void Finish();

 private:
  const std::filesystem::path folder_;
  std::thread rest_;
  Callbacks callbacks_;
};
