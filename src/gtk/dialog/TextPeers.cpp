#include "gtk/dialog/TextPeers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>

#include "platform/Text.h"
#include "platform/scene/Colour.h"

namespace {

struct FreeSurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using OwnedSurface = std::unique_ptr<cairo_surface_t, FreeSurface>;

// The bitmap may go before the widget does, so its pixels are copied.
OwnedSurface SurfaceOf(const Bitmap& bitmap) {
  OwnedSurface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, bitmap.Width, bitmap.Height));
  const auto stride = static_cast<size_t>(cairo_image_surface_get_stride(surface.get()));
  unsigned char* data = cairo_image_surface_get_data(surface.get());
  const auto width = static_cast<size_t>(bitmap.Width);
  for (size_t row = 0; data && row < static_cast<size_t>(bitmap.Height); ++row)
    std::memcpy(data + row * stride, &bitmap.Pixels[row * width], width * sizeof(uint32_t));
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

// The picture, made smaller where the look gives its widget less room.
OwnedSurface Fitting(GtkWidget* widget, OwnedSurface picture) {
  int width = 0, height = 0;
  gtk_widget_get_size_request(widget, &width, &height);
  const double own_width = cairo_image_surface_get_width(picture.get());
  const double own_height = cairo_image_surface_get_height(picture.get());
  if (width <= 0 || height <= 0 || (own_width <= width && own_height <= height)) return picture;
  const double scale = std::min(width / own_width, height / own_height);
  const auto pixels = [scale](double length) {
    return std::max(1, static_cast<int>(std::lround(length * scale)));
  };
  OwnedSurface fitting(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(own_width), pixels(own_height)));
  cairo_t* context = cairo_create(fitting.get());
  cairo_scale(context, pixels(own_width) / own_width, pixels(own_height) / own_height);
  cairo_set_source_surface(context, picture.get(), 0, 0);
  cairo_paint(context);
  cairo_destroy(context);
  return fitting;
}

}  // namespace

void LabelPeer::JoinOwn() {
  if (!label_.Caption->empty()) Changed(Controls::Aspect::Caption);
}

void LabelPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Caption)
    gtk_label_set_text(GTK_LABEL(Widget()), Text::Valid(label_.Caption()).c_str());
}

void FramePeer::JoinOwn() {
  if (!frame_.Caption->empty()) Changed(Controls::Aspect::Caption);
}

void FramePeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Caption)
    gtk_frame_set_label(GTK_FRAME(Widget()), Text::Valid(frame_.Caption()).c_str());
}

TextPeer::TextPeer(Controls::TextBox& box, GtkWidget* widget, Callbacks& callbacks)
    : Peer(box, widget), box_(box) {
  callbacks.On<void(GtkEditable*)>(widget, "changed", [this](GtkEditable* entry) {
    if (!setting_) box_.Text = gtk_entry_get_text(GTK_ENTRY(entry));
  });
  callbacks.On<void(GtkEntry*)>(widget, "activate", [this](GtkEntry* entry) {
    if (!box_.Activate) return;
    // The default button isn't pressed as well.
    g_signal_stop_emission_by_name(entry, "activate");
    const auto activate = box_.Activate;
    activate();
  });
}

void TextPeer::JoinOwn() {
  Changed(Controls::Aspect::Value);
  if (box_.BackColor != WindowBackgroundColour) Colour();
}

void TextPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Colour) Colour();
  if (aspect != Controls::Aspect::Value) return;
  auto* entry = GTK_ENTRY(Widget());
  const std::string text = Text::Valid(box_.Text());
  if (text != gtk_entry_get_text(entry)) Set([&] { gtk_entry_set_text(entry, text.c_str()); });
}

