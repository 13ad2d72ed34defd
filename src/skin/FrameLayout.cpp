#include "skin/FrameLayout.h"

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "platform/scene/Drawing.h"
#include "skin/CenterPart2.h"
#include "skin/ScreenSize.h"
#include "skin/TileBitmapModule.h"

namespace {

// The least size that the layout holds the window to, and the least that a grip asks for, in twips.
constexpr Twips MinimumWidth = 5625, MinimumHeight = 3000;
constexpr Twips GripMinimumWidth = 3400, GripMinimumHeight = 3000;

constexpr Colour WindowColour = 0x00BCA698;

// Of the colour of the status bar's text, in the progress' edge and trough: parts of a hundred.
constexpr uint32_t EdgeStrength = 50, TroughStrength = 12;

}  // namespace

FrameLayout::FrameLayout(frmMain& main)
    : Picture9(&main, {80, 300, 8295, 360}),
      Picture10(&main, {0, 5880, 9495, 255}),
      Picture2(&main, {80, 1180, 6390, 375}),
      Picture1(&main, {80, 1560, 3495, 1455}),
      CoolBar1(&main, {80, 660, 9255, 525}),
      Picture7(&main, {0, 6360, 9855, 70}),
      Picture3(&main, {9600, 300, 735, 360}),
      Picture4(&main, {0, 0, 9735, 300}),
      Picture8(&main, {0, 0, 70, 5295}),
      Picture6(&main, {10320, 0, 70, 4935}),
      Picture5(&main, {10200, 6240, 285, 300}),
      Picture12(&main, {0, 0, 70, 70}),
      Picture13(&main, {6240, 0, 70, 70}),
      Picture14(&main, {0, 5520, 70, 70}),
      picTabRight(&main, {9720, 660, 375, 525}),
      picTabLeft(&main, {9360, 660, 375, 525}),
      Image1(&Picture4, {120, 60, 240, 240}),
      labCaption(&Picture4, {430, 75, 2415, 255}, ""),
      picMin(&Picture4, {8640, 75, 225, 225}),
      picMax(&Picture4, {9000, 75, 225, 225}),
      picClose(&Picture4, {9360, 75, 225, 225}),
      StatusBar1(&Picture10, {120, 15, 495, 195}, "Status:"),
      picProgressEdge(&Picture10, {8385, 15, 1410, 225}),
      picProgressTrough(&picProgressEdge, {15, 15, 1380, 195}),
      picProgress(&Picture10, {8400, 30, 1380, 195}),
      picProgressFoot(&Picture10, {8385, 210, 1410, 15}),
      labDummy(&main, {0, 0, 0, 0}, "labDummy"),
      main_(main) {
  main.BackColor = WindowColour;
  for (Surface* edge : {&Picture5, &Picture6, &Picture7, &Picture8}) edge->BackColor = WindowColour;
  labDummy.Visible = false;
  StatusBar1.AccessibleRole = Role::Text;
  ShowProgress(false);
  Skipping([&] { Image1.Picture = main.program.desktop.Draws().BuiltInPicture("icon-16.png"); });
  main.Resize = [this] { Form_Resize(); };
  WireTitle(Picture4);
  WireTitle(labCaption);
  WireGrip(Picture5, Pointer::SizeDiagonal, &FrameLayout::MoveCorner);
  WireGrip(Picture6, Pointer::SizeLeftRight, &FrameLayout::MoveRight);
  WireGrip(Picture7, Pointer::SizeUpDown, &FrameLayout::MoveBottom);
  WireButtons();
}

