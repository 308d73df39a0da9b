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

bool writeFile(const std::string& name, std::span<const std::byte> bytes) {
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

}  // namespace footlight::image
