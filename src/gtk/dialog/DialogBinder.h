#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <map>
#include <memory>

#include "gtk/base/Callbacks.h"
#include "gtk/dialog/Peer.h"
#include "platform/Events.h"
#include "platform/dialog/Dialog.h"

// Joins a dialog to its look, the resource /marlowick/ui/<name>.ui: the window has the dialog's name as its
// id, and each part's widget the part's. Other ids are the look's own business.
class DialogBinder : public DialogHost {
 public:
  // The window that a dialog is to stand over; null where there is none.
  using Owner = std::function<GtkWindow*()>;

  // Fails where a part has no widget, or one of another kind.
  DialogBinder(Dialog& dialog, Events& gate, Owner owner);

  void Show() override;
  void Hide() override;
  void ShowModal() override;
  void TakeFocus() override;
  void Caption() override;
  void Resize() override;
  void Pointer() override;
  void Refresh() override;
  void SetFocus(Controls::Control& control) override;
  void Changed(Controls::Control& control, Controls::Aspect aspect) override;

 private:
  void Listen();
  void TellSize(int width, int height);
  gboolean Key(GdkEventKey* event);
  void Activated();
  void Watch(GtkWindow* owner);

  GtkWidget* Widget() const { return GTK_WIDGET(window_.get()); }

  Dialog& dialog_;
  Owner owner_;
  Look look_;
  struct Destroy {
    void operator()(GtkWindow* window) const { gtk_widget_destroy(GTK_WIDGET(window)); }
  };
  // A window never ends by the end of the look's reference.
  std::unique_ptr<GtkWindow, Destroy> window_;
  bool mapped_ = false;      // it is on the screen
  bool comes_back_ = false;  // takes the keyboard as soon as the user comes back to the program
  std::map<const Controls::Control*, std::unique_ptr<Peer>> peers_;
  Callbacks callbacks_;
};

// What the next dialog stands over: the modal one in front, where one stands. Else, a modal dialog stands
// over the active one of those that stand over `main`, and any other over `main` itself. Null where `main` is
// none or hidden, since a hidden owner would hide what stands over it.
GtkWindow* OwnerFor(bool modal, GtkWindow* main);
