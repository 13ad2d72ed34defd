#include "gtk/page/PrintPage.h"

#include <gtk/gtkunixprint.h>

#include "gtk/dialog/Notice.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/PageNames.h"

namespace {

// One print job, from its start to its end; it goes on where its page is closed.
struct Job {
  Owned<WebKitWebView> view;  // which the operation itself doesn't keep
  Owned<WebKitPrintOperation> operation;
  std::string title;
  std::weak_ptr<Page> page;
  std::string failure;
};

void End(const Job& job) {
  if (job.failure.empty()) return;
  const auto page = job.page.lock();
  Notice::Show(
      page && !page->Closed() ? page->Window() : nullptr, "The page wasn't printed",
      "Printing \"" + job.title + "\" failed: " + job.failure + ". Look after the printer, and try again.");
}

// The dialog asks about a page that isn't there any more. It is modal, so there is no other one.
void CancelDialog() {
  GList* windows = gtk_window_list_toplevels();
  for (GList* one = windows; one; one = one->next)
    if (GTK_IS_PRINT_UNIX_DIALOG(one->data)) gtk_dialog_response(GTK_DIALOG(one->data), GTK_RESPONSE_CANCEL);
  g_list_free(windows);
}

// The job lives in its handlers, until they are taken off.
std::shared_ptr<Job> Begin(Page& page) {
  WebKitWebView* view = page.View();
  auto job =
      std::make_shared<Job>(Job{Share(view), Owned<WebKitPrintOperation>(webkit_print_operation_new(view)),
                                page.Title(), page.weak_from_this(), std::string()});
  Callbacks& calls = page.World().Lasting();
  calls.On<void(WebKitPrintOperation*, GError*)>(
      job->operation.get(), "failed", [job](auto*, GError* error) { job->failure = error->message; });
  calls.On<void(WebKitPrintOperation*)>(job->operation.get(), "finished",
                                        [job, &calls](WebKitPrintOperation* operation) {
                                          const auto ending = job;  // NOLINT: keeps it
                                          calls.Off(operation);
                                          End(*ending);
                                        });
  return job;
}

Owned<GtkPrintSettings> SettingsFor(const std::string& title) {
  Owned<GtkPrintSettings> settings(gtk_print_settings_new());
  gtk_print_settings_set(settings.get(), GTK_PRINT_SETTINGS_OUTPUT_BASENAME,
                         PageNames::FromTitle(title).c_str());
  return settings;
}

}  // namespace

namespace PrintPage {

void Ask(Page& page) {
  Callbacks& calls = page.World().Lasting();
  const auto job = Begin(page);
  webkit_print_operation_set_print_settings(job->operation.get(), SettingsFor(job->title).get());
  Callbacks watch(page.Runner());
  watch.On<void(GtkWidget*)>(job->view.get(), "destroy", [](auto*) { CancelDialog(); });
  const auto response = webkit_print_operation_run_dialog(job->operation.get(), page.Window());
  if (response != WEBKIT_PRINT_OPERATION_RESPONSE_PRINT) calls.Off(job->operation.get());
}

}  // namespace PrintPage
