#include "core/Preferences.h"

#include <algorithm>
#include <utility>

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "core/frmSplash.h"
#include "platform/Text.h"

namespace {

constexpr const char* IniFile = "\\browser.ini";

// The value of a key as a number, and in its failure the key and the file.
int16_t Number(Program& program, const char* key, double (*convert)(std::string_view)) {
  const std::string path = program.AppPath + IniFile;
  const std::string value = program.general.ReadIniKey(path, key);
  try {
    return ToInt16(convert(value));
  } catch (const Failure& failure) {
    if (!program.general.FileExists(path))
      throw Failure("The settings file \"" + HostPath(path) +
                    "\" is missing. Put it back; into an empty folder the program installs a new one.");
    // After a file that ends in a key nothing could be read any more, and every value is empty.
    if (const auto& [file, last] = program.general.LastUnfinished; program.slot.IsOpen())
      throw Failure("The settings can't be read, because the file \"" + file + "\" ends with the line \"[" +
                    last + "]\". Put its value on a line below it.");
    throw Failure("The setting \"[" + std::string(key) + "]\" in \"" + HostPath(path) +
                  "\" can't be used: " + failure.what() + ". Put a number on the line below it.");
  }
}

}  // namespace

void Preferences::LoadIni(Program& program) {
  const std::string ini = program.AppPath + IniFile;
  CookieTrapMode = Number(program, "cookietrap", LeadingNumber);
  NewTabMode = Number(program, "newtab", LeadingNumber);
  HistoryInTab = Number(program, "history", LeadingNumber);
  SearchInTab = Number(program, "searchtab", LeadingNumber);
  PopupPolicy = Number(program, "popups", LeadingNumber);
  SkinFolder = program.general.ReadIniKey(ini, "skin");
  PaintMode = Number(program, "paint", LeadingNumber);
  DefaultPage = program.general.ReadIniKey(ini, "default");
  SearchPage = program.general.ReadIniKey(ini, "search");
  AutoCompleteOff = Number(program, "autocomplete", StrictNumber);

  std::vector<std::string> words;
  program.slot.Open(program.AppPath + "\\filter.dat", FileSlot::Mode::Input);
  while (!program.slot.EndOfFile()) words.push_back(program.slot.LineInput());
  program.slot.Close();
  SetFilters(std::move(words));

  if (program.SplashUp == 1) program.splash().Status("Loading skin...");

  program.main().skin.LoadSkin(program.AppPath + "\\" + SkinFolder);

  program.main().frame.SizingNow = 0;
  program.menu.OpenMenuName.clear();
  program.menu.MenuLoaded = 0;
  program.menu.MenuMode = 0;
}

void Preferences::SetFilters(std::vector<std::string> words) {
  lstFilter = std::move(words);
  std::stable_sort(lstFilter.begin(), lstFilter.end(), [](const std::string& a, const std::string& b) {
    return Text::LowerCase(a) < Text::LowerCase(b);
  });
}
