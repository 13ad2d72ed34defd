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

// The job lives in its handlers, until they are taken off.
std::shared_ptr<Job> Begin(Page& page, WebKitPrintOperation* operation) {
  auto job = std::make_shared<Job>(
      Job{Share(page.View()), Share(operation), page.Title(), page.weak_from_this(), std::string()});
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

GtkPrintUnixDialog* MakeDialog(Page& page, const std::string& title) {
  const std::string site = page.Site().empty() ? "Print" : "Print " + page.Site();
  auto* dialog = GTK_PRINT_UNIX_DIALOG(gtk_print_unix_dialog_new(site.c_str(), page.Window()));
  gtk_print_unix_dialog_set_manual_capabilities(
      dialog, static_cast<GtkPrintCapabilities>(GTK_PRINT_CAPABILITY_PAGE_SET | GTK_PRINT_CAPABILITY_COPIES |
                                                GTK_PRINT_CAPABILITY_COLLATE | GTK_PRINT_CAPABILITY_REVERSE |
                                                GTK_PRINT_CAPABILITY_SCALE | GTK_PRINT_CAPABILITY_NUMBER_UP |
                                                GTK_PRINT_CAPABILITY_NUMBER_UP_LAYOUT));
  gtk_print_unix_dialog_set_embed_page_setup(dialog, TRUE);
  gtk_print_unix_dialog_set_settings(dialog, SettingsFor(title).get());
  gtk_window_set_modal(GTK_WINDOW(dialog), FALSE);
  return dialog;
}

void Print(GtkPrintUnixDialog* dialog, WebKitPrintOperation* operation) {
  const Owned<GtkPrintSettings> settings(gtk_print_unix_dialog_get_settings(dialog));
  // The operation finds the printer by its name.
  if (GtkPrinter* printer = gtk_print_unix_dialog_get_selected_printer(dialog))
    gtk_print_settings_set_printer(settings.get(), gtk_printer_get_name(printer));
  webkit_print_operation_set_print_settings(operation, settings.get());
  webkit_print_operation_set_page_setup(operation, gtk_print_unix_dialog_get_page_setup(dialog));
  webkit_print_operation_print(operation);
}

}  // namespace

namespace PrintPage {

void Ask(Page& page, WebKitPrintOperation* operation, std::function<void()> ended) {
  Callbacks& calls = page.World().Lasting();
  const auto job = Begin(page, operation);
  GtkPrintUnixDialog* dialog = MakeDialog(page, job->title);
  // The page's end is the dialog's.
  calls.On<void(GtkWidget*)>(job->view.get(), "destroy",
                             [held = std::shared_ptr<GtkPrintUnixDialog>(Share(dialog))](auto*) {
                               gtk_widget_destroy(GTK_WIDGET(held.get()));
                             });
  calls.On<void(GtkPrintUnixDialog*, int)>(dialog, "response",
                                           [job, &calls](GtkPrintUnixDialog* dialog, int response) {
                                             if (response == GTK_RESPONSE_OK)
                                               Print(dialog, job->operation.get());
                                             else
                                               calls.Off(job->operation.get());
                                             gtk_widget_destroy(GTK_WIDGET(dialog));
                                           });
  page.Calls().On<void(GtkWidget*)>(dialog, "destroy", [ended = std::move(ended)](auto*) { ended(); });
  gtk_window_present(GTK_WINDOW(dialog));
}

}  // namespace PrintPage
