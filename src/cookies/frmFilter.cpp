#include "cookies/frmFilter.h"

#include <string>
#include <vector>

#include "cookies/CookieScanner.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"

frmFilter::frmFilter(Program& program) : Dialog(program.desktop, "frmFilter"), program_(program) {
  Command2.Click = [this] { Add(); };
  Command1.Click = [this] { RemoveSelected(); };
  Command3.Click = [this] { Close(); };
  QueryUnload = Command3.Click;
  Text1.Activate = Command2.Click;
  lstFilter.DeleteKey = Command1.Click;
}

void frmFilter::Form_Load() { lstFilter.Fill(program_.preferences.lstFilter); }

void frmFilter::SaveList() {
  program_.slot.Open(program_.AppPath + "\\filter.dat", FileSlot::Mode::Output);
  for (int i = 0; i < lstFilter.ListCount(); ++i) program_.slot.Print(lstFilter.List(i));
  program_.slot.Close();
}

void frmFilter::Add() {
  const std::string word = Text1.Text;
  if (word.empty()) return;
  bool listed = false;
  for (int i = 0; i < lstFilter.ListCount() && !listed; ++i)
    listed = Text::SameWithoutCase(lstFilter.List(i), word);
  if (!listed) lstFilter.AddItem(word);
  SaveList();
  Text1.Text = "";
}

void frmFilter::RemoveSelected() {
  std::vector<std::string> lstTemp;
  for (int i = 0; i < lstFilter.ListCount(); ++i)
    if (!lstFilter.Selected(i)) lstTemp.push_back(lstFilter.List(i));
  lstFilter.Fill(lstTemp);
  SaveList();
}

void frmFilter::Close() {
  std::vector<std::string> words;
  for (int i = 0; i < lstFilter.ListCount(); ++i) words.push_back(lstFilter.List(i));
  program_.preferences.SetFilters(std::move(words));
  program_.main().cookies.filter.Unload();
}
