#include "gtk/page/SaveLink.h"

#include <gtk/gtk.h>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/PageNames.h"

namespace {

// What an address calls its file; one that names none is a folder's page.
std::string NameIn(const std::string& uri) {
  const std::string path = uri.substr(0, uri.find_first_of("?#"));
  const std::string name = path.substr(path.rfind('/') + 1);
  return PageNames::FromTitle(name.empty() || path.ends_with("://" + name) ? "page.html"
                                                                           : Address::Unescape(name));
}

}  // namespace

void SaveLink::Ask(Page& page, const std::string& uri) {
  GtkFileChooserNative* dialog =
      gtk_file_chooser_native_new("Save As", page.Window(), GTK_FILE_CHOOSER_ACTION_SAVE, "_Save", "_Cancel");
  auto* chooser = GTK_FILE_CHOOSER(dialog);
  gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(dialog), TRUE);
  gtk_file_chooser_set_do_overwrite_confirmation(chooser, TRUE);
  gtk_file_chooser_set_current_name(chooser, NameIn(uri).c_str());
  // The dialog lives in its handler, until that is taken off.
  Callbacks& calls = page.World().Lasting();
  const std::shared_ptr<GtkFileChooserNative> held(dialog, Unreference());
  calls.On<void(GtkNativeDialog*, int)>(
      dialog, "response",
      [weak = page.weak_from_this(), uri, held, &calls](GtkNativeDialog* answered, int response) {
        const auto keep = held;  // NOLINT: the dialog, until the end of this call
        const auto page_there = weak.lock();
        const std::string wanted = uri;  // NOLINT: what is captured ends with the handler
        calls.Off(answered);
        const std::string path = TakeText(gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(answered)));
        if (response != GTK_RESPONSE_ACCEPT || path.empty() || !page_there || page_there->Closed()) return;
        page_there->World().Base().Fetches().FetchTo(page_there->View(), wanted, path);
      });
  gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}
