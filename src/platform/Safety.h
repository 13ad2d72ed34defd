#pragma once

// What vouches for the page on show.
enum class Safety {
  Unknown,    // no site stands behind it, or it hasn't come yet
  Secure,     // came encrypted from a site that has proved its name
  NotSecure,  // came openly
  Exception,  // came encrypted, with a certificate that was refused and that the user went on with
  OwnPage,    // the browser element's own: errors, sources
  LocalFile
};

// In a few words, for people.
const char* InWords(Safety safety);
inline constexpr const char* NoSandboxInWords = "Pages run without a sandbox";
