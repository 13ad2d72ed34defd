#include "gtk/page/SourceLoad.h"

#include <libsoup/soup.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <string_view>

#include "gtk/engine/BrowserWorld.h"
#include "gtk/page/DownloadBar.h"
#include "gtk/page/LoadErrors.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/SourcePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace {

// Where neither the server nor the page names an encoding and the text isn't UTF-8.
constexpr const char* UsualEncoding = "windows-1252";

struct Mark {
  std::string_view bytes;
  const char* encoding;
};
// At the start of a text, each says more surely than any name how it is encoded.
constexpr std::array<Mark, 3> Marks = {
    {{"\xEF\xBB\xBF", "UTF-8"}, {"\xFE\xFF", "UTF-16BE"}, {"\xFF\xFE", "UTF-16LE"}}};

std::optional<std::string> Convert(std::string_view bytes, const char* encoding) {
  gsize length = 0;
  char* text = g_convert_with_fallback(bytes.data(), static_cast<gssize>(bytes.size()), "UTF-8", encoding,
                                       nullptr, nullptr, &length, nullptr);
  if (!text) return std::nullopt;
  std::string result(text, length);
  g_free(text);
  return result;
}

// Every byte is a character: the five that the encoding leaves out are the control characters of that number.
std::string FromUsual(std::string_view bytes) {
  std::string result;
  for (const char& byte : bytes) {
    const auto number = static_cast<unsigned char>(byte);
    const auto character = number < 0x80 ? std::nullopt : Convert({&byte, 1}, UsualEncoding);
    if (number < 0x80)
      result += byte;
    else if (character)
      result += *character;
    else
      result += {static_cast<char>(0xC0 | number >> 6), static_cast<char>(0x80 | (number & 0x3F))};
  }
  return result;
}

// Bytes that are no UTF-8 though they claim to be stay: each is shown as one that can't be read.
std::string ToUtf8(std::string_view bytes, const std::string& sent) {
  for (const Mark& mark : Marks) {
    if (!bytes.starts_with(mark.bytes)) continue;
    bytes.remove_prefix(mark.bytes.size());
    return Convert(bytes, mark.encoding).value_or(std::string(bytes));
  }
  if (g_utf8_validate_len(bytes.data(), bytes.size(), nullptr)) return std::string(bytes);
  const std::string named = sent.empty() ? NamedEncoding(bytes) : sent;
  if (Text::SameWithoutCase(named, "utf-8") || Text::SameWithoutCase(named, "utf8"))
    return std::string(bytes);
  if (named.empty()) return FromUsual(bytes);
  const auto text = Convert(bytes, named.c_str());
  return text ? *text : FromUsual(bytes);
}

std::string SentEncoding(WebKitURIResponse* response) {
  SoupMessageHeaders* headers = response ? webkit_uri_response_get_http_headers(response) : nullptr;
  if (!headers) return {};
  GHashTable* parameters = nullptr;
  if (!soup_message_headers_get_content_type(headers, &parameters) || !parameters) return {};
  const std::string encoding = TextOf(static_cast<const char*>(g_hash_table_lookup(parameters, "charset")));
  g_hash_table_unref(parameters);
  return encoding;
}

}  // namespace

SourceLoad::SourceLoad(std::string uri, Done done, Failed failed)
    : uri_(std::move(uri)),
      done_(std::move(done)),
      failed_(std::move(failed)),
      cancel_(g_cancellable_new()) {}

