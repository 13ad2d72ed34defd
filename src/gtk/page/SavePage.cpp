#include "gtk/page/SavePage.h"

#include <memory>

#include "gtk/dialog/Dialogs.h"
#include "gtk/dialog/Notice.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/PageNames.h"
#include "platform/Text.h"

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
void Write(const Saving& saving, const char* bytes, gsize length, GError*& error) {
  g_file_set_contents_full(saving.path.c_str(), bytes, static_cast<gssize>(length),
                           G_FILE_SET_CONTENTS_CONSISTENT, 0666, &error);
}

void TakeComplete(const Saving& saving, WebKitWebView* view, GAsyncResult* result) {
  GError* error = nullptr;
  const Owned<GInputStream> page(webkit_web_view_save_finish(view, result, &error));
  const Owned<GOutputStream> memory(g_memory_output_stream_new_resizable());
  if (page &&
      g_output_stream_splice(memory.get(), page.get(), G_OUTPUT_STREAM_SPLICE_NONE, nullptr, &error) >= 0) {
    auto* held = G_MEMORY_OUTPUT_STREAM(memory.get());
    Write(saving, static_cast<const char*>(g_memory_output_stream_get_data(held)),
          g_memory_output_stream_get_data_size(held), error);
  }
  const OwnedError reason(error);
  if (reason) Fail(saving, reason->message);
}

void TakeHtml(const Saving& saving, WebKitWebResource* resource, GAsyncResult* result) {
  gsize length = 0;
  GError* error = nullptr;
  guchar* bytes = webkit_web_resource_get_data_finish(resource, result, &length, &error);
  if (!error) Write(saving, reinterpret_cast<const char*>(bytes), length, error);
  g_free(bytes);
  const OwnedError reason(error);
  if (reason) Fail(saving, reason->message);
}

// What is being saved is written even where its page closes meanwhile.
void Save(Page& page, const std::string& path, bool complete) {
  const Saving saving{page.weak_from_this(), path};
  Callbacks& calls = page.World().Lasting();
  WebKitWebResource* source = webkit_web_view_get_main_resource(page.View());
  if (complete)
    webkit_web_view_save(page.View(), WEBKIT_SAVE_MODE_MHTML, nullptr, Callbacks::Ended,
                         calls.Ending([saving](GObject* view, GAsyncResult* result) {
                           TakeComplete(saving, WEBKIT_WEB_VIEW(view), result);
                         }));
  else if (source)
    webkit_web_resource_get_data(source, nullptr, Callbacks::Ended,
                                 calls.Ending([saving](GObject* resource, GAsyncResult* result) {
                                   TakeHtml(saving, WEBKIT_WEB_RESOURCE(resource), result);
                                 }));
  else
    Notice::Show(page.Window(), "The page wasn't saved",
                 "There is no HTML to write to the file \"" + path +
                     "\": nothing has been loaded here. Load the page again, or save it complete.");
}

GtkFileFilter* AddFilter(GtkFileChooser* chooser, const char* name,
                         std::initializer_list<const char*> patterns) {
  GtkFileFilter* filter = gtk_file_filter_new();
  gtk_file_filter_set_name(filter, name);
  for (const char* pattern : patterns) gtk_file_filter_add_pattern(filter, pattern);
  gtk_file_chooser_add_filter(chooser, filter);
  return filter;
}

// What a name ends in says what is written.
enum class Kind { Unknown, Complete, HtmlOnly };

Kind KindOf(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  const size_t dot = name.rfind('.');
  const std::string end = dot == name.npos ? std::string() : Text::LowerCase(name.substr(dot));
  if (end == Complete || end == ".mht") return Kind::Complete;
  if (end == HtmlOnly || end == ".htm" || end == ".xhtml") return Kind::HtmlOnly;
  return Kind::Unknown;
}

// The name follows the kind that is chosen.
void FollowFilter(GtkFileChooser* chooser, const GtkFileFilter* html_filter) {
  const bool complete = gtk_file_chooser_get_filter(chooser) != html_filter;
  std::string name = TakeText(gtk_file_chooser_get_current_name(chooser));
  if (KindOf(name) != Kind::Unknown) name.erase(name.rfind('.'));
  if (name.empty()) return;
  gtk_file_chooser_set_current_name(chooser, (name + (complete ? Complete : HtmlOnly)).c_str());
}

// The dialog has asked about the name that was typed, not about the one with the extension.
bool MayReplace(Page& page, const std::string& path) {
  return !g_file_test(path.c_str(), G_FILE_TEST_EXISTS) ||
         Dialogs::MsgBox(page.Window(), "The file \"" + path + "\" exists. Replace it?", Buttons::YesNo,
                         "Save As") == Answer::Yes;
}

// `html_filter` is the dialog's own.
void TakeChoice(Page& page, GtkFileChooser* chooser, const GtkFileFilter* html_filter) {
  std::string path = TakeText(gtk_file_chooser_get_filename(chooser));
  if (path.empty() || page.Closed()) return;
  if (KindOf(path) == Kind::Unknown) {
    path += gtk_file_chooser_get_filter(chooser) == html_filter ? HtmlOnly : Complete;
    if (!MayReplace(page, path) || page.Closed()) return;
  }
  Save(page, path, KindOf(path) == Kind::Complete);
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
  // The dialog lives in its handlers, until they are taken off.
  Callbacks& calls = page.World().Lasting();
  const std::shared_ptr<GtkFileChooserNative> held(dialog, Unreference());
  calls.On<void(GtkFileChooser*, GParamSpec*)>(
      dialog, "notify::filter", [html](GtkFileChooser* changed, auto*) { FollowFilter(changed, html); });
  calls.On<void(GtkNativeDialog*, int)>(
      dialog, "response",
      [weak = page.weak_from_this(), html, held, &calls](GtkNativeDialog* answered, int response) {
        const auto keep = held;  // NOLINT: the dialog, until the end of this call
        const auto still_there = weak.lock();
        const GtkFileFilter* filter = html;
        calls.Off(answered);
        if (response == GTK_RESPONSE_ACCEPT && still_there)
          TakeChoice(*still_there, GTK_FILE_CHOOSER(answered), filter);
      });
  gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}

}  // namespace SavePage
