#pragma once

#include <gdk/gdk.h>

#include "platform/Events.h"
#include "platform/scene/Window.h"

// The toolkit's mouse and keyboard in the terms of the scene.
namespace Input {

// 1 left, 2 right, 4 middle, from the number of a button and from what is held.
int Button(guint button);
int Held(guint state);
// 1 shift, 2 control, 4 alt.
int Shift(guint state);

// Tells a window of a key. True: it used the key.
bool TellKey(Events& gate, Window& scene, const GdkEventKey& event);

}  // namespace Input
