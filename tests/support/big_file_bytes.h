#pragma once

// Big files for tests, byte by byte.

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/byte_writer.h"

namespace footlight::test {

inline std::string int32Bytes(std::int64_t value) {
  ByteWriter out;
  out.number(value, 4);
  return {reinterpret_cast<const char*>(out.written().data()), out.size()};
}

inline std::string textBytes(std::string_view text) {
  return int32Bytes(static_cast<std::int64_t>(text.size())) + std::string(text);
}

// Everything before the root entry.
inline std::string headBytes(std::string_view name, int totalSize, int files, int folders) {
  return textBytes(name) + textBytes("\\") + int32Bytes(totalSize) + std::string(16, '\0') +
         int32Bytes(files) + int32Bytes(folders);
}

// An entry without what is in it.
inline std::string entryBytes(std::string_view name, std::int64_t files, std::int64_t folders) {
  return textBytes(name) + int32Bytes(files) + int32Bytes(folders);
}

inline std::string recordBytes(std::string_view name, std::int64_t offset, std::int64_t size) {
  return textBytes(name) + int32Bytes(offset) + std::string(8, '\0') + int32Bytes(size);
}

}  // namespace footlight::test
