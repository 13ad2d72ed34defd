#include "gtk/base/ProgramLine.h"

#include <glib.h>

#include "gtk/base/GObjects.h"
#include "platform/Failure.h"
#include "platform/Files.h"

std::vector<std::string> TakeApart(const std::string& line) {
  const std::string path = HostPath(line);
  if (path.starts_with('/') && IsFile(path)) return {path};
  GError* error = nullptr;
  char** words = nullptr;
  if (!g_shell_parse_argv(line.c_str(), nullptr, &words, &error)) throw Failure(OwnedError(error)->message);
  std::vector<std::string> arguments;
  for (char** word = words; *word; ++word) arguments.emplace_back(*word);
  g_strfreev(words);
  return arguments;
}
