#include "skin/Skin.h"

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/scene/Drawing.h"

// The catalogue: files and their surfaces, in the order of loading. The capitals are parts of the names.
constexpr std::array<Skin::Bitmap, 64> Skin::Bitmaps = {{
    {"left.bmp", &Skin::picLeft},
    {"right.bmp", &Skin::picRight},
    {"bottom.bmp", &Skin::picBottom},
    {"titlebar.bmp", &Skin::picTitleBar},
    {"botright.bmp", &Skin::picBotRight},
    {"browsertop.bmp", &Skin::picBrowserTop},
    {"statusbar.bmp", &Skin::picStatusBar},
    {"buttonbar.bmp", &Skin::picButtonBar},
    {"menubar.bmp", &Skin::picMenuBar},
    {"topleft.bmp", &Skin::picTopLeft},
    {"botleft.bmp", &Skin::picBotLeft},
    {"topright.bmp", &Skin::picTopRight},
    {"maxbutton.bmp", &Skin::picMaxButton},
    {"minbutton.bmp", &Skin::picMinButton},
    {"closebutton.bmp", &Skin::picCloseButton},
    {"maxbuttonDown.bmp", &Skin::picMaxButtonDown},
    {"minbuttonDown.bmp", &Skin::picMinButtonDown},
    {"closebuttonDown.bmp", &Skin::picCloseButtonDown},
    {"mnutopleft.bmp", &Skin::picMnuTopLeft},
    {"mnutop.bmp", &Skin::picMnuTop},
    {"mnutopright.bmp", &Skin::picMnuTopRight},
    {"mnuright.bmp", &Skin::picMnuRight},
    {"mnubotright.bmp", &Skin::picMnuBotRight},
    {"mnubottom.bmp", &Skin::picMnuBottom},
    {"mnubotleft.bmp", &Skin::picMnuBotLeft},
    {"mnuleft.bmp", &Skin::picMnuLeft},
    {"mnubackground.bmp", &Skin::picMnuBack},
    {"mnuspacer.bmp", &Skin::picMnuSpacer},
    {"folder.bmp", &Skin::picFolder},
    {"link.bmp", &Skin::picLink},
    {"arrow.bmp", &Skin::picArrow},
    {"arrowHi.bmp", &Skin::picArrowHi},
    {"scroll.bmp", &Skin::picScroll},
    {"scrollup.bmp", &Skin::picScrollUp},
    {"backflat.bmp", &Skin::picBackBut},
    {"forwardflat.bmp", &Skin::picForwardBut},
    {"stopflat.bmp", &Skin::picStopBut},
    {"refreshflat.bmp", &Skin::picrefreshBut},
    {"newtabflat.bmp", &Skin::picNewTabBut},
    {"deltabflat.bmp", &Skin::picDelTabBut},
    {"historyflat.bmp", &Skin::picHistoryBut},
    {"Searchflat.bmp", &Skin::picSearchBut},
    {"tableft.bmp", &Skin::TabLeft},
    {"tabright.bmp", &Skin::TabRight},
    {"tablefthi.bmp", &Skin::TabLeftHi},
    {"tabrighthi.bmp", &Skin::TabRightHi},
    {"backbutton.bmp", &Skin::picBackHiBut},
    {"forwardbutton.bmp", &Skin::picForwardHiBut},
    {"stopbutton.bmp", &Skin::picStopHiBut},
    {"refreshbutton.bmp", &Skin::picRefreshHiBut},
    {"newtabbutton.bmp", &Skin::picNewTabHiBut},
    {"deltabbutton.bmp", &Skin::picDelTabHiBut},
    {"historybutton.bmp", &Skin::picHistoryHiBut},
    {"searchbutton.bmp", &Skin::picSearchHiBut},
    {"backdown.bmp", &Skin::picBackDown},
    {"forwarddown.bmp", &Skin::picForwardDown},
    {"stopdown.bmp", &Skin::picStopDown},
    {"refreshdown.bmp", &Skin::picRefreshDown},
    {"newtabdown.bmp", &Skin::picNewTabDown},
    {"deltabdown.bmp", &Skin::picDelTabDown},
    {"historydown.bmp", &Skin::picHistoryDown},
    {"searchdown.bmp", &Skin::picSearchDown},
    {"tabnotselected.bmp", &Skin::picTabNotSelected},
    {"tabselected.bmp", &Skin::picTabSelected},
}};
static_assert(Skin::Bitmaps.back().File, "a row for each bitmap of a skin");

