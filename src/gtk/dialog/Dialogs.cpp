#include "gtk/dialog/Dialogs.h"

#include <gtk/gtk.h>

#include <string>
#include <vector>

#include "gtk/base/GObjects.h"
#include "gtk/dialog/DialogBinder.h"
#include "platform/Failure.h"

namespace {

struct Filter {
  std::string name;
  std::vector<std::string> patterns;
};

std::vector<std::string> Split(const std::string& text, char at) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == at)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

std::vector<Filter> Filters(const std::string& text) {
  std::vector<Filter> filters;
  const std::vector<std::string> parts = Split(text, '|');
  for (size_t i = 0; i + 1 < parts.size(); i += 2) filters.push_back({parts[i], Split(parts[i + 1], ';')});
  return filters;
}

// The toolkit's patterns know upper from lower case: each letter becomes a choice of both.
std::string WithoutCase(const std::string& pattern) {
  if (pattern == "*.*") return "*";
  std::string either;
  for (const char c : pattern) {
    if (g_ascii_isalpha(c))
      either += {'[', g_ascii_tolower(c), g_ascii_toupper(c), ']'};
    else
      either += c;
  }
  return either;
}

// Programs are told by what they may do here, and not by their names.
gboolean CanBeExecuted(const GtkFileFilterInfo* info, gpointer) {
  return info->filename && g_file_test(info->filename, G_FILE_TEST_IS_REGULAR) &&
         g_file_test(info->filename, G_FILE_TEST_IS_EXECUTABLE);
}

void Admit(GtkFileFilter* filter, const std::string& pattern) {
  if (pattern == "*.exe")
    gtk_file_filter_add_custom(filter, GTK_FILE_FILTER_FILENAME, CanBeExecuted, nullptr, nullptr);
  else
    gtk_file_filter_add_pattern(filter, WithoutCase(pattern).c_str());
}

// ".tab" for the pattern "*.tab"; empty for one that names no extension.
std::string Extension(const Filter& filter) {
  const std::string& pattern = filter.patterns.front();
  const bool names_one = pattern.starts_with("*.") && pattern.find_first_of("*?", 2) == pattern.npos;
  return names_one ? pattern.substr(1) : "";
}

bool HasExtension(const std::string& path) {
  const size_t dot = path.rfind('.'), slash = path.rfind('/');
  return dot != path.npos && (slash == path.npos || dot > slash);
}

std::string Choose(GtkWindow* main, GtkFileChooserAction action, const std::string& title,
                   const std::string& filter_text) {
  const Owned<GtkFileChooserNative> dialog(
      gtk_file_chooser_native_new(title.c_str(), OwnerFor(true, main), action, nullptr, nullptr));
  gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(dialog.get()), TRUE);
  GtkFileChooser* chooser = GTK_FILE_CHOOSER(dialog.get());
  gtk_file_chooser_set_do_overwrite_confirmation(chooser, FALSE);
  const std::vector<Filter> filters = Filters(filter_text);
  std::vector<GtkFileFilter*> made;
  for (const Filter& filter : filters) {
    made.push_back(gtk_file_filter_new());
    gtk_file_filter_set_name(made.back(), filter.name.c_str());
    for (const std::string& pattern : filter.patterns) Admit(made.back(), pattern);
    gtk_file_chooser_add_filter(chooser, made.back());
  }
  if (!made.empty()) gtk_file_chooser_set_filter(chooser, made.front());

  const int response = gtk_native_dialog_run(GTK_NATIVE_DIALOG(dialog.get()));
  if (response != GTK_RESPONSE_ACCEPT) throw Failure("\"" + title + "\" was cancelled");
  std::string path = TakeText(gtk_file_chooser_get_filename(chooser));
  if (path.empty())
    throw Failure("\"" + title + "\": the chosen file isn't on this machine. Choose a local one");
  if (action != GTK_FILE_CHOOSER_ACTION_SAVE || HasExtension(path)) return path;
  for (size_t i = 0; i < made.size(); ++i)
    if (made[i] == gtk_file_chooser_get_filter(chooser)) path += Extension(filters[i]);
  return path;
}

}  // namespace

namespace Dialogs {

std::string ShowOpen(GtkWindow* main, const std::string& title, const std::string& filter) {
  return Choose(main, GTK_FILE_CHOOSER_ACTION_OPEN, title, filter);
}

std::string ShowFolder(GtkWindow* main, const std::string& title) {
  return Choose(main, GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER, title, "");
}

std::string ShowSave(GtkWindow* main, const std::string& title, const std::string& filter) {
  return Choose(main, GTK_FILE_CHOOSER_ACTION_SAVE, title, filter);
}

}  // namespace Dialogs
