#include "run.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "foreign.h"
#include "foundation/limits.h"
#include "machine_file.h"
#include "platform/posix/atomic_file.h"

namespace footlight::image {

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::byte>;

std::string extensionOf(const std::string& name) {
  std::string extension = fs::path(name).extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

Outcome failure(const std::string& file, const std::string& why) { return {file + ": " + why, {}}; }

std::optional<Picture> read(const Bytes& file, const std::string& extension, std::string* why) {
  return isForeign(extension) ? readForeign(file, extension, why) : readPicture(file, why);
}

// Each layer as NAME.img in the folder, and layers.cnv with the lines that show them.
Outcome writeLayers(const Options& options, const std::vector<Layer>& layers) {
  const fs::path folder(options.output);
  std::string why;
  for (const Layer& layer : layers) {
    const auto bytes = toImg(layer.picture, options.form, &why);
    std::string name = layer.name + ".img";
    std::ranges::transform(name, name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (bytes) why = platform::writeAtomically((folder / name).string(), *bytes);
    if (!why.empty()) return failure((folder / name).string(), why);
  }
  const std::string text = definitionOf(layers);
  const auto* letters = reinterpret_cast<const std::byte*>(text.data());
  why = platform::writeAtomically((folder / "layers.cnv").string(), Bytes(letters, letters + text.size()));
  return why.empty() ? Outcome{} : failure((folder / "layers.cnv").string(), why);
}

Outcome runLayers(const Options& options, const Bytes& input) {
  std::string why;
  const auto layers = readLayers(input, &why);
  if (!layers) return failure(options.input, why);
  if (!options.isInfo) return writeLayers(options, *layers);
  std::string info;
  for (const Layer& layer : *layers) {
    const CXPoint at = layer.picture.position;
    info += (info.empty() ? "" : "\n") + options.input + ": " + layer.name + ": " + describe(layer.picture) +
            ", at " + std::to_string(at.x) + " " + std::to_string(at.y);
  }
  return {{}, info};
}

}  // namespace

Outcome run(const Options& options) {
  const std::string extension = extensionOf(options.output);
  const std::string inputExtension = extensionOf(options.input);
  const bool isLayered = inputExtension == ".psd";
  if (!isLayered && !options.output.empty() && extension != ".img" && extension != ".png")
    return failure(options.output, "only files that end in .img or .png are written");
  std::string why;
  const std::optional<Bytes> input = readFile(options.input, limits::kPictureFileBytes, &why);
  if (input && isLayered) return runLayers(options, *input);
  std::optional<Picture> picture = input ? read(*input, inputExtension, &why) : std::nullopt;
  if (!picture) return failure(options.input, why);
  if (options.isInfo) return {{}, options.input + ": " + describe(*picture)};
  if (options.position) picture->position = *options.position;
  const std::optional<Bytes> output =
      extension == ".img" ? toImg(*picture, options.form, &why) : toPng(*picture, &why);
  if (!output) return failure(options.input, why);
  why = platform::writeAtomically(options.output, *output);
  return why.empty() ? Outcome{} : failure(options.output, why);
}

}  // namespace footlight::image
