#include "draw/PictureLoader.h"

#include <fcntl.h>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gio/gio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>

#include "draw/BitmapFile.h"
#include "draw/PictureLimits.h"
#include "platform/Failure.h"
#include "platform/Files.h"

namespace {

constexpr std::string_view BitmapStart = "BM", PngStart = "\x89PNG\r\n\x1A\n", JpegStart = "\xFF\xD8\xFF";

// Feeds one of the toolkit's decoders, and stops it before it takes memory for a picture that is too large.
class Decoder {
 public:
  Decoder(const char* format, int64_t most)
      : loader_(gdk_pixbuf_loader_new_with_type(format, nullptr)), most_(most) {
    if (!loader_) throw Failure(std::string("pictures of the kind \"") + format + "\" can't be read here");
    g_signal_connect(loader_, "size-prepared", G_CALLBACK(SizePrepared), this);
    g_signal_connect(loader_, "area-updated", G_CALLBACK(AreaUpdated), this);
  }
  Decoder(const Decoder&) = delete;
  ~Decoder() {
    Close();
    g_object_unref(loader_);
  }

  Picture Decode(std::string_view content) {
    bytes_ = static_cast<int64_t>(content.size());
    // In pieces, so that the check of the size comes first.
    for (size_t at = 0; at < content.size(); at += PieceBytes) {
      const std::string_view piece = content.substr(at, PieceBytes);
      const bool fine = gdk_pixbuf_loader_write(loader_, reinterpret_cast<const guchar*>(piece.data()),
                                                piece.size(), nullptr);
      if (too_large_)
        throw Failure("it claims more pixels than it can hold, or more than there is room for, " +
                      std::to_string(most_));
      if (!fine) throw Failure("it is damaged");
    }
    GdkPixbuf* pixels = Close() ? gdk_pixbuf_loader_get_pixbuf(loader_) : nullptr;
    if (!pixels || rows_ < gdk_pixbuf_get_height(pixels)) throw Failure("it is cut short");
    return ToPicture(pixels);
  }

 private:
  static constexpr size_t PieceBytes = 16 * 1024;

  static void SizePrepared(GdkPixbufLoader* loader, int width, int height, Decoder* self) {
    const int64_t pixels = int64_t{width} * height;
    self->too_large_ = pixels > self->most_ || pixels / MostPixelsToAByte > self->bytes_;
    if (self->too_large_) gdk_pixbuf_loader_set_size(loader, 0, 0);
  }
  static void AreaUpdated(GdkPixbufLoader*, int, int y, int, int height, Decoder* self) {
    self->rows_ = std::max(self->rows_, y + height);
  }

  bool Close() {
    if (closed_) return true;
    closed_ = true;
    return gdk_pixbuf_loader_close(loader_, nullptr);
  }

  static Picture ToPicture(GdkPixbuf* pixels) {
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->Width = gdk_pixbuf_get_width(pixels);
    bitmap->Height = gdk_pixbuf_get_height(pixels);
    bitmap->Pixels.resize(static_cast<size_t>(bitmap->Width) * static_cast<size_t>(bitmap->Height));
    const int channels = gdk_pixbuf_get_n_channels(pixels);
    const auto stride = static_cast<size_t>(gdk_pixbuf_get_rowstride(pixels));
    uint32_t* to = bitmap->Pixels.data();
    for (int y = 0; y < bitmap->Height; ++y) {
      const guint8* from = gdk_pixbuf_read_pixels(pixels) + static_cast<size_t>(y) * stride;
      for (int x = 0; x < bitmap->Width; ++x, from += channels)
        *to++ = 0xFF000000u | static_cast<uint32_t>(from[0] << 16 | from[1] << 8 | from[2]);
    }
    return bitmap;
  }