SourceLoad::~SourceLoad() {
  if (idle_) g_source_remove(idle_);
  g_cancellable_cancel(cancel_.get());
  if (download_) {
    g_signal_handlers_disconnect_by_data(download_.get(), this);
    webkit_download_cancel(download_.get());
  }
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

std::unique_ptr<SourceLoad> SourceLoad::Begin(Page& page, const std::string& uri, bool shown, Done done,
                                              Failed failed) {
  std::unique_ptr<SourceLoad> load(new SourceLoad(uri, std::move(done), std::move(failed)));
  load->page_ = &page;
  load->engine_folder_ = page.World().EngineFolder();
  WebKitWebResource* resource = shown ? webkit_web_view_get_main_resource(page.View()) : nullptr;
  if (resource)
    load->ReadShown(resource);
  else
    load->idle_ = g_idle_add(OnIdle, load.get());
  return load;
}

void SourceLoad::ReadShown(WebKitWebResource* resource) {
  webkit_web_resource_get_data(resource, cancel_.get(), OnShown, this);
}

void SourceLoad::OnShown(GObject* source, GAsyncResult* result, gpointer data) {
  auto* resource = WEBKIT_WEB_RESOURCE(source);
  gsize length = 0;
  GError* error = nullptr;
  guchar* bytes = webkit_web_resource_get_data_finish(resource, result, &length, &error);
  const OwnedError wrong(error);
  // The object may be gone where the reading was cancelled.
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
  auto* self = static_cast<SourceLoad*>(data);
  if (wrong) {
    self->idle_ = g_idle_add(OnIdle, self);
    return;
  }
  const std::string source_text(reinterpret_cast<const char*>(bytes), length);
  g_free(bytes);
  self->Tell(source_text, SentEncoding(webkit_web_resource_get_response(resource)));
}

gboolean SourceLoad::OnIdle(gpointer data) {
  auto* self = static_cast<SourceLoad*>(data);
  self->idle_ = 0;
  const std::string scheme = Address::Scheme(self->uri_);
  if (self->uri_.empty() || scheme == "about")
    self->Tell({}, {});
  else if (scheme == "file")
    self->ReadFile();
  else if (scheme != "http" && scheme != "https")
    self->Fail(LoadErrors::NoAddress("view-source:" + self->uri_));
  else if (self->page_->World().Offline())
    self->Fail(LoadErrors::WorksOffline("view-source:" + self->uri_));
  else
    self->Fetch();
  return G_SOURCE_REMOVE;
}

void SourceLoad::ReadFile() {
  std::string bytes;
  try {
    bytes = ReadWholeFile(TakeText(g_filename_from_uri(uri_.c_str(), nullptr, nullptr)));
  } catch (const Failure& failure) {
    return FailReading(failure);
  }
  Tell(bytes, {});
}

void SourceLoad::FailReading(const Failure& failure) {
  const OwnedError error(
      g_error_new_literal(WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_FILE_DOES_NOT_EXIST, failure.what()));
  ErrorPage page = LoadErrors::Failed(uri_, error.get());
  page.address = "view-source:" + uri_;
  Fail(page);
}

void SourceLoad::Fetch() {
  download_.reset(webkit_web_context_download_uri(page_->World().Context(), uri_.c_str()));
  DownloadBar::KeepOut(download_.get());
  g_signal_connect(download_.get(), "decide-destination", G_CALLBACK(OnDestination), this);
  g_signal_connect(download_.get(), "failed", G_CALLBACK(OnFetchFailed), this);
  g_signal_connect(download_.get(), "finished", G_CALLBACK(OnFetched), this);
}

gboolean SourceLoad::OnDestination(WebKitDownload* download, const char*, gpointer data) {
  auto* self = static_cast<SourceLoad*>(data);
  self->temporary_ = self->engine_folder_ + "/source-" + TakeText(g_uuid_string_random());
  webkit_download_set_destination(download, Address::FromPath(self->temporary_).c_str());
  return TRUE;
}

void SourceLoad::OnFetchFailed(WebKitDownload*, GError* error, gpointer data) {
  auto* self = static_cast<SourceLoad*>(data);
  const auto ended = self->Ended();
  ErrorPage page = LoadErrors::Failed(self->uri_, error);
  page.address = "view-source:" + self->uri_;
  page.actions = {{"Try again", page.address}};
  self->Fail(page);
}

void SourceLoad::OnFetched(WebKitDownload* download, gpointer data) {
  auto* self = static_cast<SourceLoad*>(data);
  std::string bytes;
  const auto ended = self->Ended();
  try {
    bytes = ReadWholeFile(self->temporary_);
  } catch (const Failure& failure) {
    return self->FailReading(failure);
  }
  self->Tell(bytes, SentEncoding(webkit_download_get_response(download)));
}

// A download that has come to its end must not be cancelled any more.
Owned<WebKitDownload> SourceLoad::Ended() {
  g_signal_handlers_disconnect_by_data(download_.get(), this);
  return std::move(download_);
}

// What is told ends the load, and so this object.
void SourceLoad::Tell(const std::string& bytes, const std::string& encoding) {
  const Done done = done_;
  done(SourcePage(ToUtf8(bytes, encoding), uri_));
}

void SourceLoad::Fail(const ErrorPage& error) {
  const Failed failed = failed_;
  failed(error);
}
