#include "cookies/frmNewcookies.h"

#include "cookies/CookieScanner.h"
#include "cookies/SameNames.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/CookieCache.h"

namespace {

std::vector<std::string> Items(const Controls::ListBox& list) {
  std::vector<std::string> items;
  for (int i = 0; i < list.ListCount(); ++i) items.push_back(list.List(i));
  return items;
}

}  // namespace

frmNewcookies::frmNewcookies(Program& program) : Dialog(program.desktop, "frmNewcookies"), program_(program) {
  Command1.Click = [this] { RemoveAll(); };
  Command2.Click = [this] { RemoveNew(); };
  Command3.Click = [this] { RemoveSelectedNew(); };
  Command4.Click = [this] { RemoveSelectedOfAll(); };
  cmdClose.Click = [this] { Close(); };
  QueryUnload = cmdClose.Click;
  lstNewCookies.DeleteKey = Command3.Click;
  lstAllCookies.DeleteKey = Command4.Click;
}

void frmNewcookies::Form_Load() { lstAllCookies.Fill(program_.main().cookies.lstCookies); }

void frmNewcookies::RefreshLists() {
  CookieScanner& cookies = program_.main().cookies;
  Pointer = MousePointer::Hourglass;
  lstAllCookies.Clear();
  cookies.GetCookies();
  const std::vector<std::string> all = cookies.lstCookies;
  lstAllCookies.Fill(all);

  cookies.lstCookies.clear();
  const SameNames news(Items(lstNewCookies));
  for (const std::string& name : all)
    if (!news.Has(name)) cookies.lstCookies.push_back(name);

  lstTemp.clear();
  const SameNames present(all);
  // Once for each of its like that is there.
  for (const std::string& name : Items(lstNewCookies))
    lstTemp.insert(lstTemp.end(), present.Count(name), name);
  lstNewCookies.Fill(lstTemp);
  Pointer = MousePointer::Default;
}

void frmNewcookies::CheckTrap() {
  if (program_.preferences.CookieTrapMode == CookieScanner::RemoveNew) RemoveNew();
}

void frmNewcookies::RemoveNew() {
  program_.desktop.Cookies().Delete(Items(lstNewCookies));
  lstNewCookies.Clear();
  RefreshLists();
}

void frmNewcookies::RemoveSelectedNew() {
  DeleteSelected(lstNewCookies);
  lstNewCookies.Fill(lstTemp);
  RefreshLists();
}

void frmNewcookies::RemoveAll() {
  program_.desktop.Cookies().Delete(Items(lstAllCookies));
  lstAllCookies.Clear();
  lstNewCookies.Clear();
  RefreshLists();
}

void frmNewcookies::RemoveSelectedOfAll() {
  DeleteSelected(lstAllCookies);
  RefreshLists();
}

void frmNewcookies::DeleteSelected(const Controls::ListBox& list) {
  lstTemp.clear();
  std::vector<std::string> selected;
  for (int i = 0; i < list.ListCount(); ++i) (list.Selected(i) ? selected : lstTemp).push_back(list.List(i));
  program_.desktop.Cookies().Delete(selected);
}

void frmNewcookies::Close() {
  if (program_.Unloading == 1) program_.desktop.End(0);
  program_.main().cookies.newcookies.Unload();
}
