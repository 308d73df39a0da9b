#pragma once

// Which child of a node a character of a parameter stands for: 1 to 9 are the first nine, then come the
// letters. Small letters are read one place further than they are written.

namespace footlight::sequence_parameter {

// The place of the child, from 0; below 0 for a character before "1".
constexpr int decode(char character) {
  const int code = static_cast<unsigned char>(character);
  if (code < ':') return code - '1';
  return code <= 'Z' ? code - '8' : code - '>';
}

constexpr char encode(int place) {
  const auto number = static_cast<unsigned>(place);
  if (place < 9) return static_cast<char>('1' + number);
  return static_cast<char>((place < 34 ? '8' : '?') + number);
}

}  // namespace footlight::sequence_parameter
