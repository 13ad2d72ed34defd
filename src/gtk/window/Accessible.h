#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "platform/Events.h"
#include "platform/scene/Window.h"

// Tells screen readers of a scene's drawn controls: name, role, state and place, as the last frame showed
// them, and a press. They come first among the view's accessible children, in the scene's order; the real
// widgets follow them.
//
// Costs nothing until somebody has asked the view for its accessible object.
class Accessible {
 public:
  // `view` is the GtkLayout that shows the scene, of a class of its own, and outlives this.
  Accessible(GtkWidget* view, Events& gate, Window& scene);
  Accessible(const Accessible&) = delete;
  ~Accessible();

  // Runs before a control is pressed by name.
  std::function<void()> BeforePress;

  // The scene may have changed: tells what has.
  void Update();

  // For the objects that stand for the view and for its controls.
  struct Seen {
    std::weak_ptr<Control> Source;
    Role Kind = Role::None;
    PixelRect Bounds;
    bool InSight = false;  // some of it lies inside its parents and the window
    bool Selected = false;
    bool Pressable = false;
    std::string Name;
  };
  void Attach(AtkObject* object);
  AtkObject* Object() const { return object_; }
  int Count() const { return static_cast<int>(drawn_.size()); }
  AtkObject* Child(int index) const { return drawn_[static_cast<size_t>(index)]; }
  int IndexOf(const AtkObject* child) const;
  bool Mapped() const { return gtk_widget_get_mapped(view_); }
  // The view's left top corner, in pixels of the screen, of the window or of the view itself. False before
  // there is a window.
  bool Origin(AtkCoordType type, int& left, int& top) const;
  void PressLater(const Seen& seen);

 private:
  void Press(const Seen& seen);
  std::vector<Seen> Look() const;
  void Replace(const std::vector<Seen>& wanted);
  void Insert(size_t index, AtkObject* child);
  AtkObject* TakeOut(size_t index);

  GtkWidget* view_;
  Events& gate_;
  Window& scene_;
  AtkObject* object_ = nullptr;  // none before somebody asks for it
  std::vector<AtkObject*> drawn_;
  Callbacks callbacks_;
};
