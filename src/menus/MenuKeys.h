#pragma once

#include "platform/scene/KeyPress.h"

// The keys that work in an open menu.
namespace MenuKeys {

// Letter: to the next row that begins with it. Other: none of the menus'.
enum class Key { Other, Down, Up, First, Last, Left, Right, Choose, Letter };

Key Of(const KeyPress& press);

}  // namespace MenuKeys
