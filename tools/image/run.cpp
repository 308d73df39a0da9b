#include "run.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

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

}  // namespace

Outcome run(const Options& options) {
  const std::string extension = extensionOf(options.output);
  if (!options.output.empty() && extension != ".img" && extension != ".png")
    return failure(options.output, "only files that end in .img or .png are written");
  std::string why;
  const std::optional<Bytes> input = readFile(options.input, limits::kPictureFileBytes, &why);
  std::optional<Picture> picture = input ? readPicture(*input, &why) : std::nullopt;
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
