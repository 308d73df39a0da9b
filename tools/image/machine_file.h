#pragma once

// Reads whole files of the machine, by the names that authors type.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace footlight::image {

// Nothing, and the reason in `why`, when the file cannot be read or is longer than `most` bytes.
std::optional<std::vector<std::byte>> readFile(const std::string& name, std::int64_t most, std::string* why);

}  // namespace footlight::image
