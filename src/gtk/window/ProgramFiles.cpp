#include "gtk/window/ProgramFiles.h"

#include <glib.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "platform/Failure.h"

namespace files = std::filesystem;

namespace {

files::path ExecutableFolder() {
  std::error_code error;
  const files::path self = files::read_symlink("/proc/self/exe", error);
  return self.parent_path();
}

// What is delivered lies beside the executable.
files::path DeliveredFolder() { return ExecutableFolder() / "data"; }

files::path ChosenFolder() {
  const char* home = g_getenv("MARLOWICK_HOME");
  if (home && *home) return files::absolute(home).lexically_normal();
  if (files::exists(ExecutableFolder() / "browser.ini")) return ExecutableFolder();
  return files::path(g_get_user_data_dir()) / "marlowick";
}

// Copies into a folder beside it and renames that, so that a start that is broken off leaves no half folder.
void Install(const files::path& folder) {
  const files::path delivered = DeliveredFolder();
  if (!files::exists(delivered / "browser.ini"))
    throw Failure("The delivered files are missing: there is no \"browser.ini\" in \"" + delivered.string() +
                  "\"");
  files::path fresh = folder;
  fresh += ".new-" + std::to_string(::getpid());
  std::error_code error, ignored;
  files::create_directories(folder.parent_path(), error);
  if (!error) files::copy(delivered, fresh, files::copy_options::recursive, error);
  if (!error) files::rename(fresh, folder, error);
  if (!error) return;
  files::remove_all(fresh, ignored);
  // Another start may have been quicker.
  if (files::exists(folder / "browser.ini")) return;
  throw Failure("The program's folder \"" + folder.string() + "\" can't be made: " + error.message());
}

}  // namespace

std::string FindProgramFolder() {
  files::path folder = ChosenFolder();
  if (!folder.has_filename()) folder = folder.parent_path();
  try {
    if (!files::exists(folder) || files::is_empty(folder)) Install(folder);
  } catch (const files::filesystem_error& error) {
    throw Failure("The program's folder \"" + folder.string() +
                  "\" can't be made: " + error.code().message());
  }
  if (::access(folder.c_str(), W_OK | X_OK) != 0)
    throw Failure("The program's folder \"" + folder.string() +
                  "\" can't be written: " + std::strerror(errno));
  return folder.string();
}
