#include "cookies/frmCleanup.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cookies/CookieScanner.h"
#include "cookies/SameNames.h"
#include "cookies/frmNewcookies.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/CookieCache.h"
#include "platform/Text.h"

frmCleanup::frmCleanup(Program& program) : Dialog(program.desktop, "frmCleanup"), program_(program) {}

void frmCleanup::Form_Load() {
  Refresh();
  Show();
  Refresh();
  CheckCookies();
}

void frmCleanup::CheckCookies() {
  CookieScanner& cookies = program_.main().cookies;
  const int16_t mode = program_.preferences.CookieTrapMode;

  // The first of them loads the window, which shows the old cookies as all there are.
  for (const std::string& name : cookies.lstCookies) cookies.newcookies().lstTemp.push_back(name);
  cookies.GetCookies();
  frmNewcookies& store = cookies.newcookies();
  const SameNames old(store.lstTemp);
  std::vector<std::string> news;
  std::copy_if(cookies.lstCookies.begin(), cookies.lstCookies.end(), std::back_inserter(news),
               [&old](const std::string& name) { return !old.Has(name); });
  store.lstNewCookies.Fill(news);

  if (mode == CookieScanner::RemoveByWords) {
    RemoveFilters();
    program_.desktop.End(0);
  }
  if (store.lstNewCookies.ListCount() == 0) program_.desktop.End(0);
  if (mode == CookieScanner::RemoveNew) {
    RemoveAllCooks();
    program_.desktop.End(0);
  }
  // The user is to confirm what goes; where nobody is there to do so, it stays.
  if (program_.Unattended) program_.desktop.End(0);
  cookies.cleanup.Unload();
  store.ShowModal();
}

void frmCleanup::RemoveAllCooks() {
  const Controls::ListBox& list = program_.main().cookies.newcookies().lstNewCookies;
  std::vector<std::string> news;
  for (int i = 0; i < list.ListCount(); ++i) news.push_back(list.List(i));
  program_.desktop.Cookies().Delete(news);
}

void frmCleanup::RemoveFilters() {
  CookieScanner& cookies = program_.main().cookies;
  std::vector<std::string>& lstTemp = cookies.newcookies().lstTemp;
  lstTemp.clear();
  cookies.GetCookies();
  lstTemp = cookies.lstCookies;

  std::vector<std::string> words;
  for (const std::string& word : program_.preferences.lstFilter)
    // An empty line of the file is no word: every cookie would have it.
    if (!word.empty()) words.push_back(Text::LowerCase(word));
  std::vector<std::string> matches;
  for (const std::string& name : lstTemp) {
    const std::string lower = Text::LowerCase(name);
    const auto matched = [&lower](const std::string& word) { return lower.find(word) != lower.npos; };
    if (std::any_of(words.begin(), words.end(), matched)) matches.push_back(name);
  }
  program_.desktop.Cookies().Delete(matches);
}
