#include "gtk/window/FieldMark.h"

#include <numbers>
#include <utility>

#include "gtk/window/Style.h"

namespace {

// The figures' own square, in pixels; each is told apart by its shape as well as by its colour.
constexpr double Side = 14;

constexpr const char* ButtonStyle = R"(
  button {
    min-height: 0; min-width: 0; padding: 0; margin: 0; border: none; border-radius: 0;
    background: none; box-shadow: none; outline-width: 0;
  }
  button:hover { background: rgba(49, 106, 197, 0.18); }
  button:active { background: rgba(49, 106, 197, 0.36); }
)";

void SetColour(cairo_t* cairo, unsigned colour) {
  cairo_set_source_rgb(cairo, (colour >> 16 & 255) / 255.0, (colour >> 8 & 255) / 255.0,
                       (colour & 255) / 255.0);
}

void DrawPath(cairo_t* cairo, std::initializer_list<std::pair<double, double>> points) {
  for (const auto& [x, y] : points) cairo_line_to(cairo, x, y);
}

// Its shackle ends in the body on both sides, or has swung open.
void DrawLock(cairo_t* cairo, bool closed) {
  cairo_rectangle(cairo, 2.5, 6.5, 9, 6.5);
  cairo_fill(cairo);
  cairo_set_line_width(cairo, 1.6);
  const double middle = closed ? 7 : 10.4;
  cairo_move_to(cairo, middle - 2.8, 6.5);
  cairo_arc(cairo, middle, 4, 2.8, std::numbers::pi, 2 * std::numbers::pi);
  cairo_rel_line_to(cairo, 0, closed ? 2.5 : 1);
  cairo_stroke(cairo);
}

void DrawWarning(cairo_t* cairo) {
  DrawPath(cairo, {{7, 0.8}, {13.6, 13}, {0.4, 13}});
  cairo_fill(cairo);
  SetColour(cairo, 0xffffff);
  cairo_rectangle(cairo, 6.2, 4.8, 1.6, 4.4);
  cairo_rectangle(cairo, 6.2, 10.2, 1.6, 1.6);
  cairo_fill(cairo);
}

// The program's sailing boat.
void DrawBoat(cairo_t* cairo) {
  DrawPath(cairo, {{6.6, 0.8}, {6.6, 9.4}, {1, 9.4}});
  cairo_close_path(cairo);
  DrawPath(cairo, {{7.8, 3}, {12.6, 9.4}, {7.8, 9.4}});
  cairo_close_path(cairo);
  DrawPath(cairo, {{0.6, 10.6}, {13.4, 10.6}, {11, 13.2}, {3, 13.2}});
  cairo_fill(cairo);
}

void DrawFile(cairo_t* cairo) {
  cairo_set_line_width(cairo, 1.2);
  DrawPath(cairo, {{2.6, 0.9}, {8.4, 0.9}, {11.4, 3.9}, {11.4, 13.1}, {2.6, 13.1}});
  cairo_close_path(cairo);
  DrawPath(cairo, {{8.2, 1}, {8.2, 4.1}, {11.3, 4.1}});
  for (const double y : {6.6, 8.6, 10.6}) {
    cairo_move_to(cairo, 4.6, y);
    cairo_line_to(cairo, 9.4, y);
  }
  cairo_stroke(cairo);
}

void DrawRing(cairo_t* cairo) {
  cairo_set_line_width(cairo, 1.4);
  cairo_arc(cairo, 7, 7, 4.8, 0, 2 * std::numbers::pi);
  cairo_stroke(cairo);
}

// A broken shield.
void DrawNoSandbox(cairo_t* cairo) {
  SetColour(cairo, 0xb3261e);
  DrawPath(cairo, {{7, 0.6}, {12.6, 2.4}, {12.2, 7.6}, {7, 13.6}, {1.8, 7.6}, {1.4, 2.4}});
  cairo_fill(cairo);
  SetColour(cairo, 0xffffff);
  cairo_set_line_width(cairo, 1.5);
  DrawPath(cairo, {{8.6, 0.4}, {5.4, 5}, {8.6, 8.2}, {6, 13.8}});
  cairo_stroke(cairo);
}

void DrawSafety(cairo_t* cairo, Safety safety) {
  switch (safety) {
    case Safety::Secure:
      SetColour(cairo, 0x1b7a3d);
      return DrawLock(cairo, true);
    case Safety::NotSecure:
      SetColour(cairo, 0xc62828);
      return DrawLock(cairo, false);
    case Safety::Exception:
      SetColour(cairo, 0xc25e00);
      return DrawWarning(cairo);
    case Safety::OwnPage:
      SetColour(cairo, 0x2c5f94);
      return DrawBoat(cairo);
    case Safety::LocalFile:
      SetColour(cairo, 0x4a5563);
      return DrawFile(cairo);
    case Safety::Unknown:
      SetColour(cairo, 0x8a94a1);
      return DrawRing(cairo);
  }
}

}  // namespace

FieldMark::FieldMark(std::function<void()> pressed, const Callbacks::Runner& runner)
    : box_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0)))),
      pressed_(std::move(pressed)),
      callbacks_(runner) {
  safety_button_ = AddButton([this](cairo_t* cairo) { DrawSafety(cairo, safety_); });
  sandbox_button_ = AddButton(DrawNoSandbox);
  gtk_widget_set_no_show_all(sandbox_button_, TRUE);
  Name(safety_button_, InWords(safety_));
  Name(sandbox_button_, NoSandboxInWords);
}

GtkWidget* FieldMark::AddButton(std::function<void(cairo_t*)> draw) {
  GtkWidget* button = gtk_button_new();
  GtkWidget* area = gtk_drawing_area_new();
  gtk_container_add(GTK_CONTAINER(button), area);
  gtk_widget_show(area);
  AddStyle(button, ButtonStyle);
  gtk_widget_set_can_focus(button, FALSE);
  gtk_box_pack_start(GTK_BOX(box_.get()), button, TRUE, TRUE, 0);
  callbacks_.On<gboolean(GtkWidget*, cairo_t*)>(
      area, "draw", [draw = std::move(draw)](GtkWidget* widget, cairo_t* cairo) {
        cairo_translate(cairo, (gtk_widget_get_allocated_width(widget) - Side) / 2,
                        (gtk_widget_get_allocated_height(widget) - Side) / 2);
        draw(cairo);
        return TRUE;
      });
  callbacks_.On<void(GtkWidget*)>(button, "clicked", [this](auto*) { pressed_(); });
  return button;
}

void FieldMark::Name(GtkWidget* button, const std::string& name) {
  gtk_widget_set_tooltip_text(button, name.c_str());
  atk_object_set_name(gtk_widget_get_accessible(button), name.c_str());
}

void FieldMark::Show(Safety safety, bool outside_sandbox) {
  if (outside_sandbox != std::exchange(outside_sandbox_, outside_sandbox))
    gtk_widget_set_visible(sandbox_button_, outside_sandbox);
  if (safety == std::exchange(safety_, safety)) return;
  Name(safety_button_, InWords(safety));
  gtk_widget_queue_draw(safety_button_);
}
