#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/dialog/Controls.h"

// What the user does in a dialog: for FakeDesktop::acts, or called at once, as in Press("Command1")(dialog).
// A part that is hidden or disabled can't be reached, and fails the test.
using Act = std::function<void(Dialog&)>;

Act Press(const std::string& part);  // a button, a check box, an option, a link
Act Type(const std::string& box, const std::string& text);
Act Enter(const std::string& box);
// Exactly these rows, with the last press on the last of them.
Act Select(const std::string& list, const std::vector<int>& rows);
Act SelectAll(const std::string& list);  // Ctrl+A
Act DoubleClick(const std::string& list, int row);
Act DeleteKey(const std::string& list);
Act ShowPage(const std::string& pages, int page);
// Outer size in twips.
Act ResizeTo(Controls::Twips width, Controls::Twips height);
Act GoElsewhere();  // to another window
