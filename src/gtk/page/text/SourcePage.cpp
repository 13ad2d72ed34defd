#include "gtk/page/text/SourcePage.h"

#include <algorithm>

#include "gtk/page/text/Html.h"
#include "platform/Text.h"

namespace {

constexpr const char* Head = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8">
<style>
  :root { color-scheme: light; }
  body { margin: 0; background: #fff; color: #1d2630; font: 13px/1.5 monospace; }
  ol { margin: 0; padding: .4em 0; list-style: none; counter-reset: line; }
  li { display: flex; min-height: 1.5em; counter-increment: line; }
  li::before { content: counter(line); flex: none; width: 4em; margin-right: 1em; padding-right: .6em; text-align: right;
               color: #7b8794; background: #f2f4f7; user-select: none; }
  code { font: inherit; white-space: pre-wrap; overflow-wrap: anywhere; tab-size: 4; }
  .t { color: #1f5a96; } .v { color: #8f3f1d; } .c { color: #5b7a4a; } .d { color: #7b5aa6; }
</style>
)";

// Writes text in a colour, closing it at each line's end.
class Lines {
 public:
  void Add(std::string_view text, char colour = 0) {
    for (;;) {
      const size_t end = text.find('\n');
      AddPiece(text.substr(0, end), colour);
      if (end == text.npos) return;
      html += "</code></li>\n<li><code>";
      text.remove_prefix(end + 1);
    }
  }

  std::string html = "<ol><li><code>";

 private:
  void AddPiece(std::string_view piece, char colour) {
    if (piece.ends_with('\r')) piece.remove_suffix(1);
    if (piece.empty()) return;
    const std::string text = Html::Escape(piece);
    html += colour ? std::string("<span class=\"") + colour + "\">" + text + "</span>" : text;
  }
};

size_t Behind(std::string_view source, size_t at, std::string_view what) {
  const size_t found = source.find(what, at);
  return found == source.npos ? source.size() : found + what.size();
}

// The quotes that a tag's end doesn't count in, as "a > b".
size_t TagEnd(std::string_view source, size_t at) {
  char quote = 0;
  for (; at < source.size(); ++at) {
    const char c = source[at];
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return at + 1;
    }
  }
  return at;
}

void AddTag(Lines& lines, std::string_view tag) {
  while (!tag.empty()) {
    const size_t quote = tag.find_first_of("\"'");
    lines.Add(tag.substr(0, quote), 't');
    if (quote == tag.npos) return;
    const size_t end = std::min(tag.find(tag[quote], quote + 1), tag.size() - 1);
    lines.Add(tag.substr(quote, end + 1 - quote), 'v');
    tag.remove_prefix(end + 1);
  }
}

bool IsTagStart(std::string_view source, size_t at) {
  if (at + 1 >= source.size()) return false;
  const char next = source[at + 1];
  return next == '/' || next == '!' || next == '?' || (next >= 'a' && next <= 'z') ||
         (next >= 'A' && next <= 'Z');
}

bool Begins(std::string_view source, size_t at, std::string_view word) {
  return Text::SameWithoutCase(source.substr(at, word.size()), word);
}

// Behind a script or a style, whose text holds no tags.
size_t RawEnd(std::string_view source, size_t at, std::string_view closing) {
  for (; at < source.size(); ++at)
    if (source[at] == '<' && Begins(source, at, closing)) return at;
  return at;
}

bool IsMarkup(std::string_view source) {
  const size_t start = source.find_first_not_of(" \t\r\n");
  return start != source.npos && source[start] == '<';
}

void AddMarkup(Lines& lines, std::string_view source) {
  for (size_t at = 0; at < source.size();) {
    const size_t start = std::min(source.find('<', at), source.size());
    lines.Add(source.substr(at, start - at));
    at = start;
    if (at == source.size()) return;
    if (source.compare(at, 4, "<!--") == 0) {
      const size_t end = Behind(source, at + 4, "-->");
      lines.Add(source.substr(at, end - at), 'c');
      at = end;
    } else if (!IsTagStart(source, at)) {
      lines.Add("<");
      ++at;
    } else if (source[at + 1] == '!' || source[at + 1] == '?') {
      const size_t end = Behind(source, at, ">");
      lines.Add(source.substr(at, end - at), 'd');
      at = end;
    } else {
      const size_t end = TagEnd(source, at);
      AddTag(lines, source.substr(at, end - at));
      const std::string_view closing = Begins(source, at, "<script")  ? "</script"
                                       : Begins(source, at, "<style") ? "</style"
                                                                      : std::string_view{};
      at = closing.empty() ? end : RawEnd(source, end, closing);
      lines.Add(source.substr(end, at - end));
    }
  }
}

}  // namespace

std::string SourcePage(std::string_view source, std::string_view address) {
  Lines lines;
  IsMarkup(source) ? AddMarkup(lines, source) : lines.Add(source);
  return std::string(Head) + "<title>Source of " + Html::Escape(address) + "</title></head><body>\n" +
         lines.html + "</code></li></ol></body></html>\n";
}

std::string NamedEncoding(std::string_view source) {
  constexpr std::string_view key = "charset=";
  const std::string head = Text::LowerCase(source.substr(0, 1024));
  const size_t found = head.find(key);
  if (found == head.npos) return {};
  size_t start = found + key.size();
  if (start < head.size() && (head[start] == '"' || head[start] == '\'')) ++start;
  const size_t end = head.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-_:.", start);
  return head.substr(start, end == head.npos ? head.npos : end - start);
}
