#include "gfx/jpeg.h"

// libjpeg's header wants these before it.
#include <cstddef>
#include <cstdio>
//
#include <algorithm>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <jpeglib.h>
#include <utility>

#include "files/file.h"
#include "foundation/limits.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

constexpr long kMostWarnings = 1000;
constexpr int kMostScans = 256;

// Four bytes for each pixel, the last one of no meaning: easier to pack than three.
constexpr J_COLOR_SPACE kRowColours = JCS_EXT_RGBX;
constexpr int kRowComponents = 4;

constexpr std::uint32_t pixel15(std::uint32_t p) {
  return (p & 0xF8) << 7 | (p >> 6 & 0x3E0) | (p >> 19 & 0x1F);
}
constexpr std::uint32_t pixel16(std::uint32_t p) {
  return (p & 0xF8) << 8 | (p >> 5 & 0x7E0) | (p >> 19 & 0x1F);
}

// Two at a time, so that the loop works on whole 32-bit lanes all through.
template <std::uint32_t (*Pixel)(std::uint32_t)>
[[gnu::always_inline]] inline void packPixels(const std::uint32_t* row, std::uint16_t* out,
                                              std::size_t count) {
  for (std::size_t i = 0; i + 1 < count; i += 2) {
    const std::uint32_t pair = Pixel(row[i]) | Pixel(row[i + 1]) << 16;
    std::memcpy(out + i, &pair, sizeof pair);
  }
  if (count % 2 != 0) out[count - 1] = static_cast<std::uint16_t>(Pixel(row[count - 1]));
}

using PackRow = void (*)(const std::uint32_t*, std::uint16_t*, std::size_t);

template <std::uint32_t (*Pixel)(std::uint32_t)>
void packRow(const std::uint32_t* row, std::uint16_t* out, std::size_t count) {
  packPixels<Pixel>(row, out, count);
}

#if defined(__x86_64__)
template <std::uint32_t (*Pixel)(std::uint32_t)>
[[gnu::target("avx2")]] void packRowWide(const std::uint32_t* row, std::uint16_t* out, std::size_t count) {
  packPixels<Pixel>(row, out, count);
}
#endif

template <std::uint32_t (*Pixel)(std::uint32_t)>
PackRow widestPackRow() {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) return packRowWide<Pixel>;
#endif
  return packRow<Pixel>;
}

}  // namespace

// What the library works with. A mistake jumps back into `guarded`, over functions of the library and `work`
// functions only: these hold nothing that must be destroyed.
struct JPEG::Library {
  jpeg_decompress_struct info{};
  jpeg_error_mgr errors{};
  jpeg_progress_mgr progress{};
  std::jmp_buf escape{};
  char message[JMSG_LENGTH_MAX] = {};

  // What the work takes and gives.
  std::span<const std::byte> data;
  std::uint32_t* row = nullptr;     // as it comes from the library
  std::uint16_t* pixels = nullptr;  // the same, packed
  std::vector<std::byte>* out =
      nullptr;  // all rows; has room for them, so that nothing is moved or filled first
  PackRow pack = packRow<pixel16>;
  JpegAllowance* allowance = nullptr;
  int scans = 0;  // that the allowance was asked for

  Library();
  ~Library() { jpeg_destroy_decompress(&info); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  [[noreturn]] void giveUp(const char* why);
  static Library& of(j_common_ptr info) { return *static_cast<Library*>(info->client_data); }
  void countScans();
  static void prepare(Library& library);
  static void readRows(Library& library);
};

namespace {

// False when the work came upon a mistake.
template <class Library>
bool guarded(Library& library, void (*work)(Library&)) {
  if (setjmp(library.escape) != 0) return false;
  work(library);
  return true;
}

}  // namespace

JPEG::Library::Library() {
  info.err = jpeg_std_error(&errors);
  info.client_data = this;
  errors.error_exit = [](j_common_ptr failed) {
    failed->err->format_message(failed, of(failed).message);
    std::longjmp(of(failed).escape, 1);
  };
  errors.emit_message = [](j_common_ptr warned, int level) {
    if (level < 0 && ++warned->err->num_warnings > kMostWarnings) of(warned).giveUp("too many faults");
  };
  progress.progress_monitor = [](j_common_ptr working) { of(working).countScans(); };
}

void JPEG::Library::giveUp(const char* why) {
  std::snprintf(message, sizeof message, "%s", why);
  std::longjmp(escape, 1);
}

void JPEG::Library::countScans() {
  if (info.input_scan_number > kMostScans) giveUp("too many scans");
  const int begun = info.input_scan_number - std::exchange(scans, info.input_scan_number);
  const std::int64_t area = std::int64_t{info.image_width} * info.image_height;
  if (begun > 0 && !allowance->take(area * begun)) giveUp("the file has too many pixels and scans");
}

void JPEG::Library::prepare(Library& library) {
  jpeg_decompress_struct& info = library.info;
  jpeg_create_decompress(&info);
  info.progress = &library.progress;
  jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(library.data.data()), library.data.size());
  jpeg_read_header(&info, TRUE);
  if (!limits::isPictureSize(info.image_width, info.image_height)) library.giveUp("the picture is too large");
  info.out_color_space = kRowColours;
  jpeg_start_decompress(&info);
  if (info.output_components != kRowComponents) library.giveUp("the picture has no RGB colours");
}