void FrameLayout::Form_Resize() {
  const auto &W = main_.Width, &H = main_.Height;
  // A window that the system maximised becomes one that the program did; a minimised one lays out nothing.
  if (main_.WindowState == Window::Maximised) {
    main_.WindowState = Window::Normal;
    MaxiWindow();
    return;
  }
  if (main_.WindowState == Window::Minimised) {
    main_.Visible = false;
    SizingNow = 0;
    return;
  }
  main_.Visible = true;
  // The least size. Each change runs this layout inside the outer one.
  if (W < MinimumWidth) main_.Width = MinimumWidth;
  if (H < MinimumHeight) main_.Height = MinimumHeight;
  // The edges, blank until the layout is whole.
  for (Surface* edge : {&Picture5, &Picture6, &Picture7, &Picture8}) edge->Cls();
  Picture5.Left = W - Picture5.Width;
  Picture5.Top = H - Picture5.Height;
  Picture6.Left = W - Picture6.Width;
  Picture6.Height = H - Picture5.Height - Picture6.Top;
  Picture7.Top = H - Picture7.Height;
  Picture7.Width = W - Picture5.Width;
  Picture8.Height = H - Picture7.Height - Picture8.Top;
  // A grip drag with fast refresh moves the edges alone.
  if (SizingNow == 1 && main_.program.preferences.PaintMode == 1) return;
  // The bars run on behind the edges.
  for (Surface* bar : {&Picture4, &CoolBar1, &Picture10, &Picture9}) bar->Width = W;
  // The arrows of the tab strip, at the right end of the toolbar.
  picTabRight.Left = W - 160 - picTabRight.Width;
  picTabLeft.Left = W - 160 - picTabRight.Width - picTabLeft.Width;
  // The address field takes what buttons and arrows leave. The test takes off four widths of the edge and the
  // assignment one, so that the width falls from 310 straight to 100.
  ComboBox& Combo1 = *main_.address.Combo1;
  const Twips A = W - Combo1.Left - main_.toolbar.picButton(0).Left;
  const Twips B = W - picTabLeft.Left;
  if (A - 3 * Picture6.Width - Picture6.Width - B < 100)
    Combo1.Width = 100;
  else
    Combo1.Width = A - Picture6.Width - B;
  // The tab strip, and below it the place of the pages.
  Picture2.Width = W - Picture2.Left;
  Picture1.Top = Picture2.Height + CoolBar1.Height + 650;
  Picture1.Height = H - Picture1.Top - 300;
  Picture1.Width = W - Picture1.Left - Picture6.Width;
  // The two corners that move.
  Picture13.Left = W - Picture13.Width;
  Picture14.Top = H - Picture14.Height;
  // The page on show, which may have lost its element to a page that closed itself
  Skipping([this] {
    Browser& shown = main_.tabs.WebBrowser1(main_.tabs.CurrentTab);
    shown.Width = Picture1.Width;
    shown.Height = Picture1.Height;
  });
  // The status bar with its text and progress, and the animation.
  picProgress.Left = W - 1800;
  picProgressEdge.Left = picProgress.Left - TwipsPerPixel;
  StatusBar1.Width = picProgress.Left - StatusBar1.Left - 60;
  Picture10.Top = Picture1.Height + Picture1.Top;
  picProgressFoot.Left = picProgressEdge.Left;
  Picture3.Left = W - Picture3.Width - Picture6.Width;
  // The title bar, from its right end.
  picClose.Left = W - (picClose.Width + 70);
  picMax.Left = picClose.Left - (picMax.Width + 30);
  picMin.Left = picMax.Left - picMin.Width;
  labCaption.Width = (W - labCaption.Left) - (W - picMin.Left) - 200;
  FillFrame();
  main_.strip.UpdateTabs();
  main_.tabs.CheckTabLeft();
}

void FrameLayout::ShowProgress(bool shown) {
  picProgressEdge.Visible = shown;
  picProgress.Visible = shown;
  picProgressFoot.Visible = shown;
}

void FrameLayout::DressProgress(const Picture& bar) {
  const uint32_t text = ToPixel(main_.program.colours.StatusTextColour);
  const uint32_t behind = bar && !bar->Pixels.empty() ? bar->Pixels[bar->Pixels.size() / 2] : text;
  // So many of a hundred parts text.
  const auto mixed = [text, behind](uint32_t parts) {
    const auto one = [&](int shift) {
      return ((behind >> shift & 0xFF) * (100 - parts) + (text >> shift & 0xFF) * parts) / 100;
    };
    return static_cast<Colour>(one(16) | one(8) << 8 | one(0) << 16);
  };
  picProgressEdge.BackColor = mixed(EdgeStrength);
  picProgressFoot.BackColor = picProgressEdge.BackColor;
  picProgressTrough.BackColor = mixed(TroughStrength);
}

void FrameLayout::FillFrame() {
  Skin& skin = main_.skin;
  TileBitmap(Picture6, skin.picRight);
  TileBitmap(Picture7, skin.picBottom);
  TileBitmap(Picture5, skin.picBotRight);
  TileBitmap(Picture8, skin.picLeft);
  TileBitmap(Picture4, skin.picTitleBar);
  TileBitmap(Picture2, skin.picBrowserTop);
  TileBitmap(Picture10, skin.picStatusBar);
  DressProgress(skin.picStatusBar.Picture);
  TileBitmap(CoolBar1, skin.picButtonBar);
  TileBitmap(Picture9, skin.picMenuBar);
  TileBitmap(Picture12, skin.picTopLeft);
  TileBitmap(Picture14, skin.picBotLeft);
  TileBitmap(Picture13, skin.picTopRight);
}

