#pragma once

#include <functional>
#include <memory>

#include "platform/scene/KeyPress.h"
#include "platform/scene/Scene.h"

// What a window asks of the desktop. Positions are the window's own properties.
class WindowHost {
 public:
  virtual ~WindowHost() = default;
  virtual void Show() = 0;
  virtual void Hide() = 0;
  virtual void Move() = 0;        // Left and Top have changed
  virtual void Resize() = 0;      // Width and Height have changed
  virtual void Caption() = 0;     // has changed
  virtual void State() = 0;       // WindowState has changed
  virtual void Focus() = 0;       // brings the window to the front and gives it the keyboard
  virtual void Invalidate() = 0;  // something may look different: compare at the next frame
  virtual void Repaint() = 0;     // now
};

class Window;

// What windows are made with.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;
  virtual Drawing& Draws() = 0;
  virtual std::unique_ptr<WindowHost> MakeHost(Window& window) = 0;
};

// A top-level window: the root of a scene. Left and Top are on the screen, in twips.
class Window : public Surface, public SceneRoot {
 public:
  enum class Kind {
    Main,    // no system frame, one task bar entry
    Splash,  // no frame, no task bar entry, centred on the screen
    Popup,   // no frame, no task bar entry, above its owner; ends with a press outside
    Relay,   // on the task bar only: nothing of it is on the screen
  };
  static constexpr int Normal = 0, Minimised = 1, Maximised = 2;

  Window(WindowSystem& system, Kind kind, const Place& place, const std::string& caption);
  ~Window() override;

  Property<std::string> Caption;
  Property<int> WindowState;
  // The place is that of a maximised window: the desktop may call the window so, and cut what lies outside.
  Property<bool> FillsScreen;

  // Width and Height run Resize at once, within the assignment; so does WindowState.
  std::function<void()> Resize;
  std::function<void()> Activate, Deactivate, GotFocus, LostFocus;
  // A key, before the window's widgets see it. True: it was used, and they don't get it. While popup windows
  // are open they hear of it first, from the newest on, and then the main window; its widgets don't.
  std::function<bool(const KeyPress&)> KeyDown;
  // None of the window's widgets has the keyboard: somebody is to take it.
  std::function<void()> KeyboardFree;
  // The user or the desktop wants the window closed.
  std::function<void()> QueryUnload;

  void Show() { Visible = true; }
  void Hide() { Visible = false; }
  void Move(Twips left, Twips top);
  void SetFocus();
  // Paints what has changed now, without waiting for the next frame.
  void Refresh();

  Kind WindowKind() const { return kind_; }

  // The window's picture at this moment.
  DisplayList Describe();

  // What the desktop reports, in twips of the window.
  void MousePressed(int button, int shift, Twips x, Twips y, bool second_press = false);
  void MouseMoved(int buttons, int shift, Twips x, Twips y);
  void MouseReleased(int button, int shift, Twips x, Twips y);
  void Wheeled(int notches, Twips x, Twips y);
  void Dropped(const DataObject& data, Twips x, Twips y);
  // The control under a point, front-most first; the window itself where nothing else is there.
  Control& At(Twips x, Twips y);
  bool Captures() const { return captured_ != nullptr; }
  // The desktop has moved, sized or restacked the window.
  void Placed(Twips left, Twips top);
  void Sized(Twips width, Twips height);

  void Changed(Aspect aspect) override;
  void Forget(const Control& control) override;
  Drawing& Draws() override { return system_.Draws(); }

 protected:
  using Surface::Describe;
  SceneRoot* AsRoot() override { return this; }

 private:
  WindowSystem& system_;
  Kind kind_;
  std::unique_ptr<WindowHost> host_;
  Control* captured_ = nullptr;
  int button_ = 0;        // whose press captured
  bool doubled_ = false;  // the press that is held was the second of a double click
  bool shown_ = false;    // what the host was last told
  bool quiet_ = false;    // a change comes from the desktop and isn't told back to it
};