  GdkPixbufLoader* loader_;
  int64_t most_;       // pixels that are wanted
  int64_t bytes_ = 0;  // of the file
  bool too_large_ = false, closed_ = false;
  int rows_ = 0;  // that have been decoded, from the top
};

// Whether the chunks of a PNG file go on to its last one: the decoder takes what there is.
bool PngIsWhole(std::string_view content) {
  constexpr size_t around = 12;  // length, kind and check sum of a chunk
  for (size_t at = PngStart.size(); content.size() - at >= around;) {
    if (content.substr(at + 4, 4) == "IEND") return true;
    size_t length = 0;
    for (size_t i = 0; i < 4; ++i) length = length << 8 | static_cast<uint8_t>(content[at + i]);
    if (length > content.size() - at - around) return false;
    at += around + length;
  }
  return false;
}

// Whether an end follows the last scan of a JPEG file. A preview inside the file has an end of its own,
// before that scan.
bool JpegIsWhole(std::string_view content) {
  const size_t end = content.rfind("\xFF\xD9"), scan = content.rfind("\xFF\xDA");
  return end != content.npos && scan != content.npos && end > scan;
}

Picture Decode(std::string_view content, int64_t most) {
  if (content.starts_with(BitmapStart)) return BitmapFile::Decode(content, most);
  const bool jpeg = content.starts_with(JpegStart);
  if (!jpeg && !content.starts_with(PngStart)) throw Failure("it is no BMP, PNG or JPEG picture");
  if (!(jpeg ? JpegIsWhole(content) : PngIsWhole(content))) throw Failure("it is cut short");
  return Decoder(jpeg ? "jpeg" : "png", most).Decode(content);
}

// A file that is open for reading.
class File {
 public:
  // Without waiting for whoever writes into a pipe.
  explicit File(const std::string& path) : file_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (file_ < 0) throw Failure(std::strerror(errno));
  }
  File(const File&) = delete;
  ~File() { ::close(file_); }

  size_t Bytes() const {
    struct stat status {};
    if (::fstat(file_, &status) != 0) throw Failure(std::strerror(errno));
    if (!S_ISREG(status.st_mode)) throw Failure("it is no file");
    if (status.st_size == 0) throw Failure("it is empty");
    if (status.st_size > MaximumFileBytes) throw Failure("the file is too large");
    return static_cast<size_t>(status.st_size);
  }

  // Appends up to so many bytes.
  void Read(std::string& content, size_t bytes) {
    const size_t had = content.size();
    content.resize(had + bytes);
    size_t got = 0;
    while (got < bytes) {
      const ssize_t now = ::read(file_, content.data() + had + got, bytes - got);
      if (now < 0 && errno == EINTR) continue;
      if (now < 0) throw Failure(std::strerror(errno));
      if (now == 0) break;
      got += static_cast<size_t>(now);
    }
    content.resize(had + got);
  }

 private:
  int file_;
};

// The part of a file that its picture may lie in. A file that is none is known by its first bytes.
std::string ReadPictureFile(const std::string& path, int64_t most) {
  File file(path);
  const size_t bytes = file.Bytes();
  std::string content;
  file.Read(content, std::min(bytes, BitmapFile::HeaderBytes));
  if (content.starts_with(BitmapStart)) {
    const size_t wanted = BitmapFile::Check(content, bytes, most);
    file.Read(content, wanted - std::min(wanted, content.size()));
  } else if (content.starts_with(PngStart) || content.starts_with(JpegStart)) {
    file.Read(content, bytes - content.size());
  }
  return content;
}

[[noreturn]] void Fail(const std::string& name, const Failure& reason) {
  throw Failure("The picture \"" + name + "\" can't be loaded: " + reason.what());
}

}  // namespace

Picture LoadPictureFile(const std::string& path, int64_t most) {
  const std::string host = HostPath(path);
  try {
    return Decode(ReadPictureFile(host, most), most);
  } catch (const Failure& reason) {
    Fail(host, reason);
  } catch (const std::bad_alloc&) {
    Fail(host, Failure("there is not enough memory for it"));
  }
}

Picture LoadPictureResource(const std::string& path) {
  GBytes* bytes = g_resources_lookup_data(path.c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr);
  if (!bytes) Fail(path, Failure("it is not built in"));
  const std::unique_ptr<GBytes, decltype(&g_bytes_unref)> guard(bytes, &g_bytes_unref);
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
  try {
    return Decode({data, size}, MaximumPixels);
  } catch (const Failure& reason) {
    Fail(path, reason);
  }
}
