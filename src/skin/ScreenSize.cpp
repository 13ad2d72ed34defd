#include "skin/ScreenSize.h"

#include "core/Conversions.h"
#include "platform/Desktop.h"
#include "platform/Window.h"

namespace {

// A system frame's measures, in pixels: that of a fixed window, and how far a maximised window with a sizing
// frame reaches out of the work area at each side.
constexpr int FixedFrame = 3;
constexpr int SizingFrame = 4;

constexpr Twips Overhang = 60;

}  // namespace

MaximisedSize GetMaximisedSize(const Window& window, Desktop& desktop) {
  const ScreenRect area = desktop.WorkArea(window);
  const double maximised_width = (area.Right - area.Left) / TwipsPerPixel + 2 * SizingFrame;
  const double maximised_height = (area.Bottom - area.Top) / TwipsPerPixel + 2 * SizingFrame;
  return {ToInt32(TwipsPerPixel * maximised_width - TwipsPerPixel * (FixedFrame * 2)),
          ToInt32(TwipsPerPixel * maximised_height - TwipsPerPixel * (FixedFrame * 2))};
}

void CenterForm(Window& window, Desktop& desktop) {
  const ScreenRect area = desktop.WorkArea(window);
  const int32_t left = ToInt32(area.Left), right = ToInt32(area.Right);
  const int32_t top = ToInt32(area.Top), bottom = ToInt32(area.Bottom);
  int32_t NewTop = ToInt32(((bottom - top) - window.Height) / 2 + top);
  if (NewTop < top) NewTop = top;
  int32_t NewLeft = ToInt32(((right - left) - window.Width) / 2 + left);
  if (NewLeft < left) NewLeft = left;
  window.Move(NewLeft - Overhang, NewTop - Overhang);
}
