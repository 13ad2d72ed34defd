#pragma once

#include <string>
#include <string_view>
#include <vector>

// Turns a path as the program joins it ("…\history\day.htm") into a path of the host: the path itself where
// it exists, else backslashes as separators, each component by its exact spelling first and then without
// regard to case. Components that exist in no spelling stay as they are written.
std::string HostPath(const std::string& path);

// Whether a host's path, as it is spelt, leads to a file.
bool IsFile(const std::string& host_path);

// The names in a folder, in no order; empty where it can't be read. Sub-folders only, or files only.
std::vector<std::string> FolderNames(const std::string& path);
std::vector<std::string> FileNames(const std::string& path);

// Creates one folder. Fails where that can't be done; a folder that exists is no failure.
void MakeFolder(const std::string& path);

// Removes a file, by the host's path as it is spelt. Fails where it is still there afterwards.
void RemoveFile(const std::string& host_path);

// The whole content of a file. Fails where it can't be read.
std::string ReadWholeFile(const std::string& path);

// The program's only way to a file: one slot, so that no two files are open at once. Opening while the slot
// is taken fails.
class FileSlot {
 public:
  // Create writes a file like Output, but not over one that has come to be by the closing: that one stays,
  // and what was printed is dropped.
  enum class Mode { Input, Output, Append, Create };

  FileSlot() = default;
  FileSlot(const FileSlot&) = delete;
  FileSlot& operator=(const FileSlot&) = delete;
  ~FileSlot();

  // Output goes to a new file beside the old one, which takes its place when the slot is closed; until then,
  // and where anything fails, the old file stays whole. A link stays, and the file it leads to is replaced.
  // What is appended reaches the file in one write at the closing.
  void Open(const std::string& path, Mode mode) { OpenExactly(HostPath(path), mode); }
  // The file of a host's path as it is spelt, such as the user chose in a dialog.
  void OpenExactly(const std::string& host_path, Mode mode);
  bool IsOpen() const { return file_ >= 0; }

  // Input. A line ends at LF or CR LF; text behind the last line end is a line too. LineInput fails at the
  // end.
  bool EndOfFile();
  std::string LineInput();
  // The next line without a copy, good until the slot is used again: for the files of many lines.
  std::string_view LineView();

  // Output and Append: the text and CR LF.
  void Print(std::string_view line);

  // Fails where written text doesn't reach the disk.
  void Close();
  // Lets go of the file and of what was printed. Never fails.
  void Abandon();

 private:
  void Fill();
  bool PutInPlace() const;

  int file_ = -1;
  Mode mode_ = Mode::Input;
  std::string path_;       // the host's path
  std::string temporary_;  // the new file, while open for Output or Create
  std::string buffer_;     // read ahead, or printed and not written yet
  std::string line_;       // one that lies in more than one piece of the buffer
  size_t at_ = 0;
  bool ended_ = false;
};
