#include "foreign.h"

#include <SDL.h>
#include <algorithm>
#include <cctype>
#include <set>

#include "gfx/jpeg.h"
#include "gfx/psd_format.h"
#include "tga_reader.h"

namespace footlight::image {

namespace {

using View = std::span<const std::byte>;

std::optional<Picture> readJpeg(View file, std::string* why) {
  JPEG jpeg(file);
  const CXSize size(jpeg.getWidth(), jpeg.getHeight());
  ImgPicture plain;
  plain.colour = jpeg.decompress(16);
  *why = jpeg.why();
  if (plain.colour.empty()) return std::nullopt;
  plain.size = size;
  plain.bpp = 16;
  auto picture = unpacked(std::move(plain), why);
  if (picture) picture->bpp = 0;
  return picture;
}

std::optional<Picture> readBmp(View file, std::string* why) {
  SDL_Surface* read = SDL_LoadBMP_RW(SDL_RWFromConstMem(file.data(), static_cast<int>(file.size())), 1);
  SDL_Surface* plain =
      read != nullptr ? SDL_ConvertSurfaceFormat(read, SDL_PIXELFORMAT_ARGB8888, 0) : nullptr;
  const bool fits = plain != nullptr && limits::isPictureSize(plain->w, plain->h);
  std::optional<Picture> picture;
  if (fits) {
    picture.emplace();
    picture->pixels = {plain->w, plain->h, {}};
    for (int y = 0; y < plain->h; ++y) {
      const auto* row = reinterpret_cast<const std::uint32_t*>(static_cast<const std::byte*>(plain->pixels) +
                                                               std::ptrdiff_t{y} * plain->pitch);
      picture->pixels.pixels.insert(picture->pixels.pixels.end(), row, row + plain->w);
    }
    picture->hasAlpha = std::ranges::any_of(picture->pixels.pixels, [](auto p) { return p >> 24 != 255; });
  } else {
    *why = "the BMP picture cannot be read or is over the engine's limits";
  }
  SDL_FreeSurface(plain);
  SDL_FreeSurface(read);
  return picture;
}

std::string nameOf(const std::string& name, std::set<std::string>& taken) {
  std::string word;
  for (const char letter : name) {
    const auto code = static_cast<unsigned char>(letter);
    const bool isPlain = code < 128 && std::isalnum(code) != 0;
    word += isPlain ? static_cast<char>(std::toupper(code)) : '_';
  }
  if (word.empty() || std::isdigit(static_cast<unsigned char>(word.front())) != 0) word = "LAYER" + word;
  std::string unique = word;
  for (int number = 2; !taken.insert(unique).second; ++number) unique = word + "N" + std::to_string(number);
  return unique;
}

Picture pictureOf(const PsdLayer& layer) {
  Picture picture;
  picture.position = layer.rect.LeftTop();
  picture.pixels = {layer.rect.Width(), layer.rect.Height(), {}};
  const std::size_t count =
      static_cast<std::size_t>(layer.rect.Width()) * static_cast<std::size_t>(layer.rect.Height());
  picture.pixels.pixels.assign(count, 0xFF000000);
  for (const PsdChannel& channel : layer.channels) {
    if (channel.id < -1 || channel.id > 2 || channel.plane.size() < count) continue;
    const int shift = channel.id == -1 ? 24 : 16 - 8 * channel.id;
    for (std::size_t i = 0; i < count; ++i) {
      std::uint32_t& pixel = picture.pixels.pixels[i];
      pixel = (pixel & ~(0xFFu << shift)) | std::to_integer<std::uint32_t>(channel.plane[i]) << shift;
    }
    if (channel.id == -1) picture.hasAlpha = true;
  }
  return picture;
}

}  // namespace

bool isForeign(const std::string& extension) {
  return extension == ".tga" || extension == ".bmp" || extension == ".jpg" || extension == ".jpeg";
}

std::optional<Picture> readForeign(View file, const std::string& extension, std::string* why) {
  if (extension == ".tga") return readTgaPicture(file, why);
  if (extension == ".bmp") return readBmp(file, why);
  return readJpeg(file, why);
}

std::optional<std::vector<Layer>> readLayers(View file, std::string* why) {
  const PsdPicture document = readPsd(file);
  std::vector<Layer> layers;
  std::set<std::string> taken;
  for (const PsdLayer& layer : document.layers) {
    const bool isEmpty = !limits::isPictureSize(std::int64_t{layer.rect.right} - layer.rect.left,
                                                std::int64_t{layer.rect.bottom} - layer.rect.top);
    if (!isEmpty) layers.push_back({nameOf(layer.name, taken), pictureOf(layer)});
  }
  if (document.why != nullptr || layers.empty()) {
    *why = document.why != nullptr ? document.why : "the PSD file has no layers with pixels";
    return std::nullopt;
  }
  return layers;
}

std::string definitionOf(const std::vector<Layer>& layers) {
  std::string text;
  int priority = 0;
  for (const Layer& layer : layers) {
    std::string file = layer.name;
    std::ranges::transform(file, file.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    text += "DEF:" + layer.name + "(TYPE=IMAGE|FILENAME=" + file +
            ".img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=" + std::to_string(priority++) + ")\n";
  }
  return text;
}

}  // namespace footlight::image
