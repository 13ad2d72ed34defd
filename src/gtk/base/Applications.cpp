#include "gtk/base/Applications.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr const char* Terminal = "x-terminal-emulator";

// Tools that tell about the machine, the first one that is installed: entries of the desktop, and programs
// that bring none along.
constexpr const char* InformationTools[] = {"gnome-about-panel.desktop",
                                            "gnome-info-overview-panel.desktop",
                                            "gnome-system-panel.desktop",
                                            "org.kde.kinfocenter.desktop",
                                            "kinfocenter",
                                            "hardinfo2.desktop",
                                            "hardinfo2",
                                            "hardinfo.desktop",
                                            "hardinfo",
                                            "lshw-gtk.desktop",
                                            "lshw-gtk"};

bool InPath(const char* program) { return !TakeText(g_find_program_in_path(program)).empty(); }

std::string Quoted(const char* text) { return text ? TakeText(g_shell_quote(text)) : std::string(); }

std::string WithoutFieldCodes(const std::string& line, GDesktopAppInfo* entry) {
  std::string command;
  for (size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '%' || i + 1 == line.size()) {
      command += line[i];
      continue;
    }
    switch (line[++i]) {
      case '%':
        command += '%';
        break;
      case 'c':
        command += Quoted(g_app_info_get_name(G_APP_INFO(entry)));
        break;
      case 'k':
        command += Quoted(g_desktop_app_info_get_filename(entry));
        break;
      default:  // files, addresses, icons
        break;
    }
  }
  command.erase(command.find_last_not_of(' ') + 1);
  return command;
}

}  // namespace

namespace Applications {

std::string CommandOf(GDesktopAppInfo* entry) {
  const std::string command = WithoutFieldCodes(TextOf(g_app_info_get_commandline(G_APP_INFO(entry))), entry);
  if (command.empty() || !g_desktop_app_info_get_boolean(entry, "Terminal")) return command;
  return InPath(Terminal) ? std::string(Terminal) + " -e " + command : std::string();
}

std::vector<Application> Installed() {
  struct Entry {
    std::string key;  // what names are sorted by, in the user's language
    Application application;
  };
  std::vector<Entry> entries;
  GList* infos = g_app_info_get_all();
  for (const GList* at = infos; at; at = at->next) {
    auto* info = static_cast<GAppInfo*>(at->data);
    if (!G_IS_DESKTOP_APP_INFO(info) || !g_app_info_should_show(info)) continue;
    const char* name = g_app_info_get_display_name(info);
    const std::string command = CommandOf(G_DESKTOP_APP_INFO(info));
    if (!name || !*name || command.empty()) continue;
    GIcon* icon = g_app_info_get_icon(info);
    const std::string folded = TakeText(g_utf8_casefold(name, -1));
    entries.push_back({TakeText(g_utf8_collate_key(folded.c_str(), -1)),
                       {name, command, icon ? Share(icon) : Owned<GIcon>()}});
  }
  g_list_free_full(infos, g_object_unref);
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& one, const Entry& other) { return one.key < other.key; });
  std::vector<Application> applications;
  for (Entry& entry : entries) applications.push_back(std::move(entry.application));
  return applications;
}

std::string SystemInformation() {
  for (const char* tool : InformationTools) {
    if (!std::string_view(tool).ends_with(".desktop")) {
      if (InPath(tool)) return tool;
      continue;
    }
    // An entry is only made where its program is installed. A desktop's settings run in that desktop alone.
    const Owned<GDesktopAppInfo> entry(g_desktop_app_info_new(tool));
    if (!entry || !g_desktop_app_info_get_show_in(entry.get(), nullptr)) continue;
    if (const std::string command = CommandOf(entry.get()); !command.empty()) return command;
  }
  return {};
}

}  // namespace Applications
