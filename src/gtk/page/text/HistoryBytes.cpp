#include "gtk/page/text/HistoryBytes.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "gtk/base/GObjects.h"
#include "gtk/page/text/Address.h"
#include "platform/WebAddress.h"

namespace {

// As the engine has it: version, entries, index of the one on show. An entry: title, frame, policy. A frame:
// the four texts and what is behind them, by their places below, with the frames in it at its end.
#define BODY "m(sa(uaysxmxmds))"
#define FRAME "(ssssasmayxx(ii)d" BODY "av)"
#define ENTRY "(s" FRAME "u)"
constexpr const char *BodyType = BODY, *FrameType = FRAME, *EntryType = ENTRY,
                     *HistoryType = "(qa" ENTRY "mu)";
#undef BODY
#undef FRAME
#undef ENTRY
enum FramePart {
  Uri,
  OriginalUri,
  Referrer,
  Target,
  Fields,
  Script,
  Document,
  Item,
  Scroll,
  Scale,
  Body,
  Inner,
  Parts
};

constexpr guint16 Version = 2;
constexpr size_t MostEntries = 100;  // as the engine keeps
constexpr int MostDepth = 10;        // of frames in frames
// Bytes. What pages wrote into their entries by themselves goes first.
constexpr size_t Many = 256 * 1024, Most = 1024 * 1024;

struct UnreferenceVariant {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Value = std::unique_ptr<GVariant, UnreferenceVariant>;

Value Child(GVariant* parent, size_t n) { return Value(g_variant_get_child_value(parent, n)); }
Value Sunk(GVariant* value) { return Value(g_variant_ref_sink(value)); }
std::string TextAt(GVariant* parent, size_t n) {
  return g_variant_get_string(Child(parent, n).get(), nullptr);
}

struct Rules {
  bool users;    // addresses with a user's name or password may stay
  bool writing;  // and so may what pages wrote by themselves
};

bool MayStay(const std::string& uri, const Rules& rules) {
  const std::string scheme = Address::Scheme(uri);
  if (scheme == "javascript" || scheme.starts_with("marlowick")) return false;
  return rules.users || WebAddress::WithoutUser(uri) == uri;
}

Value Cleaned(GVariant* frame, const Rules& rules, int depth);

Value InnerFrames(GVariant* frame, const Rules& rules, int depth) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("av"));
  const Value all = Child(frame, Inner);
  for (size_t i = 0; depth < MostDepth && i < g_variant_n_children(all.get()); ++i) {
    const Value inner(g_variant_get_variant(Child(all.get(), i).get()));
    if (!g_variant_is_of_type(inner.get(), G_VARIANT_TYPE(FrameType))) continue;
    if (const Value clean = Cleaned(inner.get(), rules, depth + 1))
      g_variant_builder_add(&builder, "v", clean.get());
  }
  return Sunk(g_variant_builder_end(&builder));
}

// None where it must not be kept.
Value Cleaned(GVariant* frame, const Rules& rules, int depth) {
  for (const FramePart part : {Uri, OriginalUri, Referrer})
    if (!MayStay(TextAt(frame, part), rules)) return nullptr;
  Value parts[Parts];
  GVariant* plain[Parts];
  for (size_t n = 0; n < Parts; ++n) parts[n] = Child(frame, n);
  parts[Body] = Sunk(g_variant_new_maybe(g_variant_type_element(G_VARIANT_TYPE(BodyType)), nullptr));
  parts[Inner] = InnerFrames(frame, rules, depth);
  if (!rules.writing) {
    parts[Fields] = Sunk(g_variant_new_array(G_VARIANT_TYPE_STRING, nullptr, 0));
    parts[Script] = Sunk(g_variant_new_maybe(G_VARIANT_TYPE_BYTESTRING, nullptr));
  }
  const double scale = g_variant_get_double(parts[Scale].get());
  if (!(scale >= 0 && scale <= 100)) parts[Scale] = Sunk(g_variant_new_double(0));
  std::transform(parts, parts + Parts, plain, [](const Value& part) { return part.get(); });
  return Sunk(g_variant_new_tuple(plain, Parts));
}

// Whether an entry is just an address, from which nobody scrolled away.
bool IsBare(GVariant* entry) {
  const Value frame = Child(entry, 1), place = Child(frame.get(), Scroll);
  gint32 x = 0, y = 0;
  g_variant_get(place.get(), "(ii)", &x, &y);
  const auto none = [&](FramePart part) { return g_variant_n_children(Child(frame.get(), part).get()) == 0; };
  return x == 0 && y == 0 && none(Fields) && none(Script) && none(Inner);
}

struct History {
  std::vector<Value> entries;
  size_t shown = 0;  // index of the one on show
};

History CleanedHistory(GVariant* all, const Rules& rules) {
  History history;
  const Value entries = Child(all, 1), shown = Child(all, 2);
  guint32 index = 0;
  const size_t count = g_variant_n_children(entries.get());
  if (g_variant_n_children(shown.get()) > 0) index = g_variant_get_uint32(Child(shown.get(), 0).get());
  const size_t first = count > MostEntries ? std::min<size_t>(index, count - MostEntries) : 0;
  for (size_t i = first; i < std::min(count, first + MostEntries); ++i) {
    const Value entry = Child(entries.get(), i);
    const Value frame = Cleaned(Child(entry.get(), 1).get(), rules, 0);
    if (!frame) continue;
    if (i <= index) history.shown = history.entries.size();
    const Value title = Child(entry.get(), 0), policy = Child(entry.get(), 2);
    GVariant* parts[] = {title.get(), frame.get(), policy.get()};
    history.entries.push_back(Sunk(g_variant_new_tuple(parts, std::size(parts))));
  }
  return history;
}

std::string Bytes(const History& history) {
  std::vector<GVariant*> entries;
  for (const Value& entry : history.entries) entries.push_back(entry.get());
  GVariant* shown = g_variant_new_maybe(nullptr, g_variant_new_uint32(static_cast<guint32>(history.shown)));
  GVariant* parts[] = {g_variant_new_uint16(Version),
                       g_variant_new_array(G_VARIANT_TYPE(EntryType), entries.data(), entries.size()), shown};
  const Value all = Sunk(g_variant_new_tuple(parts, std::size(parts)));
  return {static_cast<const char*>(g_variant_get_data(all.get())), g_variant_get_size(all.get())};
}

}  // namespace

namespace HistoryBytes {

std::string Clean(const std::string& bytes, const std::string& address, KeptPage::Where where) {
  GBytes* copy = g_bytes_new(bytes.data(), bytes.size());
  const Value all = Sunk(g_variant_new_from_bytes(G_VARIANT_TYPE(HistoryType), copy, FALSE));
  g_bytes_unref(copy);
  guint16 version = 0;
  if (!g_variant_is_normal_form(all.get())) return {};
  g_variant_get_child(all.get(), 0, "q", &version);
  if (version != Version) return {};
  for (const bool writing : {true, false}) {
    const History history = CleanedHistory(all.get(), {where == KeptPage::Where::InMemory, writing});
    const auto& entries = history.entries;
    if (entries.empty()) return {};
    const std::string only = entries.size() == 1 ? TextAt(Child(entries[0].get(), 1).get(), Uri) : "";
    if (only == address && IsBare(entries[0].get())) return {};
    std::string clean = Bytes(history);
    if (clean.size() <= (writing ? Many : Most)) return clean;
  }
  return {};
}

}  // namespace HistoryBytes
