#pragma once

#include <functional>
#include <string>

#include "platform/dialog/Control.h"
#include "platform/scene/Bitmap.h"

namespace Controls {

// Pages of which one is on show. Their names and what lies on them are the look's.
class TabPages : public Control {
 public:
  TabPages(Dialog& dialog, std::string name)
      : Control(dialog, std::move(name)), Tab(this, Aspect::Value, 0) {}

  Property<int> Tab;            // the page on show, from 0
  std::function<void()> Click;  // another page has come to the front, by the user or by the program

  void Changed(Aspect aspect) override;
};

// A picture: the look's until the program sets one, and none once it is set back to none.
class Image : public Control {
 public:
  Image(Dialog& dialog, std::string name)
      : Control(dialog, std::move(name)), Picture(this, Aspect::Picture, nullptr) {}

  Property<::Picture> Picture;
};

}  // namespace Controls
