#pragma once

// Whole files of the machine, by the names that authors type.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace footlight::image {

// Nothing, and the reason in `why`, when the file cannot be read or is longer than `most` bytes.
std::optional<std::vector<std::byte>> readFile(const std::string& name, std::int64_t most, std::string* why);
// Through a file beside the target, so that the old one stays until the new one is whole.
bool writeFile(const std::string& name, std::span<const std::byte> bytes);

}  // namespace footlight::image
