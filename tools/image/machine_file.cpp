#include "machine_file.h"

#include <filesystem>
#include <fstream>

namespace footlight::image {

namespace fs = std::filesystem;

std::optional<std::vector<std::byte>> readFile(const std::string& name, std::int64_t most, std::string* why) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(name, error);
  std::ifstream file(name, std::ios::binary);
  if (error || !file) {
    *why = "cannot be read";
    return std::nullopt;
  }
  if (size > static_cast<std::uintmax_t>(most)) {
    *why = "is longer than such a file may be";
    return std::nullopt;
  }
  std::vector<std::byte> bytes(size);
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

}  // namespace footlight::image
