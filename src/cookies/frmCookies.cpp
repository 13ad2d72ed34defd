#include "cookies/frmCookies.h"

#include <algorithm>

#include "cookies/CookieScanner.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/CookieCache.h"

namespace {

// Of the window, in twips, with the frame that the desktop gives it.
constexpr Controls::Twips LeastWidth = 5175, LeastHeight = 3510;

}  // namespace

frmCookies::frmCookies(Program& program) : Dialog(program.desktop, "frmCookies"), program_(program) {
  Command1.Click = [this] { Remove("Are you sure you want to remove the selected cookies?", false); };
  Command2.Click = [this] { Remove("Are you sure you want to remove ALL of your cookies?", true); };
  Command3.Click = [this] { program_.main().cookies.manager.Unload(); };
  QueryUnload = Command3.Click;
  lstAllCookies.DeleteKey = Command1.Click;
  Resize = [this] { Form_Resize(); };
  Deactivate = [this] { SetFocus(); };
}

void frmCookies::RefreshTheList() {
  CookieScanner& cookies = program_.main().cookies;
  Pointer = MousePointer::Hourglass;
  lstAllCookies.Clear();
  lstTemp.clear();
  lstTemp = cookies.lstCookies;
  cookies.lstCookies.clear();
  cookies.GetCookies();
  lstAllCookies.Fill(cookies.lstCookies);
  cookies.lstCookies.clear();
  cookies.lstCookies = lstTemp;
  Pointer = MousePointer::Default;
}

void frmCookies::Remove(const std::string& question, bool all) {
  if (program_.desktop.MsgBox(question, Buttons::YesNo, "Delete Cookies?") != Answer::Yes) return;
  std::vector<std::string> chosen;
  for (int i = 0; i < lstAllCookies.ListCount(); ++i)
    if (all || lstAllCookies.Selected(i)) chosen.push_back(lstAllCookies.List(i));
  program_.desktop.Cookies().Delete(chosen);
  RefreshTheList();
}

void frmCookies::Form_Resize() {
  if (Width < LeastWidth) Width = LeastWidth;
  if (Height < LeastHeight) Height = LeastHeight;
  Frame1.Width = Width - 360;
  Frame1.Height = Height - 1095;
  lstAllCookies.Width = Width - 840;
  lstAllCookies.Height = Height - 2370;
  Label1.Width = lstAllCookies.Width;
  Command1.Left = Width - 3615;
  Command1.Top = Height - 1590;
  Command2.Left = Width - 2055;
  Command2.Top = Command1.Top;
  Command3.Left = Width - 1455;
  Command3.Top = Height - 870;
}
