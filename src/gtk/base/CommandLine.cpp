#include "gtk/base/CommandLine.h"

#include <filesystem>
#include <string_view>

namespace {

constexpr std::string_view Help =
    "Usage: marlowick [OPTION] [ADDRESS]\n"
    "Opens ADDRESS in the first tab, or the home page where none is given. Where Marlowick\n"
    "runs already, opens ADDRESS in a new tab there, and brings it to the front.\n"
    "\n"
    "  --new-window  opens a plain window instead where Marlowick runs already\n"
    "  --help        tells this\n"
    "  --version     tells the version\n"
    "  --automation  lets another program drive this start, in a folder of its own; stands alone\n"
    "  --            ends the options: what follows is an address\n";

CommandLine Answered(std::string text, int status) {
  CommandLine line;
  line.answer = {std::move(text), status};
  return line;
}

}  // namespace

CommandLine CommandLine::Read(const std::vector<std::string>& arguments) {
  CommandLine line;
  size_t first = 0;
  if (!arguments.empty() && arguments[0].starts_with("-") && arguments[0] != "-") {
    const std::string& option = arguments[0];
    if (option == "--help") return Answered(std::string(Help), 0);
    if (option == "--version") return Answered("Marlowick " MARLOWICK_VERSION "\n", 0);
    if (option == "--automation" && arguments.size() > 1)
      return Answered("marlowick: \"--automation\" stands alone.\n" + std::string(Help), 2);
    line.automation = option == "--automation";
    line.new_window = option == "--new-window";
    line.service = option == "--gapplication-service";
    if (option != "--" && !line.automation && !line.new_window && !line.service)
      return Answered("marlowick: there is no option \"" + option + "\".\n" + std::string(Help), 2);
    first = 1;
    // What an address begins with may look like an option.
    if (arguments.size() > 1 && option != "--" && arguments[1] == "--") first = 2;
  }
  for (size_t i = first; i < arguments.size(); ++i) line.address += (i > first ? " " : "") + arguments[i];
  std::error_code error;
  const std::filesystem::path path(line.address);
  if (!line.address.empty() && path.is_relative() && std::filesystem::exists(path, error))
    line.address = std::filesystem::absolute(path, error).lexically_normal().string();
  return line;
}
