#include "gtk/favourites/BookmarkHtmlParser.h"

#include <libxml/HTMLparser.h>

#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/Failure.h"

namespace {

struct FreeParser {
  void operator()(htmlParserCtxtPtr parser) const { htmlFreeParserCtxt(parser); }
};

std::string_view View(const xmlChar* text) {
  return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

// Follows the file from tag to tag: a heading H3 names the list DL that comes next, an A is a link. Nothing
// else counts, so icons, tags, descriptions and separators are passed over.
class Listener {
 public:
  Bookmarks Result;
  bool Found = false;  // a list

  void Start(std::string_view element, const xmlChar** attributes) {
    if (element == "h3") {
      EmptyFolder();
      text_.emplace();
    } else if (element == "a") {
      EmptyFolder();
      address_ = Attribute(attributes, "href");
      text_.emplace();
    } else if (element == "dl") {
      Open();
    } else if (element == "dt") {
      EmptyFolder();
    } else if (element == "dd") {
      EndLink();
    }
  }

  void End(std::string_view element) {
    if (element == "h3" && text_) heading_ = std::exchange(text_, std::nullopt);
    if (element == "a") EndLink();
    if (element == "dl") Close();
  }

  void Characters(std::string_view characters) {
    // A name of any use is shorter.
    if (text_ && text_->size() < 64 * FileName::MostBytes) *text_ += characters;
  }

  void Finish() {
    while (!open_.empty()) Close();
    EmptyFolder();
  }

 private:
  static std::string Attribute(const xmlChar** attributes, std::string_view name) {
    for (; attributes && attributes[0]; attributes += 2)
      if (View(attributes[0]) == name) return std::string(View(attributes[1]));
    return {};
  }

  std::vector<Bookmark>& Here() { return folders_.empty() ? Result.Top : folders_.back().Children; }

  void EndLink() {
    if (!address_) return;
    Result.Add(Here(), text_.value_or(""), *address_);
    address_.reset();
    text_.reset();
  }

  // A heading that no list followed.
  void EmptyFolder() {
    EndLink();
    if (text_) heading_ = std::exchange(text_, std::nullopt);
    if (!heading_) return;
    Here().push_back({true, std::move(*heading_), "", {}});
    heading_.reset();
  }

  void Open() {
    Found = true;
    EndLink();
    if (text_) heading_ = std::exchange(text_, std::nullopt);
    // The list that holds all others has no heading of its own; nor has what lies too deep.
    const bool folder = (heading_ || !open_.empty()) && folders_.size() < Bookmarks::MostDepth;
    open_.push_back(folder);
    if (folder) folders_.push_back({true, heading_.value_or(""), "", {}});
    heading_.reset();
  }

  void Close() {
    EmptyFolder();
    if (open_.empty()) return;
    const bool folder = open_.back();
    open_.pop_back();
    if (!folder) return;
    Bookmark closed = std::move(folders_.back());
    folders_.pop_back();
    Here().push_back(std::move(closed));
  }

  std::vector<bool> open_;         // for each list that is open, whether it is a folder
  std::vector<Bookmark> folders_;  // those that are open, from the top down
  std::optional<std::string> text_, heading_, address_;
};

// What the parser calls: no exception crosses its frames, and the first one ends the parsing.
struct Parse {
  Listener listener;
  htmlParserCtxtPtr parser = nullptr;
  std::exception_ptr failure;

  template <class Handler>
  static void Guarded(void* data, Handler handler) noexcept {
    auto* self = static_cast<Parse*>(data);
    if (self->failure) return;
    try {
      handler(self->listener);
    } catch (...) {
      self->failure = std::current_exception();
      xmlStopParser(self->parser);
    }
  }
};

}  // namespace

Bookmarks ParseBookmarkHtml(const std::string& html, bool& found) {
  if (html.size() > static_cast<size_t>(std::numeric_limits<int>::max()))
    throw Failure("the file is too large");
  const std::unique_ptr<htmlParserCtxt, FreeParser> parser(htmlNewParserCtxt());
  if (!parser) throw Failure("there is no memory for it");
  Parse parse;
  parse.parser = parser.get();
  *parser->sax = {};
  parser->sax->startElement = [](void* data, const xmlChar* name, const xmlChar** attributes) {
    Parse::Guarded(data, [&](Listener& listener) { listener.Start(View(name), attributes); });
  };
  parser->sax->endElement = [](void* data, const xmlChar* name) {
    Parse::Guarded(data, [&](Listener& listener) { listener.End(View(name)); });
  };
  parser->sax->characters = [](void* data, const xmlChar* text, int length) {
    Parse::Guarded(data, [&](Listener& listener) {
      listener.Characters({reinterpret_cast<const char*>(text), static_cast<size_t>(length)});
    });
  };
  parser->sax->ignorableWhitespace = parser->sax->characters;
  parser->userData = &parse;
  htmlCtxtReadMemory(parser.get(), html.data(), static_cast<int>(html.size()), nullptr, "UTF-8",
                     HTML_PARSE_RECOVER | HTML_PARSE_NONET | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                         HTML_PARSE_IGNORE_ENC);
  if (parse.failure) std::rethrow_exception(parse.failure);
  // Faulty HTML is the rule; what the parser stopped at would be lost without a word.
  const xmlErrorPtr last = xmlCtxtGetLastError(parser.get());
  if (parser->disableSAX != 0 || (last && last->level == XML_ERR_FATAL && last->code == XML_ERR_NO_MEMORY))
    throw Failure(last && last->message ? last->message : "the parser gave up");
  parse.listener.Finish();
  found = parse.listener.Found;
  return std::move(parse.listener.Result);
}
