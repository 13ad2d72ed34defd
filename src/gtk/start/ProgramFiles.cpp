#include "gtk/start/ProgramFiles.h"

#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <utility>

#include "gtk/start/Leftovers.h"
#include "platform/Failure.h"

namespace files = std::filesystem;

namespace {

files::path ExecutableFolder() {
  std::error_code error;
  const files::path self = files::read_symlink("/proc/self/exe", error);
  return self.parent_path();
}

// What is delivered lies beside the executable, or, where the program was installed, where such things go.
files::path DeliveredFolder() {
  const files::path beside = ExecutableFolder() / "data";
  return files::exists(beside) ? beside : ExecutableFolder().parent_path() / "share" / "marlowick";
}

// What users do here is nobody else's business, whatever the session's mask says. A folder that the program
// is carried about in is its owner's to share, what sites keep in it isn't.
void KeepPrivate(const files::path& folder) {
  using enum files::perms;
  std::error_code ignored;
  if (folder != ExecutableFolder()) files::permissions(folder, owner_all, ignored);
  files::create_directory(folder / "engine", ignored);
  files::permissions(folder / "engine", owner_all, ignored);
}

void CopyFile(const files::path& from, const files::path& to) {
  files::copy_file(from, to, files::copy_options::overwrite_existing);
  files::permissions(to, files::perms::owner_read | files::perms::owner_write);
}

HomeFolder ChosenFolder() {
  const char* home = g_getenv("MARLOWICK_HOME");
  if (home && *home) return {files::absolute(home).lexically_normal(), false};
  if (files::exists(ExecutableFolder() / "browser.ini")) return {ExecutableFolder(), false};
  return {files::path(g_get_user_data_dir()) / "marlowick", true};
}

const char Skins[] = "skins";
const std::string Mark = Leftovers::InstallMark;
// Until the page of a first start should be on show, in ms.
constexpr unsigned Pause = 1000;

[[noreturn]] void CantBeMade(const files::path& folder, const std::error_code& error) {
  throw Failure("The program's folder \"" + folder.string() + "\" can't be made: " + error.message());
}

std::string OwnNumber() { return ".new-" + std::to_string(::getpid()); }

// Copies what is delivered, all but the skins, where it isn't there or has nothing in it.
void InstallMissing(const files::path& folder) {
  const files::path delivered = DeliveredFolder();
  files::recursive_directory_iterator entry(delivered), end;
  for (; entry != end; ++entry) {
    const files::path target = folder / entry->path().lexically_relative(delivered);
    if (entry->path() == delivered / Skins)
      entry.disable_recursion_pending();
    else if (entry->is_directory())
      files::create_directories(target);
    else if (!files::exists(target) || files::is_empty(target))
      CopyFile(entry->path(), target);
  }
}

// Copies all but the skins into a folder beside it and renames that, so that a
// start that is broken off leaves no half folder.
void Install(const files::path& folder) {
  const files::path delivered = DeliveredFolder();
  if (!files::exists(delivered / "browser.ini"))
    throw Failure("The delivered files are missing: there is no \"browser.ini\" in \"" + delivered.string() +
                  "\"");
  files::path fresh = folder;
  fresh += OwnNumber();
  std::error_code error, ignored;
  try {
    files::create_directories(fresh);
    // First of all: by it the next start knows what this one leaves when it is broken off.
    if (std::ofstream(fresh / Mark))
      InstallMissing(fresh);
    else
      error = std::make_error_code(std::errc::io_error);
    if (!error) files::rename(fresh, folder, error);
  } catch (const files::filesystem_error& failure) {
    error = failure.code();
  }
  if (!error) return;
  files::remove_all(fresh, ignored);
  // Another start may have been quicker.
  if (!files::exists(folder / "browser.ini")) CantBeMade(folder, error);
}

std::error_code InstallSkins(const files::path& folder) {
  std::error_code error, ignored;
  if (files::exists(folder / Skins, error)) return error;
  const files::path fresh = folder / (Skins + OwnNumber());
  files::copy(DeliveredFolder() / Skins, fresh, files::copy_options::recursive, error);
  if (!error) files::rename(fresh, folder / Skins, error);
  if (!error) return error;
  files::remove_all(fresh, ignored);
  // Another start may have been quicker.
  return files::exists(folder / Skins, ignored) ? std::error_code() : error;
}

void RemoveLeftovers(const files::path& folder) {
  std::error_code ignored;
  for (const files::directory_entry& entry : files::directory_iterator(folder, ignored))
    if (entry.path().filename().string().starts_with(std::string(Skins) + ".new-"))
      files::remove_all(entry.path(), ignored);
}

// Finishes what a first start began. The mark goes only when all is on the disk.
std::error_code InstallRest(const files::path& folder) try {
  std::error_code error, ignored;
  if (!files::exists(folder / Mark, error)) return error;
  InstallMissing(folder);  // a power cut may have taken what was in a file
  if ((error = InstallSkins(folder))) return error;
  RemoveLeftovers(folder);
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    ::syncfs(descriptor);
    ::close(descriptor);
  }
  files::remove(folder / Mark, ignored);
  return error;
} catch (const files::filesystem_error& error) {
  return error.code();
}

}  // namespace

HomeFolder HomeFolder::Find() {
  HomeFolder found = ChosenFolder();
  files::path& folder = found.path;
  if (!folder.has_filename()) folder = folder.parent_path();
  try {
    found.fresh = !files::exists(folder) || files::is_empty(folder);
    if (found.fresh) Install(folder);
  } catch (const files::filesystem_error& error) {
    CantBeMade(folder, error.code());
  }
  if (::access(folder.c_str(), W_OK | X_OK) != 0)
    throw Failure("The program's folder \"" + folder.string() +
                  "\" can't be written: " + std::strerror(errno));
  KeepPrivate(folder);
  return found;
}

ProgramFiles::ProgramFiles(const HomeFolder& folder, Callbacks::Runner runner)
    : folder_(folder.path), callbacks_(std::move(runner)) {
  // What this start has begun itself can wait until its page is on show.
  if (folder.fresh) return;
  if (const std::error_code error = InstallRest(folder_)) CantBeMade(folder_, error);
}

void ProgramFiles::FinishLater() {
  std::error_code unknown;
  if (!files::exists(folder_ / Mark, unknown)) return;
  callbacks_.After(Pause, [this] { rest_ = std::thread([folder = folder_] { InstallRest(folder); }); });
}

void ProgramFiles::Finish() {
  if (rest_.joinable()) rest_.join();
  InstallRest(folder_);
}
