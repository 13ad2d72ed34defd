#include "skin/ScreenSize.h"

#include "core/Conversions.h"
#include "platform/Desktop.h"
#include "platform/scene/Window.h"

namespace {

// A system frame's measures, in pixels: that of a fixed window, and how far a maximised window with a sizing
// frame reaches out of the work area at each side.
constexpr int FixedFrame = 3;
constexpr int SizingFrame = 4;

}  // namespace

MaximisedSize GetMaximisedSize(const Window& window, Desktop& desktop) {
  const ScreenRect area = desktop.WorkArea(window);
  const double maximised_width = (area.Right - area.Left) / TwipsPerPixel + 2 * SizingFrame;
  const double maximised_height = (area.Bottom - area.Top) / TwipsPerPixel + 2 * SizingFrame;
  return {ToInt32(TwipsPerPixel * maximised_width - TwipsPerPixel * (FixedFrame * 2)),
          ToInt32(TwipsPerPixel * maximised_height - TwipsPerPixel * (FixedFrame * 2))};
}
