#include "skin/CenterPart2.h"

#include "core/Conversions.h"
#include "platform/Desktop.h"
#include "platform/scene/Window.h"

namespace {

constexpr Twips Overhang = 60;

}  // namespace

void CenterForm(Window& window, const ScreenRect& area) {
  const int32_t left = ToInt32(area.Left), right = ToInt32(area.Right);
  const int32_t top = ToInt32(area.Top), bottom = ToInt32(area.Bottom);
  int32_t NewTop = ToInt32(((bottom - top) - window.Height) / 2 + top);
  if (NewTop < top) NewTop = top;
  int32_t NewLeft = ToInt32(((right - left) - window.Width) / 2 + left);
  if (NewLeft < left) NewLeft = left;
  window.Move(NewLeft - Overhang, NewTop - Overhang);
}
