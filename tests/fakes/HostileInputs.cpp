#include "fakes/HostileInputs.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "core/General.h"
#include "fakes/BmpFile.h"
#include "gtk/page/text/HistoryBytes.h"
#include "platform/Failure.h"
#include "tabs/KeptTabs.h"

namespace {

using std::string_literals::operator""s;

std::string WithPalette(BmpHeader header, const std::string& rows) {
  header.Offset = 54 + 16 * 4;
  header.Colours = 16;
  return header.Text() + "\x10\x20\x30\0"s + std::string(15 * 4, '\x7F') + rows;
}

std::string Encoded(const char* format) {
  GdkPixbuf* pixels = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, 24, 24);
  gdk_pixbuf_fill(pixels, 0x336699FF);
  gchar* data = nullptr;
  gsize size = 0;
  gdk_pixbuf_save_to_buffer(pixels, &data, &size, format, nullptr, nullptr);
  std::string file(data, size);
  g_free(data);
  g_object_unref(pixels);
  return file;
}

// As the engine writes it: two entries, the second with a form that was sent and a frame in it.
std::string EngineHistory() {
  GVariant* value = g_variant_new_parsed(
      "(@q 2, [('A', ('http://a.test/', 'http://a.test/', '', '', @as [], @may nothing, @x 1, @x 2, (3, 4), "
      "1.0,"
      " @m(sa(uaysxmxmds)) nothing, @av []), @u 1), ('B', ('http://b.test/', 'http://b.test/', "
      "'http://a.test/', 't',"
      " ['typed'], just [@y 1, 2], 5, 6, (7, 8), 2.0, just ('text/plain', [(@u 0, [@y 65], '', @x 0, @mx "
      "nothing,"
      " @md nothing, '')]), [<('http://c.test/', '', '', '', @as [], @may nothing, @x 1, @x 2, (3, 4), 1.0,"
      " @m(sa(uaysxmxmds)) nothing, @av [])>]), 1)], just @u 1)");
  g_variant_ref_sink(value);
  std::string bytes(static_cast<const char*>(g_variant_get_data(value)), g_variant_get_size(value));
  g_variant_unref(value);
  return bytes;
}

void Check(bool fine, const char* what, const std::string& content) {
  if (fine) return;
  std::ofstream("hostile-input", std::ios::binary) << content;
  throw std::logic_error(what);
}

}  // namespace

HostileInputs::HostileInputs(uint32_t seed)
    : spoiler_(seed),
      file_(::memfd_create("hostile-input", MFD_CLOEXEC)),
      path_("/proc/self/fd/" + std::to_string(file_)) {
  pictures_ = {BmpFile(21, 13, [](int x, int y) { return static_cast<uint32_t>(x * y); }),
               BmpHeader{8, -8, 32}.Text() + std::string(8 * 8 * 4, '\x55'),
               BmpHeader{8, 8, 16}.Text() + std::string(8 * 8 * 2, '\x55'),
               BmpHeader{8, 8, 32, 3, 0, 66}.Text() + "\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0"s +
                   std::string(8 * 8 * 4, '\x55'),
               WithPalette({9, 9, 1}, std::string(4 * 9, '\x5A')),
               WithPalette({9, 9, 4}, std::string(8 * 9, '\x5A')),
               WithPalette({9, 9, 8}, std::string(12 * 9, '\x0A')),
               WithPalette({9, 9, 8, 1}, "\x09\1\0\0\0\5\1\2\3\4\5\0\0\2\3\2\x06\7\0\0\x09\2\0\1"s),
               WithPalette({9, 9, 4, 2}, "\x09\x12\0\0\0\5\x12\x34\x50\0\0\2\3\2\x06\x77\0\0\x09\x22\0\1"s),
               Encoded("png"),
               Encoded("jpeg")};
  ini_files_ = {"[name]\r\nSteel\r\n\r\n[animation]\r\n100\r\n[menutext]\r\n&hFF\r\n[title]\r\n0",
                "[key]\n[key]\r\n[KEY]\r\n\xC3\xA4\r\n; a remark\r\n[key]"};
  histories_ = {EngineHistory()};
  tabs_ = {KeptTabs{{{"http://a.test/", "A", EngineHistory()}, {"http://b.test/", "", ""}}, 1}.Pack()};
}

HostileInputs::~HostileInputs() { ::close(file_); }

HostileInputs::Counts HostileInputs::Run(long inputs) {
  for (long i = 0; i < inputs; ++i) TryOne();
  return counts_;
}

void HostileInputs::Write(const std::string& content) {
  if (::ftruncate(file_, 0) != 0 ||
      ::pwrite(file_, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
    throw std::runtime_error("The input can't be written");
}

HostileInputs::Counts HostileInputs::TryOne() {
  const size_t kind = spoiler_.Below(8);
  if (kind == 1) {
    TryTabs(spoiler_.Spoil(tabs_[0]));
    TryHistory(spoiler_.Spoil(histories_[0]));
  }
  if (kind == 0)
    TryIni(spoiler_.Spoil(spoiler_.One(ini_files_)));
  else
    TryPicture(spoiler_.Spoil(spoiler_.One(pictures_)));
  return counts_;
}

void HostileInputs::TryPicture(const std::string& content) {
  Write(content);
  ++counts_.Pictures;
  try {
    const Picture picture = drawing_->LoadPicture(path_);
    ++counts_.Taken;
    const auto width = static_cast<size_t>(picture->Width), height = static_cast<size_t>(picture->Height);
    Check(picture->Width > 0 && picture->Height > 0 && picture->Pixels.size() == width * height,
          "The picture's size isn't that of its pixels", content);
    Check(std::all_of(picture->Pixels.begin(), picture->Pixels.end(),
                      [](uint32_t pixel) { return pixel >> 24 == 0xFF; }),
          "A pixel isn't opaque", content);
  } catch (const Failure&) {
  }
}

void HostileInputs::TryIni(const std::string& content) {
  Write(content);
  ++counts_.IniFiles;
  for (const char* key : {"key", "menutext"}) {
    FileSlot slot;
    General general(slot);
    const std::string value = general.ReadIniKey(path_, key);
    Check(content.find(value) != content.npos, "The value isn't in the file", content);
    Check(!slot.IsOpen() || value.empty(), "There is a value though the file stayed open", content);
  }
}

void HostileInputs::TryTabs(const std::string& content) {
  ++counts_.Tabs;
  const KeptTabs tabs = KeptTabs::Unpack(content);
  Check(tabs.Pages.empty() ? tabs.Shown == 0 : tabs.Shown < tabs.Pages.size(), "No such tab is on show",
        content);
  for (const KeptPage& page : tabs.Pages) Check(!page.Address.empty(), "A tab has no address", content);
}

void HostileInputs::TryHistory(const std::string& content) {
  ++counts_.Histories;
  const auto where = KeptPage::Where::OnDisk;
  const std::string clean = HistoryBytes::Clean(content, {}, where);
  Check(HistoryBytes::Clean(clean, {}, where) == clean, "A clean history isn't clean", content);
}
