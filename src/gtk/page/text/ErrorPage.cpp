#include "gtk/page/text/ErrorPage.h"

#include "gtk/page/text/HostName.h"
#include "gtk/page/text/Html.h"
#include "platform/WebAddress.h"

namespace {

constexpr const char* Head = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width">
<style>
  :root { color-scheme: light; }
  body { margin: 0; background: #f4f6f9; color: #24303c; font: 16px/1.5 sans-serif; }
  main { max-width: 38em; margin: 8vh auto; padding: 1.6em 2em; background: #fff; border: 1px solid #d5dce5;
         border-top: 4px solid #b4493a; border-radius: 4px; }
  h1 { margin: 0 0 .6em; font-size: 1.35em; }
  code { display: block; padding: .5em .7em; background: #f4f6f9; border-radius: 3px; overflow-wrap: anywhere;
         direction: ltr; unicode-bidi: bidi-override; }
  nav { margin-top: 1.4em; }
  nav a { display: inline-block; margin-right: .6em; padding: .45em 1.1em; border: 1px solid #2c5f94; border-radius: 4px;
          background: #2c5f94; color: #fff; text-decoration: none; }
  nav a + a { background: #fff; color: #2c5f94; }
  a:focus-visible { outline: 3px solid #f0b64d; outline-offset: 2px; }
</style>
)";

}  // namespace

std::string ErrorPage::Html(const std::string& buttons) const {
  using Html::Escape;
  std::string page = Head;
  page += "<title>" + Escape(title) + "</title></head><body><main>\n<h1>" + Escape(title) + "</h1>\n";
  if (!address.empty())
    page += "<code>" + Escape(HostName::Shown(WebAddress::WithoutUser(address))) + "</code>\n";
  page += "<p>" + Escape(reason) + "</p>\n<p>" + Escape(advice) + "</p>\n<nav>";
  for (size_t n = 0; n < actions.size(); ++n) {
    const std::string leads = buttons.empty() ? actions[n].address : buttons + std::to_string(n);
    page += "<a href=\"" + Escape(leads) + "\">" + Escape(actions[n].text) + "</a>\n";
  }
  return page + "</nav></main></body></html>\n";
}
