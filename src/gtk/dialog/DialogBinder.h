#pragma once

#include <gtkmm.h>

#include <functional>
#include <map>
#include <string>

#include "platform/Events.h"
#include "platform/dialog/Controls.h"

// Joins a dialog's parts to the widgets of its look, the resource /marlowick/ui/<name>.ui, by name. In the
// look, the window and each widget that stands for a part carry an id, and nothing else does.
class DialogBinder : public DialogHost {
 public:
  // The window that a dialog stands over; null where there is none.
  using Owner = std::function<GtkWindow*()>;

  // Fails where one side lacks a name that the other has, or where a widget is of another kind than its part.
  DialogBinder(Dialog& dialog, Events& gate, Owner owner);

  void Show() override;
  void Hide() override;
  void ShowModal() override;
  void TakeFocus() override { window_->present(); }
  void Caption() override { window_->set_title(dialog_.Caption()); }
  void Resize() override {}
  void Pointer() override {}
  void Refresh() override {}
  void SetFocus(Controls::Control& control) override;
  void Changed(Controls::Control& control, Controls::Aspect aspect) override;

 private:
  void CompareNames() const;
  void Bind(Controls::Control& part);
  template <class Kind>
  Kind& Find(const std::string& name) const;

  Dialog& dialog_;
  Events& gate_;
  Owner owner_;
  Glib::RefPtr<Gtk::Builder> look_;
  // The builder's own reference to a window never ends by itself.
  std::unique_ptr<Gtk::Window> window_;
  std::map<const Controls::Control*, Gtk::Widget*> widgets_;
};
