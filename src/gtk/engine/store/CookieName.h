#pragma once

#include <string>
#include <string_view>

// The source name of a cookie: "Cookie:NAME@DOMAIN/PATH", with the domain as the store has it and one slash
// between it and the path.
//
// What could make one cookie look like another, or like two, stands as "\xNN", a byte each: control and
// formatting characters, line ends, bytes that are no text, the backslash itself, and the slash in a name
// that also has an "@". So no two cookies of valid domains and paths have the same source name.
std::string CookieName(std::string_view name, std::string_view domain, std::string_view path);
