#include "platform/scene/DisplayList.h"

#include <algorithm>

PixelRect PixelRect::Intersect(const PixelRect& other) const {
  const int left = std::max(Left, other.Left), top = std::max(Top, other.Top);
  return {left, top, std::max(0, std::min(Right(), other.Right()) - left),
          std::max(0, std::min(Bottom(), other.Bottom()) - top)};
}

PixelRect PixelRect::Unite(const PixelRect& other) const {
  if (Empty()) return other;
  if (other.Empty()) return *this;
  const int left = std::min(Left, other.Left), top = std::min(Top, other.Top);
  return {left, top, std::max(Right(), other.Right()) - left, std::max(Bottom(), other.Bottom()) - top};
}

bool PixelRect::Contains(const PixelRect& other) const { return Intersect(other) == other; }

std::vector<PixelRect> Damage(const DisplayList& shown, const DisplayList& wanted) {
  std::vector<PixelRect> damage;
  const auto add = [&damage](const DrawItem& item) {
    if (!item.Clip.Empty()) damage.push_back(item.Clip);
  };
  // Items that both lists have in the same place are compared one by one; where controls came, went or
  // changed their order, everything from the first to the last of them is painted.
  size_t front = 0;
  const size_t common = std::min(shown.size(), wanted.size());
  for (; front < common && shown[front].Control == wanted[front].Control; ++front) {
    if (shown[front] == wanted[front]) continue;
    add(shown[front]);
    add(wanted[front]);
  }
  size_t shown_end = shown.size(), wanted_end = wanted.size();
  for (; shown_end > front && wanted_end > front &&
         shown[shown_end - 1].Control == wanted[wanted_end - 1].Control;
       --shown_end, --wanted_end) {
    if (shown[shown_end - 1] == wanted[wanted_end - 1]) continue;
    add(shown[shown_end - 1]);
    add(wanted[wanted_end - 1]);
  }
  for (size_t i = front; i < shown_end; ++i) add(shown[i]);
  for (size_t i = front; i < wanted_end; ++i) add(wanted[i]);
  return damage;
}