void FrameLayout::MaxiWindow() {
  Desktop& desktop = main_.program.desktop;
  if (MaxiState == 0) {
    // Once its size has grown, the window may lie on the next monitor for the most part.
    const ScreenRect work_area = desktop.WorkArea(main_);
    RestoreHeight = ToInt32(main_.Height);
    RestoreWidth = ToInt32(main_.Width);
    RestoreTop = ToInt32(main_.Top);
    RestoreLeft = ToInt32(main_.Left);
    const MaximisedSize size = GetMaximisedSize(main_, desktop);
    main_.Width = size.MaxClientWidth + 90;
    main_.Height = size.MaxClientHeight + 90;
    CenterForm(main_, work_area);
    main_.FillsScreen = true;
    MaxiState = 1;
  } else {
    main_.Width = RestoreWidth;
    main_.Height = RestoreHeight;
    main_.Left = RestoreLeft;
    main_.Top = RestoreTop;
    main_.FillsScreen = false;
    MaxiState = 0;
  }
}

void FrameLayout::WireTitle(Control& title) {
  title.MouseDown = [this](const Mouse& mouse) { TakeDrag(mouse); };
  title.MouseMove = [this](const Mouse& mouse) { MoveWindow(mouse); };
  title.DblClick = [this] {
    SizingNow = 0;
    MaxiWindow();
  };
}

void FrameLayout::WireGrip(Surface& grip, Pointer pointer, EdgeMove move) {
  grip.MousePointer = pointer;
  grip.MouseDown = [this](const Mouse& mouse) { TakeDrag(mouse); };
  grip.MouseMove = [this, move](const Mouse& mouse) {
    if (MaxiState != 1) (this->*move)(mouse);
  };
  grip.MouseUp = [this](const Mouse&) {
    SizingNow = 0;
    Form_Resize();
  };
}

void FrameLayout::TakeDrag(const Mouse& mouse) {
  DragX = ToInt32(mouse.X);
  DragY = ToInt32(mouse.Y);
}

void FrameLayout::MoveWindow(const Mouse& mouse) {
  if (MaxiState == 1 || mouse.Button == 0) return;
  main_.Left = main_.Left - (DragX - mouse.X);
  main_.Top = main_.Top - (DragY - mouse.Y);
}

void FrameLayout::MoveCorner(const Mouse& mouse) {
  // Before the button is looked at, unlike the other grips.
  SizingNow = 1;
  if (mouse.Button == 0) return;
  if (main_.Width < GripMinimumWidth) {
    main_.Width = GripMinimumWidth;
    TakeDrag(mouse);
    return;
  }
  if (main_.Height < GripMinimumHeight) {
    main_.Height = GripMinimumHeight;
    TakeDrag(mouse);
    return;
  }
  const auto width = static_cast<float>(main_.Width - (DragX - mouse.X));
  const auto height = static_cast<float>(main_.Height - (DragY - mouse.Y));
  if (width < GripMinimumWidth || height < GripMinimumHeight) return;
  main_.Width = width;
  main_.Height = height;
}

void FrameLayout::MoveRight(const Mouse& mouse) {
  MoveEdge(mouse, main_.Width, GripMinimumWidth, DragX - mouse.X);
}

void FrameLayout::MoveBottom(const Mouse& mouse) {
  MoveEdge(mouse, main_.Height, GripMinimumHeight, DragY - mouse.Y);
}

void FrameLayout::MoveEdge(const Mouse& mouse, Control::Property<Twips>& side, Twips least, Twips inward) {
  SizingNow = mouse.Button != 0 ? 1 : 0;
  if (SizingNow == 0) return;
  if (side < least) {
    side = least;
    TakeDrag(mouse);
  } else if (side - inward >= least) {
    side = side - inward;
  }
}

void FrameLayout::WireButton(Surface& button, StoreOfSkin rest, StoreOfSkin pressed) {
  button.AccessibleRole = Role::Button;
  button.MouseDown = [this, &button, pressed](const Mouse&) {
    button.Picture = (main_.skin.*pressed).Picture;
  };
  button.MouseUp = [this, &button, rest](const Mouse&) { button.Picture = (main_.skin.*rest).Picture; };
}

void FrameLayout::WireButtons() {
  WireButton(picClose, &Skin::picCloseButton, &Skin::picCloseButtonDown);
  WireButton(picMax, &Skin::picMaxButton, &Skin::picMaxButtonDown);
  WireButton(picMin, &Skin::picMinButton, &Skin::picMinButtonDown);
  picClose.AccessibleName = "Close";
  picMax.AccessibleName = "Maximise";
  picMin.AccessibleName = "Minimise";
  picClose.Click = [this] {
    main_.address.SaveComplete();
    main_.program.Close();
  };
  picMax.Click = [this] {
    SizingNow = 0;
    MaxiWindow();
  };
  picMin.Click = [this] {
    main_.WindowState = Window::Minimised;
    main_.program.dummy().WindowState = Window::Minimised;
  };
}
