#include "platform/dialog/FileLists.h"

#include <algorithm>
#include <utility>

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace {

// Folders and files that the desktop hides don't count. Names that differ in case only keep a fixed order.
std::vector<std::string> InOrder(const std::vector<std::string>& names) {
  std::vector<std::pair<std::string, std::string>> keyed;
  for (const std::string& name : names)
    if (!name.starts_with('.')) keyed.emplace_back(Text::UpperCase(name), name);
  std::sort(keyed.begin(), keyed.end());
  std::vector<std::string> ordered;
  ordered.reserve(keyed.size());
  for (auto& [key, name] : keyed) ordered.push_back(std::move(name));
  return ordered;
}

// Whether a name fits one pattern; both in upper case. "?" is one character, not one byte.
bool Fits(std::string_view name, std::string_view pattern) {
  size_t at = 0, in = 0, star = pattern.npos, resumed = 0;
  const auto next = [&name](size_t from) {
    do ++from;
    while (from < name.size() && (static_cast<unsigned char>(name[from]) & 0xC0) == 0x80);
    return from;
  };
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == '*') {
      star = in++;
      resumed = at;
    } else if (in < pattern.size() && pattern[in] == '?') {
      at = next(at);
      ++in;
    } else if (in < pattern.size() && pattern[in] == name[at]) {
      ++at;
      ++in;
    } else if (star != pattern.npos) {
      in = star + 1;
      at = resumed = next(resumed);
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', in) == pattern.npos;
}

bool FitsAny(const std::string& name, const std::string& patterns) {
  const std::string upper = Text::UpperCase(name), all = Text::UpperCase(patterns);
  for (size_t from = 0; from <= all.size();) {
    const size_t end = std::min(all.find(';', from), all.size());
    const std::string pattern = all.substr(from, end - from);
    if (pattern == "*.*" || Fits(upper, pattern)) return true;
    from = end + 1;
  }
  return false;
}

const std::string& At(const std::vector<std::string>& names, int index, const std::string& path) {
  if (index < 0 || static_cast<size_t>(index) >= names.size())
    throw Failure("The listing of \"" + path + "\" has no entry " + std::to_string(index));
  return names[static_cast<size_t>(index)];
}

}  // namespace

namespace Controls {

void DirListBox::SetPath(const std::string& path) {
  path_ = path;
  names_ = InOrder(FolderNames(path));
}

std::string DirListBox::List(int index) const { return path_ + "\\" + At(names_, index, path_); }

void FileListBox::SetPath(const std::string& path) {
  path_ = path;
  std::vector<std::string> names = FileNames(path);
  std::erase_if(names, [this](const std::string& name) { return !FitsAny(name, pattern_); });
  names_ = InOrder(names);
}

const std::string& FileListBox::List(int index) const { return At(names_, index, path_); }

}  // namespace Controls
