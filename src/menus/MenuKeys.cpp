#include "menus/MenuKeys.h"

#include <array>
#include <utility>

namespace {

using MenuKeys::Key;

constexpr auto Names = std::to_array<std::pair<std::string_view, Key>>({
    {"Down", Key::Down},
    {"KP_Down", Key::Down},
    {"Up", Key::Up},
    {"KP_Up", Key::Up},
    {"Home", Key::First},
    {"KP_Home", Key::First},
    {"End", Key::Last},
    {"KP_End", Key::Last},
    {"Left", Key::Left},
    {"KP_Left", Key::Left},
    {"Right", Key::Right},
    {"KP_Right", Key::Right},
    {"Return", Key::Choose},
    {"KP_Enter", Key::Choose},
    {"ISO_Enter", Key::Choose},
    {"space", Key::Choose},
});

}  // namespace

namespace MenuKeys {

Key Of(const KeyPress& press) {
  for (const auto& [name, key] : Names)
    if (press.Is(name, 0)) return key;
  return press.Name.size() == 1 && press.Is(press.Name, KeyPress::AnyShift) ? Key::Letter : Key::Other;
}

}  // namespace MenuKeys
