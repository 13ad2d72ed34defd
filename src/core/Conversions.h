#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The one place where numbers become narrower and text becomes a number.

// To the nearest whole number, halves to the even one. Fails outside the range of the type.
int16_t ToInt16(double value);
int32_t ToInt32(double value);

// The number that a text begins with, behind blanks: decimal without an exponent, or hexadecimal behind "&h";
// 0 where there is none.
double LeadingNumber(std::string_view text);

// The number that the whole text is, surrounding blanks aside: decimal, or hexadecimal of 32 bits behind
// "&h". Fails for any other text, an empty one included.
double StrictNumber(std::string_view text);
