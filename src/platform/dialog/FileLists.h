#pragma once

#include <string>
#include <vector>

namespace Controls {

// What a folder holds, in the order of names without regard to case, read when the path is set. A folder
// that can't be read has nothing. They show nothing, and so need no dialog.
class DirListBox {
 public:
  const std::string& Path() const { return path_; }
  void SetPath(const std::string& path);

  int ListCount() const { return static_cast<int>(names_.size()); }
  std::string List(int index) const;  // a sub-folder's whole path

 private:
  std::string path_;
  std::vector<std::string> names_;
};

// The files of a folder whose names fit the pattern, hidden ones left out.
class FileListBox {
 public:
  // "*.url"; several are parted by ";". "*" stands for anything, "?" for one character, case doesn't matter,
  // and "*.*" is every file.
  explicit FileListBox(std::string pattern = "*.*") : pattern_(std::move(pattern)) {}

  const std::string& Path() const { return path_; }
  void SetPath(const std::string& path);

  int ListCount() const { return static_cast<int>(names_.size()); }
  const std::string& List(int index) const;  // a file's name with its extension

 private:
  std::string path_, pattern_;
  std::vector<std::string> names_;
};

}  // namespace Controls