void JPEG::Library::readRows(Library& library) {
  jpeg_decompress_struct& info = library.info;
  auto* row = reinterpret_cast<JSAMPLE*>(library.row);
  const auto* packed = reinterpret_cast<const std::byte*>(library.pixels);
  while (info.output_scanline < info.output_height) {
    if (jpeg_read_scanlines(&info, &row, 1) != 1) return;
    library.pack(library.row, library.pixels, info.output_width);
    library.out->insert(library.out->end(), packed, packed + std::size_t{info.output_width} * 2);
  }
  jpeg_finish_decompress(&info);
}

JPEG::JPEG(CWindow* window, const CXString& fileName) {
  CFile file(window, fileName, CFile::kReadBinary);
  auto bytes = file.readRest(limits::kPictureFileBytes);
  if (!file.isOpen() || !bytes) {
    fail("the file cannot be read");
    return;
  }
  file_ = std::move(*bytes);
  open(file_, ownAllowance_);
}

JPEG::JPEG(std::span<const std::byte> data, JpegAllowance& allowance) { open(data, allowance); }

JPEG::JPEG(std::span<const std::byte> data) { open(data, ownAllowance_); }

JPEG::~JPEG() = default;

void JPEG::open(std::span<const std::byte> data, JpegAllowance& allowance) {
  library_ = std::make_unique<Library>();
  library_->allowance = &allowance;
  library_->data = data;
  if (!guarded(*library_, Library::prepare)) {
    fail(library_->message);
    return;
  }
  width_ = static_cast<int>(library_->info.output_width);
  height_ = static_cast<int>(library_->info.output_height);
}

void JPEG::fail(const std::string& why) {
  why_ = "no JPEG picture that can be read: " + why;
  width_ = height_ = 0;
  library_.reset();
  setErrorCode(CFile::kNotFound);
}

std::vector<std::byte> JPEG::decompress(int bpp) {
  if (library_ == nullptr) return {};
  const auto width = static_cast<std::size_t>(width_);
  const std::size_t size = width * static_cast<std::size_t>(height_) * 2;
  std::vector<std::uint32_t> row(width);
  std::vector<std::uint16_t> packed(width);
  std::vector<std::byte> pixels;
  pixels.reserve(size);
  library_->row = row.data();
  library_->pixels = packed.data();
  library_->out = &pixels;
  library_->pack = bpp == 15 ? widestPackRow<pixel15>() : widestPackRow<pixel16>();
  if (!guarded(*library_, Library::readRows)) {
    fail(library_->message);
    return {};
  }
  library_.reset();
  pixels.resize(size);
  return pixels;
}

std::vector<std::byte> unpackJpeg(std::span<const std::byte> data, CXSize size, int bpp,
                                  JpegAllowance& allowance, std::string* why) {
  JPEG picture(data, allowance);
  const CXSize found(picture.getWidth(), picture.getHeight());
  std::vector<std::byte> pixels = picture.decompress(bpp);
  *why = picture.why();
  if (pixels.empty() || found == size) return pixels;
  std::vector<std::byte> fitted(static_cast<std::size_t>(get_data_size(size.width, size.height, bpp)));
  const auto rowBytes = static_cast<std::ptrdiff_t>(std::min(size.width, found.width)) * 2;
  for (std::ptrdiff_t y = 0; y < std::min(size.height, found.height); ++y) {
    std::copy_n(pixels.begin() + y * found.width * 2, rowBytes, fitted.begin() + y * size.width * 2);
  }
  return fitted;
}

}  // namespace footlight
