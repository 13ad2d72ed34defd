#include "platform/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

constexpr size_t ChunkBytes = 16 * 1024;

bool Exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

[[noreturn]] void Fail(const std::string& what, const std::string& path, int error) {
  throw Failure(what + " \"" + path + "\": " + std::strerror(error));
}

template <class Accept>
std::vector<std::string> Names(const std::string& path, Accept accept) {
  std::vector<std::string> names;
  const std::string folder = HostPath(path) + "/";
  DIR* listing = ::opendir(folder.c_str());
  if (!listing) return names;
  while (const dirent* entry = ::readdir(listing)) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    struct stat status {};
    if (::stat((folder + name).c_str(), &status) == 0 && accept(status.st_mode)) names.push_back(name);
  }
  ::closedir(listing);
  return names;
}

// The spelling that the folder has for a name, exact first, then the first one in order; the name itself
// where there is none.
std::string Spelling(const std::string& folder, const std::string& name) {
  if (Exists(folder + "/" + name)) return name;
  const std::string lower = Text::LowerCase(name);
  DIR* listing = ::opendir(folder.empty() ? "/" : folder.c_str());
  if (!listing) return name;
  std::string found;
  while (const dirent* entry = ::readdir(listing))
    if (Text::LowerCase(entry->d_name) == lower && (found.empty() || entry->d_name < found))
      found = entry->d_name;
  ::closedir(listing);
  return found.empty() ? name : found;
}

// Only what is a file: a pipe would be waited for, and a device may never end. -1 where it can't be opened.
int OpenForReading(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat status {};
  if (file < 0 || (::fstat(file, &status) == 0 && S_ISREG(status.st_mode))) return file;
  ::close(file);
  errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  return -1;
}

// What a link leads to; the path itself where it is none, or leads nowhere.
std::string BehindLink(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
  const std::unique_ptr<char, decltype(&::free)> target(::realpath(path.c_str(), nullptr), &::free);
  return target ? target.get() : path;
}

// How many bytes reach the file: fewer than there are where it fails.
size_t WriteAll(int file, std::string_view text) {
  size_t all = 0;
  while (all < text.size()) {
    const ssize_t written = ::write(file, text.data() + all, text.size() - all);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    all += static_cast<size_t>(written);
  }
  return all;
}

// Takes back what a full disk took of an append, unless another program has written behind it.
void TakeBack(int file, size_t written) {
  const int error = errno;
  const off_t end = ::lseek(file, 0, SEEK_CUR);
  struct stat status {};
  if (written > 0 && ::fstat(file, &status) == 0 && status.st_size == end &&
      ::ftruncate(file, end - static_cast<off_t>(written)) != 0) { /* what is there stays */
  }
  errno = error;
}

}  // namespace

std::string HostPath(const std::string& path) {
  if (Exists(path)) return path;
  std::string slashed = Text::Replace(path, "\\", "/");
  if (slashed.empty() || slashed[0] != '/' || Exists(slashed)) return slashed;
  std::string host;
  for (size_t at = 1; at <= slashed.size();) {
    size_t end = slashed.find('/', at);
    if (end == slashed.npos) end = slashed.size();
    if (end > at) host += "/" + Spelling(host, slashed.substr(at, end - at));
    at = end + 1;
  }
  return host.empty() ? "/" : host;
}

