#pragma once

#include <gdk/gdk.h>

#include <optional>

#include "platform/Events.h"
#include "platform/scene/Window.h"

// The toolkit's mouse and keyboard in the terms of the scene.
namespace Input {

// The numbers of the buttons at a mouse's side.
constexpr guint BackButton = 8, ForwardButton = 9;

// 1 left, 2 right, 4 middle, from the number of a button and from what is held.
int Button(guint button);
int Held(guint state);
// 1 shift, 2 control, 4 alt.
int Shift(guint state);

// A key that the program may know. One that is held with what belongs to the desktop is none.
std::optional<KeyPress> PressOf(const GdkEventKey& event);
// Tells a window of a key. True: it used the key.
bool TellKey(Events& gate, Window& scene, const GdkEventKey& event);
bool TellKey(Events& gate, Window& scene, const KeyPress& press);

// A wheel, which may tell of parts of a notch.
class Wheel {
 public:
  // How many whole notches it has turned; down counts up.
  int Turn(const GdkEventScroll& event);

 private:
  double turned_ = 0;  // of the next notch
};

}  // namespace Input
