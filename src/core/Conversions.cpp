#include "core/Conversions.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/Failure.h"

namespace {

template <class Whole>
Whole ToWhole(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max()))
    throw Failure("The number " + std::to_string(value) +
                  " is out of range: " + std::to_string(std::numeric_limits<Whole>::min()) + " to " +
                  std::to_string(std::numeric_limits<Whole>::max()) + " is possible");
  return static_cast<Whole>(rounded);
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
  const size_t start = text.find_first_not_of(" \t");
  return start == text.npos ? std::string_view() : text.substr(start);
}

std::string_view WithoutBlanks(std::string_view text) {
  text = WithoutLeadingBlanks(text);
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

bool IsHexadecimal(std::string_view text) {
  return text.size() > 2 && text[0] == '&' && (text[1] | 32) == 'h';
}

// Reads the number at the start of `text`, written in such a format, and cuts it off. False where there is
// none.
bool TakeNumber(std::string_view& text, double& value, std::chars_format format) {
  if (IsHexadecimal(text)) {
    uint32_t bits = 0;
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + text.size(), bits, 16);
    if (error == std::errc::invalid_argument) return false;
    // 32 bits with their sign; more digits than that fit nowhere.
    value = error == std::errc() ? static_cast<int32_t>(bits) : std::numeric_limits<double>::infinity();
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return true;
  }
  std::string_view digits = text;
  if (!digits.empty() && digits[0] == '+') digits.remove_prefix(1);
  const size_t first = !digits.empty() && digits[0] == '-' && digits.size() == text.size() ? 1 : 0;
  if (digits.size() <= first || digits.find_first_of("0123456789.", first) != first) return false;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, format);
  if (error == std::errc::result_out_of_range) value = std::numeric_limits<double>::infinity();
  if (error == std::errc::invalid_argument) return false;
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return true;
}

}  // namespace

int16_t ToInt16(double value) { return ToWhole<int16_t>(value); }
int32_t ToInt32(double value) { return ToWhole<int32_t>(value); }

double LeadingNumber(std::string_view text) {
  text = WithoutLeadingBlanks(text);
  double value = 0;
  return TakeNumber(text, value, std::chars_format::fixed) ? value : 0;
}

double StrictNumber(std::string_view text) {
  std::string_view rest = WithoutBlanks(text);
  double value = 0;
  if (!TakeNumber(rest, value, std::chars_format::general) || !rest.empty() || !std::isfinite(value))
    throw Failure("\"" + std::string(text) + "\" is not a number");
  return value;
}
