#include "fakes/User.h"

#include <numeric>
#include <stdexcept>

namespace {

Controls::Control& Reach(Dialog& dialog, const std::string& name) {
  Controls::Control& part = dialog.Part(name);
  if (!part.Visible || !part.Enabled) throw std::logic_error("The user can't reach " + name);
  return part;
}

template <class Kind>
Kind& Reach(Dialog& dialog, const std::string& name) {
  return dynamic_cast<Kind&>(Reach(dialog, name));
}

void Raise(const std::function<void()>& event) {
  if (event) event();
}

}  // namespace

Act Press(const std::string& name) {
  return [name](Dialog& dialog) {
    Controls::Control& part = Reach(dialog, name);
    if (auto* box = dynamic_cast<Controls::CheckBox*>(&part)) return box->Press();
    if (auto* link = dynamic_cast<Controls::Link*>(&part)) return Raise(link->Click);
    if (auto* option = dynamic_cast<Controls::OptionButton*>(&part)) {
      option->Value = true;
      return;
    }
    // The handler may be the end of the dialog.
    const auto click = dynamic_cast<Controls::CommandButton&>(part).Click;
    Raise(click);
  };
}

Act Type(const std::string& box, const std::string& text) {
  return [=](Dialog& dialog) { Reach<Controls::TextBox>(dialog, box).Text = text; };
}

Act Enter(const std::string& box) {
  return [=](Dialog& dialog) { Raise(Reach<Controls::TextBox>(dialog, box).Activate); };
}

Act Select(const std::string& list, const std::vector<int>& rows) {
  return [=](Dialog& dialog) {
    Reach<Controls::ListBox>(dialog, list).Choose(rows, rows.empty() ? -1 : rows.back());
  };
}

Act SelectAll(const std::string& name) {
  return [=](Dialog& dialog) {
    auto& list = Reach<Controls::ListBox>(dialog, name);
    std::vector<int> rows(static_cast<size_t>(list.ListCount()));
    std::iota(rows.begin(), rows.end(), 0);
    list.Choose(rows, list.ListIndex());
  };
}

Act DoubleClick(const std::string& name, int row) {
  return [=](Dialog& dialog) {
    auto& list = Reach<Controls::ListBox>(dialog, name);
    list.Choose({row}, row);
    Raise(list.DblClick);
  };
}

Act DeleteKey(const std::string& list) {
  return [=](Dialog& dialog) { Raise(Reach<Controls::ListBox>(dialog, list).DeleteKey); };
}

Act ShowPage(const std::string& pages, int page) {
  return [=](Dialog& dialog) { Reach<Controls::TabPages>(dialog, pages).Tab = page; };
}

Act ResizeTo(Controls::Twips width, Controls::Twips height) {
  return [=](Dialog& dialog) { dialog.Resized(width, height); };
}

Act GoElsewhere() {
  return [](Dialog& dialog) { dialog.Deactivated(); };
}
