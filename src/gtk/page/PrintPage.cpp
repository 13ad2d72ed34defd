#include "gtk/page/PrintPage.h"

#include <gtk/gtkunixprint.h>

#include "gtk/dialog/Notice.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/PageNames.h"

namespace {

// One print job, from its start to its end.
struct Job {
  Owned<WebKitWebView> view;  // which the operation itself doesn't keep
  Owned<WebKitPrintOperation> operation;
  std::function<void(const std::string&)> done;
  std::string failure;
};

void OnFailed(WebKitPrintOperation*, GError* error, gpointer job) {
  static_cast<Job*>(job)->failure = error->message;
}

void OnFinished(WebKitPrintOperation*, gpointer data) {
  auto* job = static_cast<Job*>(data);
  job->done(job->failure);
  // The operation still runs in its own signal.
  Later([job] { delete job; });
}

// The dialog asks about a page that isn't there any more. It is modal, so there is no other one.
void OnGone(GtkWidget*, gpointer) {
  GList* windows = gtk_window_list_toplevels();
  for (GList* one = windows; one; one = one->next)
    if (GTK_IS_PRINT_UNIX_DIALOG(one->data)) gtk_dialog_response(GTK_DIALOG(one->data), GTK_RESPONSE_CANCEL);
  g_list_free(windows);
}

Job* Begin(Page& page, std::function<void(const std::string&)> done) {
  auto* job =
      new Job{Share(page.View()), Owned<WebKitPrintOperation>(webkit_print_operation_new(page.View())),
              std::move(done), std::string()};
  g_signal_connect(job->operation.get(), "failed", G_CALLBACK(OnFailed), job);
  g_signal_connect(job->operation.get(), "finished", G_CALLBACK(OnFinished), job);
  return job;
}

}  // namespace

namespace PrintPage {

void Ask(Page& page) {
  const std::weak_ptr<Page> weak = page.weak_from_this();
  const std::string title = page.Title();
  Job* job = Begin(page, [weak, title](const std::string& failure) {
    const auto still_there = weak.lock();
    if (!failure.empty())
      Notice::Show(
          still_there && !still_there->Closed() ? still_there->Window() : nullptr, "The page wasn't printed",
          "Printing \"" + title + "\" failed: " + failure + ". Look after the printer, and try again.");
  });
  const Owned<GtkPrintSettings> settings(gtk_print_settings_new());
  gtk_print_settings_set(settings.get(), GTK_PRINT_SETTINGS_OUTPUT_BASENAME,
                         PageNames::FromTitle(title).c_str());
  webkit_print_operation_set_print_settings(job->operation.get(), settings.get());
  const auto view = Share(job->view.get());
  const gulong watch = g_signal_connect(view.get(), "destroy", G_CALLBACK(OnGone), nullptr);
  const auto response = webkit_print_operation_run_dialog(job->operation.get(), page.Window());
  g_signal_handler_disconnect(view.get(), watch);
  if (response != WEBKIT_PRINT_OPERATION_RESPONSE_PRINT) delete job;
}

void ToFile(Page& page, const std::string& path, std::function<void(const std::string&)> done) {
  Job* job = Begin(page, std::move(done));
  const Owned<GtkPrintSettings> settings(gtk_print_settings_new());
  gtk_print_settings_set_printer(settings.get(), "Print to File");
  gtk_print_settings_set(settings.get(), GTK_PRINT_SETTINGS_OUTPUT_FILE_FORMAT, "pdf");
  gtk_print_settings_set(settings.get(), GTK_PRINT_SETTINGS_OUTPUT_URI, Address::FromPath(path).c_str());
  webkit_print_operation_set_print_settings(job->operation.get(), settings.get());
  webkit_print_operation_print(job->operation.get());
}

}  // namespace PrintPage
