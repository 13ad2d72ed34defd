#include "platform/gtk/SavePage.h"

#include <memory>

#include "platform/PageNames.h"
#include "platform/gtk/Notice.h"
#include "platform/gtk/Page.h"

namespace {

constexpr const char* Complete = ".mhtml";
constexpr const char* HtmlOnly = ".html";

struct Saving {
  std::weak_ptr<Page> page;
  std::string path;
};

void Fail(const Saving& saving, const char* reason) {
  const auto page = saving.page.lock();
  Notice::Show(page && !page->Closed() ? page->Window() : nullptr, "The page wasn't saved",
               "The file \"" + saving.path + "\" can't be written: " + reason +
                   ". Choose another folder or name, and try again.");
}

// The new file takes the old one's place only when it is complete.
void OnStream(GObject* view, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
  GError* error = nullptr;
  const Owned<GInputStream> page(webkit_web_view_save_finish(WEBKIT_WEB_VIEW(view), result, &error));
  const Owned<GFile> file(g_file_new_for_path(saving->path.c_str()));
  Owned<GFileOutputStream> output;
  if (page) output.reset(g_file_replace(file.get(), nullptr, FALSE, G_FILE_CREATE_NONE, nullptr, &error));
  if (output)
    g_output_stream_splice(G_OUTPUT_STREAM(output.get()), page.get(),
                           static_cast<GOutputStreamSpliceFlags>(G_OUTPUT_STREAM_SPLICE_CLOSE_SOURCE |
                                                                 G_OUTPUT_STREAM_SPLICE_CLOSE_TARGET),
                           nullptr, &error);
  const OwnedError reason(error);
  if (reason) Fail(*saving, reason->message);
}

void OnSource(GObject* resource, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
  gsize length = 0;
  GError* error = nullptr;
  guchar* bytes = webkit_web_resource_get_data_finish(WEBKIT_WEB_RESOURCE(resource), result, &length, &error);
  const Owned<GFile> file(g_file_new_for_path(saving->path.c_str()));
  if (!error)
    g_file_replace_contents(file.get(), reinterpret_cast<const char*>(bytes), length, nullptr, FALSE,
                            G_FILE_CREATE_NONE, nullptr, nullptr, &error);
  g_free(bytes);
  const OwnedError reason(error);
  if (reason) Fail(*saving, reason->message);
}

void Save(Page& page, const std::string& path, bool complete) {
  auto* saving = new Saving{page.weak_from_this(), path};
  WebKitWebResource* source = webkit_web_view_get_main_resource(page.View());
  if (complete || !source)
    webkit_web_view_save(page.View(), WEBKIT_SAVE_MODE_MHTML, nullptr, OnStream, saving);
  else
    webkit_web_resource_get_data(source, nullptr, OnSource, saving);
}

GtkFileFilter* AddFilter(GtkFileChooser* chooser, const char* name,
                         std::initializer_list<const char*> patterns) {
  GtkFileFilter* filter = gtk_file_filter_new();
  gtk_file_filter_set_name(filter, name);
  for (const char* pattern : patterns) gtk_file_filter_add_pattern(filter, pattern);
  gtk_file_chooser_add_filter(chooser, filter);
  return filter;
}

bool EndsIn(const std::string& name, std::initializer_list<const char*> ends) {
  for (const char* end : ends)
    if (name.ends_with(end)) return true;
  return false;
}

// The name follows the kind that is chosen.
void OnFilter(GObject* chooser, GParamSpec*, gpointer html_filter) {
  const bool complete = gtk_file_chooser_get_filter(GTK_FILE_CHOOSER(chooser)) != html_filter;
  std::string name = TakeText(gtk_file_chooser_get_current_name(GTK_FILE_CHOOSER(chooser)));
  if (EndsIn(name, {Complete, HtmlOnly})) name.erase(name.rfind('.'));
  if (name.empty()) return;
  gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(chooser),
                                    (name + (complete ? Complete : HtmlOnly)).c_str());
}

void OnChosen(GtkNativeDialog* dialog, int response, gpointer data) {
  const std::unique_ptr<std::weak_ptr<Page>> weak(static_cast<std::weak_ptr<Page>*>(data));
  const Owned<GtkNativeDialog> drop(dialog);
  const std::string path = TakeText(gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog)));
  const auto page = weak->lock();
  if (response != GTK_RESPONSE_ACCEPT || path.empty() || !page || page->Closed()) return;
  Save(*page, path, !EndsIn(path, {HtmlOnly, ".htm", ".xhtml"}));
}

}  // namespace

namespace SavePage {

void Ask(Page& page) {
  GtkFileChooserNative* dialog =
      gtk_file_chooser_native_new("Save As", page.Window(), GTK_FILE_CHOOSER_ACTION_SAVE, "_Save", "_Cancel");
  auto* chooser = GTK_FILE_CHOOSER(dialog);
  gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(dialog), TRUE);
  gtk_file_chooser_set_do_overwrite_confirmation(chooser, TRUE);
  AddFilter(chooser, "Complete page in one file (*.mhtml)", {"*.mhtml", "*.mht"});
  GtkFileFilter* html = AddFilter(chooser, "The page's HTML only (*.html)", {"*.html", "*.htm", "*.xhtml"});
  gtk_file_chooser_set_current_name(chooser, (PageNames::FromTitle(page.Title()) + Complete).c_str());
  g_signal_connect(dialog, "notify::filter", G_CALLBACK(OnFilter), html);
  g_signal_connect(dialog, "response", G_CALLBACK(OnChosen), new std::weak_ptr<Page>(page.weak_from_this()));
  gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}

}  // namespace SavePage
