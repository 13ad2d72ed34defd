#include "core/frmSplash.h"

#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/scene/Drawing.h"

namespace {

// On the deep water at the picture's foot.
constexpr Colour TextColour = 0xFFFFFF;

}  // namespace

frmSplash::frmSplash(Program& program)
    : Window(program.desktop, Kind::Splash, {0, 0, 6000, 2700}, "Marlowick"),
      Image1(this, {0, 0, 6000, 2700}),
      Label1(this, {240, 2340, 3600, 225}, "Initialising..."),
      Label2(this, {4260, 2340, 1500, 225}, "Ver 0.6a"),
      Label3(this, {240, 2055, 5520, 225}, "Tabs, skins and your own history, on your own desktop"),
      program_(program) {
  for (Label* label : {&Label1, &Label2, &Label3}) label->ForeColor = TextColour;
  Skipping([&] { Image1.Picture = program.desktop.Draws().BuiltInPicture("splash.png"); });
  Resize = [this] { Form_Resize(); };
}

void frmSplash::Form_Load() {
  program_.SplashUp = 1;
  Show();
  Refresh();
  program_.main().Show();
}

// Desktops that open a program's first window maximised. Where the window manager leaves the splash alone,
// the main window hears of it itself.
void frmSplash::Form_Resize() {
  if (WindowState == Maximised) program_.SplashMaximised = "1";
  WindowState = Normal;
}

void frmSplash::Form_Unload(bool&) {}

void frmSplash::Status(const std::string& text) {
  Label1.Caption = text;
  Refresh();
}
