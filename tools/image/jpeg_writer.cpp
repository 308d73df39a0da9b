#include "jpeg_writer.h"

// libjpeg's header wants these before it.
#include <cstddef>
#include <cstdio>
//
#include <csetjmp>
#include <cstdlib>
#include <jpeglib.h>

namespace footlight::image {

namespace {

constexpr int kFullColours = 90;

struct Library {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  std::jmp_buf escape{};
  int width;
  int height;
  const std::uint32_t* pixels;
  int quality;
  unsigned char* bytes = nullptr;  // the library's, to be freed
  unsigned long size = 0;
};

void pack(Library& library) {
  jpeg_compress_struct& info = library.info;
  jpeg_create_compress(&info);
  jpeg_mem_dest(&info, &library.bytes, &library.size);
  info.image_width = static_cast<JDIMENSION>(library.width);
  info.image_height = static_cast<JDIMENSION>(library.height);
  info.input_components = 4;
  info.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, library.quality, TRUE);
  info.optimize_coding = TRUE;
  if (library.quality >= kFullColours) info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
  jpeg_start_compress(&info, TRUE);
  while (info.next_scanline < info.image_height) {
    const std::uint32_t* row =
        library.pixels + static_cast<std::size_t>(info.next_scanline) * info.image_width;
    auto* samples = reinterpret_cast<JSAMPLE*>(const_cast<std::uint32_t*>(row));
    jpeg_write_scanlines(&info, &samples, 1);
  }
  jpeg_finish_compress(&info);
}

// False when the library came upon a mistake, which jumps back to here.
bool guardedPack(Library& library) {
  if (setjmp(library.escape) != 0) return false;
  pack(library);
  return true;
}

}  // namespace

std::vector<std::byte> encodeJpeg(int width, int height, std::span<const std::uint32_t> pixels, int quality) {
  Library library{.width = width, .height = height, .pixels = pixels.data(), .quality = quality};
  library.info.err = jpeg_std_error(&library.errors);
  library.info.client_data = &library;
  library.errors.error_exit = [](j_common_ptr info) {
    std::longjmp(static_cast<Library*>(info->client_data)->escape, 1);
  };
  library.errors.output_message = [](j_common_ptr) {};
  std::vector<std::byte> out;
  if (guardedPack(library)) {
    const auto* bytes = reinterpret_cast<const std::byte*>(library.bytes);
    out.assign(bytes, bytes + library.size);
  }
  jpeg_destroy_compress(&library.info);
  std::free(library.bytes);
  return out;
}

}  // namespace footlight::image
