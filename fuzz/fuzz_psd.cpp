// A PSD file: its layers are whole, and a file cut short has the same ones up to the cut.

#include "demand.h"
#include "foreign.h"
#include "gfx/psd_format.h"

namespace footlight::fuzz {

namespace {

bool areEqual(const PsdLayer& a, const PsdLayer& b) {
  if (a.rect != b.rect || a.name != b.name || a.channels.size() != b.channels.size()) return false;
  for (std::size_t i = 0; i < a.channels.size(); ++i) {
    if (a.channels[i].id != b.channels[i].id || a.channels[i].plane != b.channels[i].plane) return false;
  }
  return true;
}

void checkPlanes(const PsdLayer& layer) {
  const auto area = std::int64_t{layer.rect.right} - layer.rect.left;
  for (const PsdChannel& channel : layer.channels) {
    const auto size = static_cast<std::int64_t>(channel.plane.size());
    demand(size == 0 || size == area * (std::int64_t{layer.rect.bottom} - layer.rect.top));
  }
}

void checkPsd(std::span<const std::byte> file) {
  const PsdPicture picture = readPsd(file);
  for (const PsdLayer& layer : picture.layers) checkPlanes(layer);
  const PsdPicture cut = readPsd(file.first(file.size() - file.size() / 4));
  demand(cut.layers.size() <= picture.layers.size());
  for (std::size_t i = 0; i < cut.layers.size(); ++i) demand(areEqual(cut.layers[i], picture.layers[i]));
  std::string why;
  const auto layers = image::readLayers(file, &why);
  demand(layers.has_value() == why.empty());
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkPsd(std::as_bytes(std::span(data, size)));
  return 0;
}