bool IsFile(const std::string& host_path) {
  struct stat status {};
  return ::stat(host_path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::vector<std::string> FolderNames(const std::string& path) {
  return Names(path, [](mode_t mode) { return S_ISDIR(mode); });
}

std::vector<std::string> FileNames(const std::string& path) {
  return Names(path, [](mode_t mode) { return S_ISREG(mode); });
}

void MakeFolder(const std::string& path) {
  const std::string folder = HostPath(path);
  if (::mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) Fail("Can't create the folder", folder, errno);
}

void RemoveFile(const std::string& host_path) {
  if (::unlink(host_path.c_str()) != 0 && errno != ENOENT) Fail("Can't delete the file", host_path, errno);
}

std::string ReadWholeFile(const std::string& path) {
  const std::string host = HostPath(path);
  const int file = OpenForReading(host);
  if (file < 0) Fail("Can't read the file", host, errno);
  std::string content;
  for (;;) {
    const size_t had = content.size();
    content.resize(had + ChunkBytes);
    const ssize_t got = ::read(file, content.data() + had, ChunkBytes);
    const int error = errno;
    content.resize(had + (got > 0 ? static_cast<size_t>(got) : 0));
    if (got > 0 || (got < 0 && error == EINTR)) continue;
    ::close(file);
    if (got < 0) Fail("Can't read the file", host, error);
    return content;
  }
}

FileSlot::~FileSlot() { Abandon(); }

void FileSlot::OpenExactly(const std::string& host_path, Mode mode) {
  if (IsOpen()) throw Failure("Can't open \"" + host_path + "\": \"" + path_ + "\" is still open");
  path_ = mode == Mode::Output ? BehindLink(host_path) : host_path;
  mode_ = mode;
  buffer_.clear();
  at_ = 0;
  ended_ = false;
  temporary_.clear();
  if (mode == Mode::Input) {
    file_ = OpenForReading(path_);
  } else if (mode == Mode::Append) {
    file_ = ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  } else {
    struct stat status {};
    const bool replaces = ::stat(path_.c_str(), &status) == 0;
    if (replaces && S_ISDIR(status.st_mode)) Fail("Can't write the file", path_, EISDIR);
    if (replaces && ::access(path_.c_str(), W_OK) != 0) Fail("Can't write the file", path_, errno);
    temporary_ = path_ + ".new-" + std::to_string(::getpid());
    file_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file_ >= 0 && replaces && ::fchmod(file_, status.st_mode & 0777) != 0) { /* keeps the usual mode */
    }
  }
  if (file_ < 0) Fail(mode == Mode::Input ? "Can't open the file" : "Can't write the file", path_, errno);
}

void FileSlot::Fill() {
  while (!ended_ && at_ >= buffer_.size()) {
    buffer_.resize(ChunkBytes);
    at_ = 0;
    const ssize_t got = ::read(file_, buffer_.data(), buffer_.size());
    const int error = errno;
    buffer_.resize(got > 0 ? static_cast<size_t>(got) : 0);
    if (got < 0 && error == EINTR) continue;
    if (got < 0) Fail("Can't read the file", path_, error);
    ended_ = got == 0;
  }
}

bool FileSlot::EndOfFile() {
  if (!IsOpen() || mode_ != Mode::Input) throw Failure("No file is open for input");
  if (at_ < buffer_.size()) return false;
  Fill();
  return at_ >= buffer_.size();
}

std::string FileSlot::LineInput() { return std::string(LineView()); }

std::string_view FileSlot::LineView() {
  if (EndOfFile()) throw Failure("The file \"" + path_ + "\" ends where a further line is expected");
  line_.clear();
  do {
    const char* start = buffer_.data() + at_;
    const size_t left = buffer_.size() - at_;
    const auto* end = static_cast<const char*>(std::memchr(start, '\n', left));
    const std::string_view piece(start, end ? static_cast<size_t>(end - start) : left);
    at_ += piece.size() + (end ? 1 : 0);
    if (end && line_.empty()) return piece.ends_with('\r') ? piece.substr(0, piece.size() - 1) : piece;
    line_ += piece;
    if (!end) continue;
    if (line_.ends_with('\r')) line_.pop_back();
    break;
  } while (!EndOfFile());
  return line_;
}

void FileSlot::Print(std::string_view line) {
  if (!IsOpen() || mode_ == Mode::Input) throw Failure("No file is open for output");
  buffer_ += line;
  buffer_ += "\r\n";
  if (mode_ == Mode::Append || buffer_.size() < ChunkBytes) return;
  if (WriteAll(file_, buffer_) < buffer_.size()) {
    const int error = errno;
    Abandon();
    Fail("Can't write the file", path_, error);
  }
  buffer_.clear();
}

void FileSlot::Close() {
  if (!IsOpen()) return;
  bool good = true;
  if (mode_ != Mode::Input) {
    const size_t written = WriteAll(file_, buffer_);
    good = written == buffer_.size();
    if (!good && mode_ == Mode::Append) TakeBack(file_, written);
  }
  if (!temporary_.empty()) good = good && ::fsync(file_) == 0 && PutInPlace();
  const int error = errno;
  Abandon();
  if (!good) Fail("Can't write the file", path_, error);
}

// Gives the new file its name. False, with errno, where that fails.
bool FileSlot::PutInPlace() const {
  if (mode_ == Mode::Output) return ::rename(temporary_.c_str(), path_.c_str()) == 0;
  if (::renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, path_.c_str(), RENAME_NOREPLACE) == 0) return true;
  // A file system that knows no such renaming knows a second name.
  if (errno == EINVAL && ::link(temporary_.c_str(), path_.c_str()) == 0) return true;
  return errno == EEXIST;
}

void FileSlot::Abandon() {
  if (file_ >= 0) ::close(file_);
  file_ = -1;
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
  temporary_.clear();
  buffer_.clear();
  line_ = {};
}
