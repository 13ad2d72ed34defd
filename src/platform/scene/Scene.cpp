#include "platform/scene/Scene.h"

#include <algorithm>
#include <cmath>

#include "platform/Failure.h"
#include "platform/scene/Drawing.h"

namespace {

// What lies further off than any screen is as good as there.
constexpr double FarPixels = 1e8;

PixelRect ToPixelRect(Twips left, Twips top, Twips width, Twips height) {
  const int x = ToPixels(left), y = ToPixels(top);
  return {x, y, ToPixels(left + width) - x, ToPixels(top + height) - y};
}

}  // namespace

int ToPixels(Twips twips) {
  return static_cast<int>(std::clamp(std::floor(twips / TwipsPerPixel + 0.5), -FarPixels, FarPixels));
}

Control::Control(Control* parent, const Place& place)
    : Left(this, Aspect::Place, place.Left),
      Top(this, Aspect::Place, place.Top),
      Width(this, Aspect::Size, place.Width),
      Height(this, Aspect::Size, place.Height),
      Visible(this, Aspect::Look, true),
      ToolTipText(this, Aspect::Text, {}),
      parent_(parent) {
  if (!parent_) return;
  parent_->children_.push_back(this);
  Changed(Aspect::Look);
}

Control::~Control() {
  Detach();
  for (Control* child : children_) child->parent_ = nullptr;
}

void Control::ZOrder(int position) {
  if (!parent_) return;
  auto& siblings = parent_->children_;
  const auto self = std::find(siblings.begin(), siblings.end(), this);
  if (position == 0)
    std::rotate(self, self + 1, siblings.end());
  else
    std::rotate(siblings.begin(), self, self + 1);
  Control::Changed(Aspect::Look);
}

void Control::Detach() {
  if (!parent_) return;
  Control::Changed(Aspect::Look);
  if (SceneRoot* root = Root()) root->Forget(*this);
  std::erase(parent_->children_, this);
  parent_ = nullptr;
}

void Control::PressByName() {
  const auto press = AccessiblePress ? AccessiblePress : Click;
  if (press) press();
}

void Control::ReleaseChildren() {
  SceneRoot* root = Root();
  for (Control* child : children_) {
    if (root) root->Forget(*child);
    child->parent_ = nullptr;
  }
  children_.clear();
  Changed(Aspect::Look);
}

SceneRoot* Control::Root() {
  Control* top = this;
  while (top->parent_) top = top->parent_;
  return top->AsRoot();
}

Twips Control::RootLeft() const { return parent_ ? parent_->RootLeft() + Left : 0; }
Twips Control::RootTop() const { return parent_ ? parent_->RootTop() + Top : 0; }
PixelRect Control::PixelBounds() const { return ToPixelRect(RootLeft(), RootTop(), Width, Height); }
bool Control::Showing() const { return Visible && (!parent_ || parent_->Showing()); }

void Control::Check(Aspect aspect, double value) const {
  if (!std::isfinite(value) || (aspect == Aspect::Size && value < 0))
    throw Failure("A control can't have the size or position " + std::to_string(value));
}

void Control::Changed(Aspect aspect) {
  Control* top = this;
  while (top->parent_) top = top->parent_;
  if (top != this) top->Changed(aspect == Aspect::Text ? Aspect::Text : Aspect::Look);
}

void Control::Describe(DrawItem&) {}

Drawing& Control::Draws() {
  SceneRoot* root = Root();
  if (!root) throw Failure("A control outside a window can't draw");
  return root->Draws();
}

void Control::DescribeAll(DisplayList& list, Twips left, Twips top, const PixelRect& clip) {
  DrawItem item;
  item.Control = this;
  item.Bounds = ToPixelRect(left, top, Width, Height);
  item.Clip = item.Bounds.Intersect(clip);
  if (item.Clip.Empty()) return;
  const PixelRect inside = item.Clip;
  Describe(item);
  list.push_back(std::move(item));
  for (Control* child : children_)
    if (child->Visible) child->DescribeAll(list, left + child->Left, top + child->Top, inside);
}

Surface::Surface(Control* parent, const Place& place)
    : Control(parent, place),
      BackColor(this, Aspect::Look, SystemColour(0x0F)),
      ForeColor(this, Aspect::Look, ButtonTextColour),
      Picture(this, Aspect::Look, nullptr) {}

void Surface::Changed(Aspect aspect) {
  if (aspect == Aspect::Look && AutoSize && Picture()) {
    Width = Picture->get()->Width * TwipsPerPixel;
    Height = Picture->get()->Height * TwipsPerPixel;
  }
  Control::Changed(aspect);
}

void Surface::Print(std::string_view text) {
  lines_.push_back({CurrentX, CurrentY, std::string(text), ForeColor});
  CurrentX = 0;
  CurrentY += TextHeight();
  Changed(Aspect::Look);
}

Twips Surface::TextWidth(std::string_view text) { return Draws().TextWidth(text) * TwipsPerPixel; }
Twips Surface::TextHeight() { return Draws().LineHeight() * TwipsPerPixel; }

void Surface::Cls() {
  CurrentX = CurrentY = 0;
  if (lines_.empty() && !tiles_) return;
  lines_.clear();
  tiles_ = nullptr;
  Changed(Aspect::Look);
}

void Surface::Tile(const ::Picture& picture) {
  CurrentX = CurrentY = 0;
  if (lines_.empty() && tiles_ == picture) return;
  lines_.clear();
  tiles_ = picture;
  Changed(Aspect::Look);
}

void Surface::Describe(DrawItem& item) {
  item.Fills = true;
  item.BackPixel = ToPixel(BackColor);
  item.Tiles = tiles_;
  item.Shown = Picture;
  for (const Line& line : lines_)
    item.Texts.push_back({item.Bounds.Left + line.X / TwipsPerPixel, item.Bounds.Top + line.Y / TwipsPerPixel,
                          line.Text, ToPixel(line.ForeColor), 0});
}

Label::Label(Control* parent, const Place& place, const std::string& caption, Alignment alignment)
    : Control(parent, place),
      Caption(this, Aspect::Look, caption),
      ForeColor(this, Aspect::Look, ButtonTextColour),
      BackColor(this, Aspect::Look, SystemColour(0x0F)),
      Opaque(this, Aspect::Look, false),
      Enabled(this, Aspect::Look, true),
      alignment_(alignment) {}

void Label::Describe(DrawItem& item) {
  item.Fills = Opaque;
  item.BackPixel = ToPixel(BackColor);
  if (Caption->empty()) return;
  // At the top, with a pixel of air where there is room. What is centred is cut at both ends alike.
  const double y = item.Bounds.Top + (item.Bounds.Height > Draws().LineHeight() ? 1 : 0);
  const double width = item.Bounds.Width;
  const uint32_t pixel = ToPixel(Enabled ? ForeColor() : GreyTextColour);
  if (alignment_ == Alignment::Centre) {
    const double x = item.Bounds.Left + std::floor((width - Draws().TextWidth(Caption())) / 2);
    item.Texts.push_back({x, y, Caption, pixel, 0});
  } else {
    item.Texts.push_back({static_cast<double>(item.Bounds.Left), y, Caption, pixel, width});
  }
}
