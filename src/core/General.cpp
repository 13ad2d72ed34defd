#include "core/General.h"

#include <array>
#include <filesystem>

#include "platform/Failure.h"
#include "platform/Text.h"

std::string General::ReadIniKey(const std::string& path, const std::string& key) {
  LastKeyValue.clear();
  bool opened = false;
  try {
    const std::string header = Text::LowerCase("[" + key + "]");
    slot_.Open(path, FileSlot::Mode::Input);
    opened = true;
    while (!slot_.EndOfFile())
      if (Text::LowerCase(slot_.LineInput()) == header) LastKeyValue = slot_.LineInput();
    slot_.Close();
    return LastKeyValue;
  } catch (const Failure&) {
    // A header on the last line leaves the file open: the next reader finds the slot taken.
    if (opened) LastUnfinished = {HostPath(path), key};
    return {};
  }
}

std::string General::ReadSectionText(const std::string& path, const std::string& key) {
  LastKeyValue.clear();
  const std::string header = Text::LowerCase("[" + key + "]");
  slot_.Open(path, FileSlot::Mode::Input);
  try {
    while (!slot_.EndOfFile()) {
      if (Text::LowerCase(slot_.LineInput()) != header) continue;
      LastKeyValue = slot_.LineInput();
      for (std::string line = slot_.LineInput(); Text::LowerCase(line) != "[end]"; line = slot_.LineInput())
        LastKeyValue += "\r\n" + line;
    }
  } catch (const Failure&) {
    // The log tries again with the next page, and finds the slot free.
    slot_.Abandon();
    throw;
  }
  slot_.Close();
  return LastKeyValue;
}

bool General::FileExists(const std::string& path) const { return IsFile(HostPath(path)); }

bool General::FolderExists(const std::string& path) const {
  std::error_code error;
  return std::filesystem::is_directory(HostPath(path), error);
}

std::string ReverseString(std::string_view text) {
  std::string reversed;
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::string first = Text::Left(rest, 1);
    reversed.insert(0, first);
    rest.remove_prefix(first.size());
  }
  return reversed;
}

std::string LastFolderName(std::string_view path) {
  const std::string reversed = ReverseString(path);
  const size_t backslash = reversed.find('\\');
  if (backslash == reversed.npos) throw Failure("The path \"" + std::string(path) + "\" has no backslash");
  return ReverseString(std::string_view(reversed).substr(0, backslash));
}

std::string MonthName(int month) {
  static constexpr std::array Names = {"January", "February", "March",     "April",   "May",      "June",
                                       "July",    "August",   "September", "October", "November", "December"};
  static_assert(Names.size() == 12);
  return Names[month >= 2 && month <= 12 ? static_cast<size_t>(month - 1) : 0];
}
