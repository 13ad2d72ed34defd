// What a page wants to print or to save, and when the user is asked about it.

#include <algorithm>
#include <utility>

#include "gtk/page/Page.h"
#include "gtk/page/PrintPage.h"

namespace {

// Downloads of one page that run at once without a question.
constexpr int MostDownloadsAtOnce = 2;
// And how many of them wait for an answer.
constexpr int MostDownloadsWaiting = 10;

}  // namespace

// What a press asks for comes at once, what a script asks for by itself when the user agrees; and one dialog
// for one page.
void Page::AskToPrint(WebKitPrintOperation* operation) {
  if (printing_) return;
  if (TakePress()) return ShowPrint(operation);
  questions_.Ask({.text = Asker() + " wants to print.",
                  .yes = "_Print…",
                  .no = "_Cancel",
                  .refusal = Questions::Refusal::MayBeStopped},
                 [this, held = std::shared_ptr<WebKitPrintOperation>(Share(operation))](bool yes) {
                   if (yes) ShowPrint(held.get());
                 });
}

void Page::ShowPrint(WebKitPrintOperation* operation) {
  if (std::exchange(printing_, true)) return;
  PrintPage::Ask(*this, operation, [this] { printing_ = false; });
}

void Page::Print() {
  const Owned<WebKitPrintOperation> operation(webkit_print_operation_new(View()));
  ShowPrint(operation.get());
}

void Page::AskToDownload(Download& download) {
  const std::string uri = download.Uri();
  const bool pressed = wished_.erase(uri.substr(0, uri.find('#'))) > 0;
  const std::vector<Download*> shown = downloads_.Shown();
  const auto count = [&shown](const auto& counts) {
    return std::count_if(shown.begin(), shown.end(), counts);
  };
  const auto running = count([](Download* one) { return one->Running(); });
  const auto waiting = count([](Download* one) { return one->Running() && one->Held(); });
  if (may_download_ || download.Named() || (pressed && running < MostDownloadsAtOnce)) return;
  download.Hold();
  if (waiting == MostDownloadsWaiting) return download.Refuse("too many others wait for an answer");
  questions_.Ask({.text = Asker() + " wants to download files.", .yes = "_Download", .no = "_Don't Download"},
                 [this, held = download.weak_from_this()](bool yes) {
                   may_download_ = may_download_ || yes;
                   const auto download = held.lock();
                   if (download) yes ? download->Release() : download->Refuse("it wasn't allowed");
                 });
}
