#include "platform/Drawing.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gio/gio.h>
#include <pango/pangocairo.h>

#include <cmath>

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace {

constexpr int FontPixels = 11;

class CairoDrawing : public Drawing {
 public:
  CairoDrawing() : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
    layout_ = pango_layout_new(context_);
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, FontPixels * PANGO_SCALE);
    pango_layout_set_font_description(layout_, font);
    pango_font_description_free(font);
    pango_layout_set_single_paragraph_mode(layout_, TRUE);
  }
  ~CairoDrawing() override {
    g_object_unref(layout_);
    g_object_unref(context_);
  }

  Picture LoadPicture(const std::string& path) override {
    return ToPicture(gdk_pixbuf_new_from_file(HostPath(path).c_str(), nullptr), path);
  }

  Picture BuiltInPicture(const std::string& name) override {
    return ToPicture(gdk_pixbuf_new_from_resource(("/marlowick/art/" + name).c_str(), nullptr), name);
  }

  double TextWidth(std::string_view text) override {
    const std::string valid = Text::Valid(text);
    pango_layout_set_text(layout_, valid.data(), static_cast<int>(valid.size()));
    int width = 0;
    pango_layout_get_pixel_size(layout_, &width, nullptr);
    return width;
  }

  double LineHeight() override { return 13; }

  void Compose(const Canvas& canvas, const DisplayList& list, const std::vector<PixelRect>& rects) override {
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(canvas.Pixels), CAIRO_FORMAT_RGB24, canvas.Width, canvas.Height,
        canvas.Width * 4);
    cairo_t* cairo = cairo_create(surface);
    cairo_scale(cairo, canvas.Scale, canvas.Scale);
    for (const PixelRect& rect : rects) cairo_rectangle(cairo, rect.Left, rect.Top, rect.Width, rect.Height);
    cairo_clip(cairo);
    for (const DrawItem& item : list) Draw(cairo, item);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
  }

 private:
  static Picture ToPicture(GdkPixbuf* pixels, const std::string& name) {
    if (!pixels) throw Failure("The picture \"" + name + "\" can't be loaded");
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->Width = gdk_pixbuf_get_width(pixels);
    bitmap->Height = gdk_pixbuf_get_height(pixels);
    const int channels = gdk_pixbuf_get_n_channels(pixels);
    for (int y = 0; y < bitmap->Height; ++y) {
      const guint8* row =
          gdk_pixbuf_read_pixels(pixels) + static_cast<size_t>(y) * gdk_pixbuf_get_rowstride(pixels);
      for (int x = 0; x < bitmap->Width; ++x, row += channels)
        bitmap->Pixels.push_back(0xFF000000u | row[0] << 16 | row[1] << 8 | row[2]);
    }
    g_object_unref(pixels);
    return bitmap;
  }

  static void SetPixel(cairo_t* cairo, uint32_t pixel) {
    cairo_set_source_rgb(cairo, (pixel >> 16 & 255) / 255.0, (pixel >> 8 & 255) / 255.0,
                         (pixel & 255) / 255.0);
  }

  static void Paint(cairo_t* cairo, const Picture& picture, const PixelRect& at, bool repeat) {
    cairo_surface_t* source = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(const_cast<uint32_t*>(picture->Pixels.data())), CAIRO_FORMAT_RGB24,
        picture->Width, picture->Height, picture->Width * 4);
    cairo_set_source_surface(cairo, source, at.Left, at.Top);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
    if (repeat) cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_REPEAT);
    cairo_paint(cairo);
    cairo_surface_destroy(source);
  }

  void Draw(cairo_t* cairo, const DrawItem& item) {
    if (item.Foreign) return;
    cairo_save(cairo);
    cairo_rectangle(cairo, item.Clip.Left, item.Clip.Top, item.Clip.Width, item.Clip.Height);
    cairo_clip(cairo);
    if (item.Fills) {
      SetPixel(cairo, item.BackPixel);
      cairo_paint(cairo);
    }
    if (item.Tiles) Paint(cairo, item.Tiles, item.Bounds, true);
    if (item.Shown) Paint(cairo, item.Shown, item.Bounds, false);
    for (const TextRun& run : item.Texts) {
      SetPixel(cairo, run.Pixel);
      cairo_move_to(cairo, std::floor(run.X), std::floor(run.Y));
      const std::string valid = Text::Valid(run.Text);
      pango_layout_set_text(layout_, valid.data(), static_cast<int>(valid.size()));
      pango_cairo_show_layout(cairo, layout_);
    }
    cairo_restore(cairo);
  }

  PangoContext* context_;
  PangoLayout* layout_ = nullptr;
};

}  // namespace

std::unique_ptr<Drawing> MakeDrawing() { return std::make_unique<CairoDrawing>(); }
