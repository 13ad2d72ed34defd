#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>

// Owning what the C libraries hand out.

struct Unreference {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, Unreference>;

// Takes a further reference.
template <class T>
Owned<T> Share(T* object) {
  return Owned<T>(static_cast<T*>(g_object_ref(object)));
}

struct FreeError {
  void operator()(GError* error) const { g_error_free(error); }
};
using OwnedError = std::unique_ptr<GError, FreeError>;

// A text that stays the library's own; nothing becomes an empty text.
inline std::string TextOf(const char* text) { return text ? text : ""; }

// A text that the library gives away.
inline std::string TakeText(char* text) {
  std::string result = TextOf(text);
  g_free(text);
  return result;
}
