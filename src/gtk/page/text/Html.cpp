#include "gtk/page/text/Html.h"

#include "platform/Text.h"

namespace Html {

std::string Escape(std::string_view text) {
  std::string result;
  for (const char c : Text::Valid(text)) switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\'':
        result += "&#39;";
        break;
      case '\0':
        result += "\uFFFD";
        break;
      default:
        result += c;
    }
  return result;
}

}  // namespace Html
