#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Property.h"
#include "platform/scene/Bitmap.h"
#include "platform/scene/Colour.h"
#include "platform/scene/DisplayList.h"
#include "platform/scene/Root.h"

// The scene that the program's own chrome is made of: windows, surfaces, labels and stores in a tree.
//
// Positions and sizes are in twips, relative to the parent. A control's edges are rounded to whole pixels on
// the window, so neighbours that touch in twips touch in pixels.

using Twips = double;
constexpr Twips TwipsPerPixel = 15;
// The whole pixel next to a place. What lies further off than any screen stays within what windows can have.
int ToPixels(Twips twips);

struct Place {
  Twips Left = 0, Top = 0, Width = 0, Height = 0;
};

// A mouse event on a control.
struct Mouse {
  int Button = 0;      // 0 none, 1 left, 2 right, 4 middle: pressed, released, or held during a move
  int Shift = 0;       // 1 shift, 2 control, 4 alt
  Twips X = 0, Y = 0;  // in the control
};

enum class Pointer { Default, SizeDiagonal, SizeLeftRight, SizeUpDown };
enum class Role { None, Button, Tab, MenuLabel, MenuItem, SubMenu, Text };

// What a drop carries. Format 1 is plain text.
class DataObject {
 public:
  virtual ~DataObject() = default;
  virtual bool GetFormat(int format) const = 0;
  // Fails where the format isn't there.
  virtual std::string GetData(int format) const = 0;
};

enum class Aspect { Place, Size, Look, Text, State };

class Control {
 public:
  template <class T>
  using Property = ObservedValue<T, Control, Aspect>;

  Control(Control* parent, const Place& place);
  Control(const Control&) = delete;
  virtual ~Control();

  Property<Twips> Left, Top;
  Property<Twips> Width, Height;  // a negative value fails
  Property<bool> Visible;
  Property<std::string> ToolTipText;
  Pointer MousePointer = Pointer::Default;

  // What a screen reader tells: nothing for Role::None. Pressing by name does what a click does.
  Role AccessibleRole = Role::None;
  std::string AccessibleName;
  bool AccessibleSelected = false;

  // A press captures the mouse until its release: moves go on arriving, also from outside. A click is a press
  // and a release on the same control, by any button. The second press of a double click raises DblClick
  // where that is set; it then brings no click, and no moves follow it. A desktop may tell it as a press
  // first.
  std::function<void(const Mouse&)> MouseDown, MouseMove, MouseUp;
  std::function<void()> Click, DblClick;
  // A click of the middle button, where that is another thing than a click.
  std::function<void()> MiddleClick;
  // The mouse's wheel over the control or what stands on it, by so many notches; down counts up.
  std::function<void(int notches)> MouseWheel;
  std::function<void(const DataObject&)> OLEDragDrop;
  // What pressing by name does where that is more than a click.
  std::function<void()> AccessiblePress;
  void PressByName();

  // 0: to the front of its siblings; 1: to their back.
  void ZOrder(int position);
  // Leaves the parent and the screen.
  void Detach();
  // All children leave this parent at once.
  void ReleaseChildren();

  // For those who may outlive the control: its end is the end of this.
  std::weak_ptr<Control> Alive() const { return alive_; }

  Control* Parent() const { return parent_; }
  const std::vector<Control*>& Children() const { return children_; }  // from back to front
  SceneRoot* Root();

  // On the window, in twips and in pixels.
  Twips RootLeft() const;
  Twips RootTop() const;
  PixelRect PixelBounds() const;
  // Visible with all its parents.
  bool Showing() const;

  void Check(Aspect aspect, double value) const;
  virtual void Changed(Aspect aspect);

 protected:
  friend class Window;
  // False: the mouse finds what lies behind.
  virtual bool TakesMouse() const { return true; }
  // Itself, where it is the root of its tree.
  virtual SceneRoot* AsRoot() { return nullptr; }
  // Fills in what this kind of control shows. `item` comes with the control's identity, bounds and clip.
  virtual void Describe(DrawItem& item);
  Drawing& Draws();
  void DescribeAll(DisplayList& list, Twips left, Twips top, const PixelRect& clip);

 private:
  Control* parent_;
  std::vector<Control*> children_;
  std::shared_ptr<Control> alive_{this, [](Control*) {}};
};

// A rectangle with a picture, tiles or printed text on it.
class Surface : public Control {
 public:
  explicit Surface(Control* parent, const Place& place = {});

  Property<Colour> BackColor, ForeColor;
  // Shown once at the top left corner, under the text. With AutoSize the surface takes its size at once.
  Property<::Picture> Picture;
  bool AutoSize = false;

  // Printing: the position in twips. Print draws one line there and goes on to the start of the next one.
  Twips CurrentX = 0, CurrentY = 0;
  void Print(std::string_view text);
  // Width of a line, height of a line, in twips.
  Twips TextWidth(std::string_view text);
  Twips TextHeight();
  // Clears what was printed and tiled to the back colour, and the print position to the corner.
  void Cls();
  // Clears, then repeats a picture over the whole surface. No picture: only clears.
  void Tile(const ::Picture& picture);

  void Changed(Aspect aspect) override;

 protected:
  void Describe(DrawItem& item) override;

 private:
  struct Line {
    Twips X, Y;
    std::string Text;
    Colour ForeColor;
  };
  ::Picture tiles_;
  std::vector<Line> lines_;
};

// A hidden surface that takes the size of its picture and holds one bitmap of the skin for others to use.
class Store : public Surface {
 public:
  explicit Store(Control* parent) : Surface(parent) {
    Visible = false;
    AutoSize = true;
  }
};

enum class Alignment { Left, Centre };

// One line of text; longer text ends in an ellipsis at the label's edge.
class Label : public Control {
 public:
  Label(Control* parent, const Place& place, const std::string& caption,
        Alignment alignment = Alignment::Left);

  Property<std::string> Caption;
  Property<Colour> ForeColor, BackColor;
  Property<bool> Opaque;   // whether BackColor shows
  Property<bool> Enabled;  // a disabled one is grey, and the mouse finds what lies behind it

 protected:
  void Describe(DrawItem& item) override;
  bool TakesMouse() const override { return Enabled; }

 private:
  Alignment alignment_;
};