// The colours of windows and of buttons' faces are the theme's own.
void TextPeer::Colour() {
  GtkStyleContext* style = gtk_widget_get_style_context(Widget());
  if (colour_) gtk_style_context_remove_provider(style, GTK_STYLE_PROVIDER(colour_.get()));
  colour_.reset();
  if (box_.BackColor == WindowBackgroundColour) return;
  char text[16];
  g_snprintf(text, sizeof text, "#%06x", ToPixel(box_.BackColor) & 0xFFFFFF);
  const std::string colour = box_.BackColor == ButtonFaceColour ? "@theme_bg_color" : text;
  colour_.reset(gtk_css_provider_new());
  gtk_css_provider_load_from_data(
      colour_.get(), ("entry { background-image: none; background-color: " + colour + "; }").c_str(), -1,
      nullptr);
  gtk_style_context_add_provider(style, GTK_STYLE_PROVIDER(colour_.get()),
                                 GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

NumberPeer::NumberPeer(Controls::NumberBox& box, GtkWidget* widget, Callbacks& callbacks)
    : Peer(box, widget), box_(box) {
  auto* spin = GTK_SPIN_BUTTON(widget);
  double step = 0, page = 0;
  gtk_spin_button_get_increments(spin, &step, &page);
  gtk_spin_button_set_range(spin, box.Least, box.Most);
  if (step == 0) gtk_spin_button_set_increments(spin, 1, 10);
  callbacks.On<void(GtkSpinButton*)>(widget, "value-changed", [this](GtkSpinButton* spin) {
    if (!setting_) box_.Value = std::clamp(gtk_spin_button_get_value_as_int(spin), box_.Least, box_.Most);
  });
  // What is typed counts as it is typed: a button that is pressed by its letter doesn't end the typing.
  callbacks.On<void(GtkEditable*)>(widget, "changed", [this](GtkEditable* entry) {
    int typed = 0;
    const std::string text = gtk_entry_get_text(GTK_ENTRY(entry));
    const auto end = std::from_chars(text.data(), text.data() + text.size(), typed).ptr;
    const bool whole = end == text.data() + text.size() && !text.empty();
    if (!setting_ && whole && typed >= box_.Least && typed <= box_.Most) box_.Value = typed;
  });
}

void NumberPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Value)
    Set([this] { gtk_spin_button_set_value(GTK_SPIN_BUTTON(Widget()), box_.Value); });
}

void ProgressPeer::JoinOwn() {
  Changed(Controls::Aspect::Value);
  if (!bar_.Caption->empty()) Changed(Controls::Aspect::Caption);
}

void ProgressPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  auto* bar = GTK_PROGRESS_BAR(Widget());
  if (aspect == Controls::Aspect::Value)
    gtk_progress_bar_set_fraction(bar, std::clamp(bar_.Value(), 0.0, 1.0));
  if (aspect != Controls::Aspect::Caption) return;
  gtk_progress_bar_set_show_text(bar, !bar_.Caption->empty());
  gtk_progress_bar_set_text(bar, Text::Valid(bar_.Caption()).c_str());
}

PagesPeer::PagesPeer(Controls::TabPages& pages, GtkWidget* widget, Callbacks& callbacks)
    : Peer(pages, widget), pages_(pages) {
  callbacks.On<void(GtkNotebook*, GtkWidget*, guint)>(widget, "switch-page",
                                                      [this](GtkNotebook*, GtkWidget*, guint page) {
                                                        if (!setting_) pages_.Tab = static_cast<int>(page);
                                                      });
}

void PagesPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  auto* book = GTK_NOTEBOOK(Widget());
  if (aspect != Controls::Aspect::Value || gtk_notebook_get_current_page(book) == pages_.Tab) return;
  Set([&] { gtk_notebook_set_current_page(book, pages_.Tab); });
}

void ImagePeer::JoinOwn() {
  if (image_.Picture()) Changed(Controls::Aspect::Picture);
}

void ImagePeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect != Controls::Aspect::Picture) return;
  auto* image = GTK_IMAGE(Widget());
  const Picture& picture = image_.Picture();
  if (!picture) return gtk_image_clear(image);
  gtk_image_set_from_surface(image, Fitting(Widget(), SurfaceOf(*picture)).get());
}
