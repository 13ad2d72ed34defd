#include "gtk/window/Input.h"

int Input::Button(guint button) { return button == 1 ? 1 : button == 3 ? 2 : 4; }

int Input::Held(guint state) {
  return (state & GDK_BUTTON1_MASK ? 1 : 0) | (state & GDK_BUTTON3_MASK ? 2 : 0) |
         (state & GDK_BUTTON2_MASK ? 4 : 0);
}

int Input::Shift(guint state) {
  return (state & GDK_SHIFT_MASK ? 1 : 0) | (state & GDK_CONTROL_MASK ? 2 : 0) |
         (state & GDK_MOD1_MASK ? 4 : 0);
}

std::optional<KeyPress> Input::PressOf(const GdkEventKey& event) {
  if (event.state & (GDK_SUPER_MASK | GDK_META_MASK)) return std::nullopt;
  // Where the layout has letters of another script, a key is what it is in the first layout.
  guint key = event.keyval;
  if (gdk_keyval_to_unicode(key) > 0x7F)
    gdk_keymap_translate_keyboard_state(gdk_keymap_get_for_display(gdk_display_get_default()),
                                        event.hardware_keycode, static_cast<GdkModifierType>(event.state), 0,
                                        &key, nullptr, nullptr, nullptr);
  const char* name = gdk_keyval_name(key);
  if (!name) return std::nullopt;
  return KeyPress{name, (event.state & GDK_CONTROL_MASK) != 0, (event.state & GDK_SHIFT_MASK) != 0,
                  (event.state & GDK_MOD1_MASK) != 0};
}

bool Input::TellKey(Events& gate, Window& scene, const GdkEventKey& event) {
  const std::optional<KeyPress> press = PressOf(event);
  return press && TellKey(gate, scene, *press);
}

bool Input::TellKey(Events& gate, Window& scene, const KeyPress& press) {
  bool used = false;
  if (scene.KeyDown) gate.Run([&] { used = scene.KeyDown(press); });
  return used;
}

int Input::Wheel::Turn(const GdkEventScroll& event) {
  if (event.direction == GDK_SCROLL_UP || event.direction == GDK_SCROLL_DOWN)
    turned_ = event.direction == GDK_SCROLL_DOWN ? 1 : -1;
  else if (event.direction == GDK_SCROLL_SMOOTH)
    turned_ += event.delta_y;
  const int notches = static_cast<int>(turned_);
  turned_ -= notches;
  return notches;
}
