#include "platform/scene/Drawing.h"

#include "draw/Compositor.h"
#include "draw/PictureLoader.h"
#include "draw/TextLayout.h"

namespace {

class CairoDrawing : public Drawing {
 public:
  Picture LoadPicture(const std::string& path, int64_t most) override { return LoadPictureFile(path, most); }
  Picture BuiltInPicture(const std::string& name) override {
    return LoadPictureResource("/marlowick/art/" + name);
  }
  double TextWidth(std::string_view text) override { return text_.Width(text); }
  double LineHeight() override { return TextLayout::LineHeight; }
  void Compose(const Canvas& canvas, const DisplayList& list, const std::vector<PixelRect>& rects) override {
    ::Compose(text_, canvas, list, rects);
  }

 private:
  TextLayout text_;
};

}  // namespace

std::unique_ptr<Drawing> MakeDrawing() { return std::make_unique<CairoDrawing>(); }
