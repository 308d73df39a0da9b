// Loading pictures of 800x600 from the disk, with all that belongs to it, beside the decoder library alone on
// bytes that are in memory already.

#include <benchmark/benchmark.h>
// libjpeg's header wants these before it.
#include <cstddef>
#include <cstdio>
//
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <jpeglib.h>
#include <lzo/lzo1x.h>
#include <random>
#include <string>
#include <vector>

#include "convert.h"
#include "gfx/image.h"
#include "platform/headless/headless_platform.h"
#include "platform/posix/file_system.h"
#include "ratio_reporter.h"

namespace footlight {

namespace {

using Bytes = std::vector<std::byte>;

constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

// A sky, hills with grain on them, flat shapes with outlines, and soft glows with an alpha plane.
image::Picture drawing() {
  image::Picture picture;
  picture.pixels = {kWidth, kHeight, std::vector<std::uint32_t>(kPixels)};
  std::mt19937 random(1);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const double hill = 330 + 60 * std::sin(x / 90.0) + 25 * std::sin(x / 23.0);
      const int grain = static_cast<int>(random() % 13);
      std::uint32_t red = 60 + y / 4, green = 110 + y / 5, blue = 200;
      if (y > hill) {
        red = 50 + grain * 3 + y / 12;
        green = 90 + grain * 5 + static_cast<std::uint32_t>(20 * std::sin(x / 7.0 + y / 11.0));
        blue = 40 + grain * 2;
      }
      if ((x / 100 + y / 75) % 5 == 0 && x % 100 < 60 && y % 75 < 50)
        red = green = blue = x % 100 < 2 ? 20 : 180;
      const double glow = std::hypot(x - 400, y - 300) / 2;
      const auto alpha = static_cast<std::uint32_t>(glow < 100 ? 255 : std::max(0.0, 355 - glow));
      picture.pixels.pixels[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)] =
          alpha << 24 | red << 16 | green << 8 | blue;
    }
  }
  return picture;
}

Bytes imgOf(_compression packing, image::AlphaPlane alpha) {
  std::string why;
  const auto file = image::toImg(drawing(), {.packing = packing, .alpha = alpha}, &why);
  if (!file) fail(why.c_str());
  return *file;
}

struct Work {
  const char* name;
  const char* fileName;
  Bytes img;       // the whole file
  Bytes contents;  // what stands in the game's folder
};

// The block at an offset of an IMG file: its stream, and how much it unpacks to.
struct Block {
  std::span<const std::byte> stream;
  std::size_t unpacked;
};

std::uint32_t numberAt(std::span<const std::byte> bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 4; i > 0; --i)
    number = number << 8 | std::to_integer<std::uint32_t>(bytes[at + i - 1]);
  return number;
}

std::vector<Block> blocksOf(std::span<const std::byte> file) {
  std::vector<Block> blocks;
  for (std::size_t at = 40; at < file.size();) {
    const std::size_t packed = numberAt(file, at + 4);
    blocks.push_back({file.subspan(at + 8, packed), numberAt(file, at)});
    at += 8 + packed;
  }
  return blocks;
}

void loadByEngine(benchmark::State& state, const Work& work) {
  for (auto _ : state) {
    CImage image(nullptr);
    if (image.Load(work.fileName, true) != 0 || image.pixels().size() != kPixels * 2) fail(work.name);
    benchmark::DoNotOptimize(image.pixels().bytes().data());
  }
}

void decodeByLzo(benchmark::State& state, const Work& work) {
  const std::vector<Block> blocks = blocksOf(work.img);
  Bytes out(kPixels * 2);
  for (auto _ : state) {
    for (const Block& block : blocks) {
      lzo_uint size = out.size();
      lzo1x_decompress_safe(reinterpret_cast<const unsigned char*>(block.stream.data()), block.stream.size(),
                            reinterpret_cast<unsigned char*>(out.data()), &size, nullptr);
      if (size != block.unpacked) fail(work.name);
      benchmark::DoNotOptimize(out.data());
    }
  }
}

void decodeByLibjpeg(benchmark::State& state, const Work& work) {
  Bytes out(kPixels * 3);
  for (auto _ : state) {
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(work.contents.data()), work.contents.size());
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_RGB;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
      auto* row = reinterpret_cast<JSAMPLE*>(out.data()) + std::size_t{info.output_scanline} * kWidth * 3;
      jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    benchmark::DoNotOptimize(out.data());
  }
}

void write(const Work& work) {
  std::ofstream file(work.fileName, std::ios::binary);
  file.write(reinterpret_cast<const char*>(work.contents.data()),
             static_cast<std::streamsize>(work.contents.size()));
  if (!file.flush()) fail(work.fileName);
}

// The colour data of an IMG file with JPEG colours are a whole JPEG file.
Bytes jpegOf(const Bytes& img) { return {img.begin() + 40, img.end()}; }

std::vector<Work> works() {
  const Bytes lzo = imgOf(_compression::lzw, image::AlphaPlane::never);
  const Bytes alpha = imgOf(_compression::lzw, image::AlphaPlane::always);
  const Bytes jpeg = imgOf(_compression::jpeg, image::AlphaPlane::never);
  return {{"LZO picture", "lzo.img", lzo, lzo},
          {"LZO picture with alpha", "alpha.img", alpha, alpha},
          {"JPEG picture", "jpeg.jpg", jpeg, jpegOf(jpeg)}};
}

}  // namespace

}  // namespace footlight

int main(int count, char** words) {
  using namespace footlight;
  namespace fs = std::filesystem;
  std::string folder = (fs::temp_directory_path() / "footlight-bench-XXXXXX").string();
  if (::mkdtemp(folder.data()) == nullptr || lzo_init() != LZO_E_OK) fail("no place to work in");
  fs::current_path(folder);
  platform::HeadlessPlatform machine({}, std::make_unique<platform::PosixFileSystem>("."));
  platform::use(&machine);
  const std::vector<Work> all = works();
  for (const Work& work : all) {
    write(work);
    std::printf("%s: %zu bytes for %zu\n", work.name, work.contents.size(), kPixels * 2);
    const bool isJpeg = std::string(work.fileName).ends_with(".jpg");
    const auto add = [&work](const char* who, void (*run)(benchmark::State&, const Work&)) {
      benchmark::RegisterBenchmark((std::string(who) + "/" + work.name).c_str(), run, work)
          ->Unit(benchmark::kMicrosecond);
    };
    add("engine", loadByEngine);
    add(isJpeg ? "libjpeg" : "liblzo2", isJpeg ? decodeByLibjpeg : decodeByLzo);
  }
  const int status = bench::runAll(count, words);
  platform::use(nullptr);
  fs::remove_all(folder);
  return status;
}
