#include "tabs/KeptTabs.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/Text.h"

namespace {

constexpr std::string_view Header = "<Marlowick Tabs>";
constexpr size_t MostTabs = 500, LongestTitle = 1000;  // characters

// Each text stands behind its length in bytes and a colon.
std::string Field(const std::string& text) { return std::to_string(text.size()) + ":" + text; }

std::optional<std::string> TakeField(std::string_view& content) {
  size_t length = 0;
  const auto [end, fault] = std::from_chars(content.data(), content.data() + content.size(), length);
  const auto digits = static_cast<size_t>(end - content.data());
  if (fault != std::errc() || digits == content.size() || *end != ':') return std::nullopt;
  if (length > content.size() - digits - 1) return std::nullopt;
  std::string text(content.substr(digits + 1, length));
  content.remove_prefix(digits + 1 + length);
  return text;
}

}  // namespace

std::string KeptTabs::Pack() const {
  std::string content = std::string(Header) + Field(std::to_string(Shown));
  for (const KeptPage& page : Pages) content += Field(page.Address) + Field(page.Title) + Field(page.History);
  return content;
}

KeptTabs KeptTabs::Unpack(std::string_view content) {
  KeptTabs tabs;
  if (!content.starts_with(Header)) return tabs;
  content.remove_prefix(Header.size());
  const auto shown = TakeField(content);
  while (shown && tabs.Pages.size() < MostTabs) {
    const auto address = TakeField(content), title = TakeField(content), history = TakeField(content);
    if (!address || !title || !history) break;
    if (!address->empty())
      tabs.Pages.push_back({Text::Valid(*address), Text::Left(Text::Valid(*title), LongestTitle), *history});
  }
  if (shown) std::from_chars(shown->data(), shown->data() + shown->size(), tabs.Shown);
  tabs.Shown = std::min(tabs.Shown, std::max<size_t>(tabs.Pages.size(), 1) - 1);
  return tabs;
}
