#include "gtk/page/SourceLoad.h"

#include <libsoup/soup.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <string_view>

#include "gtk/engine/Engine.h"
#include "gtk/page/LoadFaults.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/SourcePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

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
  std::string encoding = TextOf(static_cast<const char*>(g_hash_table_lookup(parameters, "charset")));
  g_hash_table_unref(parameters);
  return encoding;
}

}  // namespace

SourceLoad::SourceLoad(Engine& engine, const std::string& uri, WebKitWebResource* shown, Done done,
                       Failed failed, Callbacks::Runner runner)
    : engine_(engine),
      uri_(uri),
      done_(std::move(done)),
      failed_(std::move(failed)),
      cancel_(g_cancellable_new()),
      callbacks_(std::move(runner)) {
  if (shown)
    ReadShown(shown);
  else
    callbacks_.Later([this] { ReadElsewhere(); });
}

SourceLoad::~SourceLoad() {
  g_cancellable_cancel(cancel_.get());
  if (const auto download = Ended()) webkit_download_cancel(download.get());
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void SourceLoad::ReadShown(WebKitWebResource* resource) {
  webkit_web_resource_get_data(resource, cancel_.get(), Callbacks::Ended,
                               callbacks_.Ending([this](GObject* source, GAsyncResult* result) {
                                 TakeShown(WEBKIT_WEB_RESOURCE(source), result);
                               }));
}

void SourceLoad::TakeShown(WebKitWebResource* resource, GAsyncResult* result) {
  gsize length = 0;
  GError* error = nullptr;
  guchar* bytes = webkit_web_resource_get_data_finish(resource, result, &length, &error);
  const OwnedError wrong(error);
  if (wrong) return ReadElsewhere();
  const std::string text(reinterpret_cast<const char*>(bytes), length);
  g_free(bytes);
  Tell(text, SentEncoding(webkit_web_resource_get_response(resource)));
}

void SourceLoad::ReadElsewhere() {
  const std::string scheme = Address::Scheme(uri_);
  if (uri_.empty() || scheme == "about")
    Tell({}, {});
  else if (scheme == "file")
    ReadFile();
  else if (scheme != "http" && scheme != "https")
    Fail(LoadErrors::NoAddress(Address()));
  else if (engine_.Offline())
    Fail(LoadErrors::WorksOffline(Address()));
  else if (const auto bad_proxy = engine_.Settings().BadProxy())
    Fail(LoadErrors::NoProxy(Address(), *bad_proxy));
  else
    Fetch();
}

void SourceLoad::ReadFile() {
  std::string bytes;
  try {
    bytes = ReadWholeFile(TakeText(g_filename_from_uri(uri_.c_str(), nullptr, nullptr)));
  } catch (const Failure& failure) {
    return Fail({LoadFault::Kind::File, failure.what()});
  }
  Tell(bytes, {});
}

void SourceLoad::Fetch() {
  download_ = engine_.Fetches().FetchUnseen(uri_.c_str());
  callbacks_.On<gboolean(WebKitDownload*, const char*)>(download_.get(), "decide-destination",
                                                        [this](WebKitDownload* download, const char*) {
                                                          SetDestination(download);
                                                          return TRUE;
                                                        });
  callbacks_.On<void(WebKitDownload*, GError*)>(download_.get(), "failed", [this](auto*, GError* error) {
    const auto ended = Ended();
    Fail(FaultOf(uri_, error));
  });
  callbacks_.On<void(WebKitDownload*)>(download_.get(), "finished",
                                       [this](WebKitDownload* download) { TakeFetched(download); });
}

void SourceLoad::SetDestination(WebKitDownload* download) {
  temporary_ = engine_.Folder() + "/source-" + TakeText(g_uuid_string_random());
  webkit_download_set_destination(download, Address::FromPath(temporary_).c_str());
}

void SourceLoad::TakeFetched(WebKitDownload* download) {
  std::string bytes;
  const auto ended = Ended();
  try {
    bytes = ReadWholeFile(temporary_);
  } catch (const Failure& failure) {
    return Fail({LoadFault::Kind::Other, failure.what()});
  }
  Tell(bytes, SentEncoding(webkit_download_get_response(download)));
}

// A download that has come to its end must not be cancelled any more.
Owned<WebKitDownload> SourceLoad::Ended() {
  if (download_) callbacks_.Off(download_.get());
  return std::move(download_);
}

// What is told ends the load, and so this object.
void SourceLoad::Tell(const std::string& bytes, const std::string& encoding) {
  const Done done = done_;
  done(SourcePage(ToUtf8(bytes, encoding), WebAddress::WithoutUser(uri_)));
}

void SourceLoad::Fail(const ErrorPage& error) {
  const Failed failed = failed_;
  failed(error);
}

void SourceLoad::Fail(const LoadFault& fault) {
  ErrorPage page = LoadErrors::Failed(uri_, fault);
  page.address = Address();
  page.actions = {{"Try again", page.address}};
  Fail(page);
}
