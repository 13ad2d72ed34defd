// Draws the program's art.
//
//   skinart --skin DESCRIPTION FOLDER          a theme's bitmaps, preview and skin.ini
//   skinart --brand FOLDER                     the program's icons and pictures
//   skinart --icons FOLDER NAME               the program's icon in the sizes of the desktop's icon theme
//   skinart --sheet FILE.png DESCRIPTION...    a contact sheet of themes

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "Brand.h"
#include "Sheet.h"
#include "Skin.h"

namespace {

using namespace skinart;

int Usage() {
  std::fputs(
      "usage: skinart --skin DESCRIPTION FOLDER\n"
      "       skinart --brand FOLDER\n"
      "       skinart --icons FOLDER NAME\n"
      "       skinart --sheet FILE.png DESCRIPTION...\n",
      stderr);
  return 2;
}

int Run(const std::vector<std::string>& arguments) {
  size_t count = arguments.size();
  if (count == 3 && arguments[0] == "--skin") {
    WriteSkin(ReadTheme(arguments[1]), arguments[2]);
    return 0;
  }
  if (count == 2 && arguments[0] == "--brand") {
    WriteBrand(arguments[1]);
    return 0;
  }
  if (count == 3 && arguments[0] == "--icons") {
    WriteIcons(arguments[1], arguments[2]);
    return 0;
  }
  if (count >= 3 && arguments[0] == "--sheet") {
    std::vector<Theme> themes;
    for (size_t i = 2; i < count; ++i) themes.push_back(ReadTheme(arguments[i]));
    WriteSheet(themes, arguments[1]);
    return 0;
  }
  return Usage();
}

}  // namespace

// Read by the leak checker of sanitized builds: the font library never frees its own tables.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "skinart: %s\n", error.what());
    return 1;
  }
}
