#pragma once

#include <string>
#include <string_view>

// What people type into an address field, as an address that can be loaded.
namespace Address {

struct Target {
  std::string uri;          // what to load; the typed text itself where it makes no address
  std::string fallback;     // to load instead where no secure connection can be made; empty for none
  bool valid = true;        // false: no address can be made of the text
  std::string search = {};  // looks for the text where it makes no address, or where there is no such host
};

// A full address stays as it is; an absolute path becomes a file: address; a host, with or without port and
// path, is loaded by https: (http: for this machine and for bare numbers); an empty text is "about:blank". A
// file
// ".url" becomes the web address in it, where it has one.
Target FromTyped(std::string_view typed);

// The file: address of a path of the host, which must be absolute.
std::string FromPath(std::string_view path);

// The lower-case scheme without its colon; empty where there is none.
std::string Scheme(std::string_view uri);
// The host without user, port and brackets; empty where there is none.
std::string Host(std::string_view uri);
// True for addresses whose content is on this machine or in the address itself.
bool IsLocal(std::string_view uri);

// True where a web address names a port that the engine keeps for other services.
bool HasForeignPort(std::string_view uri);

// What stands for a page without a title: the file's name, else the host with the path, else the address.
std::string ShortName(std::string_view uri);

// "%41" is "A"; a broken escape stays as it is.
std::string Unescape(std::string_view text);

}  // namespace Address
