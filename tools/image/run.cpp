#include "run.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "foundation/limits.h"

namespace footlight::image {

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::byte>;

std::optional<Bytes> readFile(const std::string& name, std::string* why) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(name, error);
  std::ifstream file(name, std::ios::binary);
  if (error || !file) {
    *why = "cannot be read";
    return std::nullopt;
  }
  if (size > static_cast<std::uintmax_t>(limits::kPictureFileBytes)) {
    *why = "is too long for a picture";
    return std::nullopt;
  }
  Bytes bytes(size);
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

// Through a file beside the target, so that the old one stays until the new one is whole.
bool writeFile(const std::string& name, const Bytes& bytes) {
  const std::string temporary = name + ".part";
  std::error_code error;
  std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (file) {
    fs::rename(temporary, name, error);
    if (!error) return true;
  }
  fs::remove(temporary, error);
  return false;
}

std::string extensionOf(const std::string& name) {
  std::string extension = fs::path(name).extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

Outcome failure(const std::string& file, const std::string& why) { return {file + ": " + why, {}}; }

}  // namespace

Outcome run(const Options& options) {
  const std::string extension = extensionOf(options.output);
  if (!options.output.empty() && extension != ".img" && extension != ".png")
    return failure(options.output, "only files that end in .img or .png are written");
  std::string why;
  const std::optional<Bytes> input = readFile(options.input, &why);
  std::optional<Picture> picture = input ? readPicture(*input, &why) : std::nullopt;
  if (!picture) return failure(options.input, why);
  if (options.isInfo) return {{}, options.input + ": " + describe(*picture)};
  if (options.position) picture->position = *options.position;
  const std::optional<Bytes> output =
      extension == ".img" ? toImg(*picture, options.form, &why) : toPng(*picture, &why);
  if (!output) return failure(options.input, why);
  if (!writeFile(options.output, *output)) return failure(options.output, "cannot be written");
  return {};
}

}  // namespace footlight::image
