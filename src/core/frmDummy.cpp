#include "core/frmDummy.h"

#include "core/Program.h"
#include "core/frmMain.h"

frmDummy::frmDummy(Program& program)
    : Window(program.desktop, Kind::Relay, {0, 0, 1800, 300}, "Marlowick"),
      Timer1(program.desktop, 500, true),
      program_(program) {
  Resize = [this] { Form_Resize(); };
  GotFocus = [this] { program_.main().SetFocus(); };
  QueryUnload = [this] { program_.Close(); };
  Timer1.Tick = [this] { Timer1_Timer(); };
}

void frmDummy::Form_Load() {
  Top = -9999999;
  Left = -9999999;
  // The strip was drawn before this window stood.
  const std::string& title = program_.main().frame.labCaption.Caption();
  if (!title.empty()) Caption = title;
}

// Keeps the window off the screen, wherever it was put.
void frmDummy::Timer1_Timer() {
  if (WindowState == Minimised) return;
  if (Top != -999999) Top = -999999;
  if (Left != -999999) Left = -999999;
}

void frmDummy::Form_Resize() {
  frmMain& main = program_.main();
  const bool minimised = WindowState == Minimised;
  main.WindowState = minimised ? Minimised : Normal;
  main.Visible = !minimised;
  if (WindowState != Maximised) return;
  main.Visible = true;
  main.frame.SizingNow = 0;
  main.frame.MaxiWindow();
}

// What is still being fetched would be lost with the program.
bool frmDummy::MayLoseDownloads() {
  const int fetching = program_.Unattended ? 0 : program_.desktop.Fetching();
  if (fetching == 0) return true;
  const std::string what = fetching == 1 ? "1 file is" : std::to_string(fetching) + " files are";
  return program_.desktop.MsgBox(
             what + " still being downloaded, and will be lost.\n\nClose Marlowick all the same?",
             Buttons::YesNo, "Marlowick") == Answer::Yes;
}

void frmDummy::Form_Unload(bool& cancel) {
  if (!MayLoseDownloads()) {
    cancel = true;
    return;
  }
  program_.main().address.SaveComplete();
  program_.main.Unload();
  // The last window has gone: so has the program.
  if (!program_.main.Loaded()) program_.desktop.End(0);
}