namespace {

constexpr int16_t Frames = 9;

std::string FrameFile(int index) { return std::to_string(index + 1) + ".bmp"; }

}  // namespace

Skin::Skin(frmMain& main)
    : PicStore(main.program.desktop.Gate, "PicStore",
               [](int16_t) { return std::make_unique<Store>(nullptr); }),
      main_(main) {
  Drawing& drawing = main.program.desktop.Draws();
  for (const Bitmap& row : Bitmaps)
    Skipping([&] { (this->*row.Surface).Picture = drawing.BuiltInPicture(row.File); });
  for (int i = 1; i < Frames; ++i) PicStore.Load(i);
  for (int i = 0; i < Frames; ++i)
    Skipping([&] { PicStore(i).Picture = drawing.BuiltInPicture(FrameFile(i)); });
}

void Skin::LoadSkin(const std::string& SkinPath) {
  Skipping([this] { LoadAddressList(); });
  room_ = MaximumPixels;
  LoadBitmaps(SkinPath);
  if (main_.program.general.FileExists(SkinPath + "\\skin.ini")) LoadAnimation(SkinPath);
  LoadColours(SkinPath);
  FrameLayout& frame = main_.frame;
  frame.picMax.Picture = picMaxButton.Picture;
  frame.picClose.Picture = picCloseButton.Picture;
  frame.picMin.Picture = picMinButton.Picture;
  main_.toolbar.ResetButtons(-1);
}

// Here because it has to happen at every load of the preferences.
void Skin::LoadAddressList() {
  FileSlot& slot = main_.program.slot;
  main_.address.ClearList();
  slot.Open(main_.program.AppPath + "\\autocomplete.dat", FileSlot::Mode::Input);
  // The list keeps what could be read, and the slot has to be free for what follows.
  Skipping([&] {
    while (!slot.EndOfFile()) main_.address.AddItem(slot.LineInput());
  });
  slot.Abandon();
}

Picture Skin::LoadPicture(const std::string& path) {
  Picture picture = main_.program.desktop.Draws().LoadPicture(path, room_);
  room_ -= int64_t{picture->Width} * picture->Height;
  return picture;
}

void Skin::LoadBitmaps(const std::string& SkinPath) {
  for (const Bitmap& row : Bitmaps) {
    Skipping([&] { (this->*row.Surface).Picture = LoadPicture(SkinPath + "\\" + row.File); });
    if (row.Surface != &Skin::TabRightHi) continue;
    main_.frame.picTabLeft.Picture = TabLeft.Picture;
    main_.frame.picTabRight.Picture = TabRight.Picture;
  }
}

void Skin::LoadAnimation(const std::string& SkinPath) {
  Program& program = main_.program;
  Skipping([&] {
    main_.events.Timer2.Interval =
        ToInt32(LeadingNumber(program.general.ReadIniKey(SkinPath + "\\skin.ini", "animation")));
  });
  for (int i = 0; i < Frames; ++i)
    Skipping([&] { PicStore(i).Picture = LoadPicture(SkinPath + "\\" + FrameFile(i)); });
}

void Skin::LoadColours(const std::string& SkinPath) {
  // A key that is absent or no number fails, and leaves the colour as it is.
  const auto read = [&](const char* key, auto&& colour) {
    Skipping([&] {
      colour = ToInt32(StrictNumber(main_.program.general.ReadIniKey(SkinPath + "\\skin.ini", key)));
    });
  };
  Colours& colours = main_.program.colours;
  read("menuhighlight", colours.MenuHiBackColour);
  read("menutext", colours.MenuTextColour);
  read("menutexthighlight", colours.MenuHiTextColour);
  read("tabtext", colours.TabTextColour);
  read("tabtextdisabled", colours.TabTextDisabledColour);
  read("statustext", colours.StatusTextColour);
  read("statustext", main_.frame.StatusBar1.ForeColor);
  read("progressbar", colours.ProgressBarColour);
  read("title", main_.frame.labCaption.ForeColor);
}
