#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "platform/dialog/Control.h"

// A dialog's look: the widgets of its resource, by their ids.
class Look {
 public:
  // Reads /marlowick/ui/<name>.ui. Fails where there is none, or where it is broken.
  explicit Look(std::string name);

  // Fails where there is no widget of this id, or one of another kind.
  GtkWidget* Find(const std::string& id, GType kind) const;

 private:
  std::string name_;
  Owned<GtkBuilder> builder_;
};

// Whole pixels of a length in twips.
int Pixels(Controls::Twips twips);

// What joins one part to its widget, each kind of part in a class of its own: it brings to the widget what
// the program sets, and to the part what the user does. Peers end before their parts and their widgets.
class Peer {
 public:
  Peer(Controls::Control& part, GtkWidget* widget) : part_(part), widget_(widget) {}
  Peer(const Peer&) = delete;
  virtual ~Peer() = default;

  // Brings everything to the widget that the part has and the look hasn't.
  void Join();
  virtual void Changed(Controls::Aspect aspect);
  GtkWidget* Widget() const { return widget_; }

 protected:
  // True while the program and not the user changes the widget.
  bool setting_ = false;
  // Runs a change of the widget that isn't the user's.
  template <class Change>
  void Set(Change change) {
    setting_ = true;
    change();
    setting_ = false;
  }
  // What the joining brings besides visibility, sensitivity and place.
  virtual void JoinOwn() {}

 private:
  void Put();

  Controls::Control& part_;
  GtkWidget* widget_;
};

// The peer of a part, with the part's widget in a look. Fails where the widget is lacking or of another kind.
// Signals come in through `callbacks`.
std::unique_ptr<Peer> MakePeer(Controls::Control& part, const Look& look, Callbacks& callbacks);
