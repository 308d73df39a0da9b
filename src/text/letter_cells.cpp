#include "text/letter_cells.h"

#include <algorithm>
#include <limits>

namespace footlight {

namespace {

std::int8_t toTable(int value) { return static_cast<std::int8_t>(std::clamp(value, -128, 127)); }

class Cells {
 public:
  explicit Cells(FntFont& font)
      : font_(font),
        count_(static_cast<int>(font.letters.size())),
        cell_(font.size.width / count_),
        height_(font.size.height) {}

  int count() const { return count_; }
  void clearBorders() {
    for (int i = 0; i < count_; ++i) {
      for (int x = 0; x < cell_; ++x) {
        clear(i, x, 0);
        clear(i, x, height_ - 1);
      }
      for (int y = 0; y < height_; ++y) {
        clear(i, 0, y);
        clear(i, cell_ - 1, y);
      }
    }
  }
  // A letter without a pixel is all empty at its left.
  int emptyLeft(int i) const {
    int x = 0;
    while (x < cell_ && isEmpty(i, x)) ++x;
    return x;
  }
  int emptyRight(int i) const {
    int x = 0;
    while (x < cell_ - emptyLeft(i) && isEmpty(i, cell_ - 1 - x)) ++x;
    return x;
  }
  // How many columns letter b, with its first column, can go under letter a from a's last column on.
  int slide(int a, int leftA, int rightA, int b, int leftB) const {
    int steps = 0;
    for (int x = cell_ - rightA - 1; x >= leftA; --x, ++steps) {
      const Touch touch = touchOf(a, x, b, leftB);
      if (touch == Touch::inRow) return steps;
      if (touch == Touch::inNextRow) return steps + 1;
    }
    return steps;
  }

 private:
  enum class Touch { none, inRow, inNextRow };

  std::size_t place(int i, int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(font_.size.width) +
           static_cast<std::size_t>(i * cell_ + x);
  }
  int alpha(int i, int x, int y) const { return std::to_integer<int>(font_.alpha[place(i, x, y)]); }
  bool isSet(int i, int x, int y) const { return x < cell_ && alpha(i, x, y) > kSetAlpha; }
  void clear(int i, int x, int y) {
    const std::size_t at = place(i, x, y);
    font_.alpha[at] = std::byte{0};
    font_.colour[2 * at] = font_.colour[2 * at + 1] = std::byte{0};
  }
  bool isEmpty(int i, int x) const {
    for (int y = 0; y < height_; ++y) {
      if (alpha(i, x, y) != 0) return false;
    }
    return true;
  }
  // Row by row from the top: what touches first is what counts.
  Touch touchOf(int a, int xA, int b, int xB) const {
    for (int y = 0; y < height_; ++y) {
      if (isSet(a, xA, y) && isSet(b, xB, y)) return Touch::inRow;
      if (y + 1 == height_) break;
      const bool isSlanted =
          (isSet(a, xA, y) && isSet(b, xB, y + 1)) || (isSet(b, xB, y) && isSet(a, xA, y + 1));
      if (isSlanted) return Touch::inNextRow;
    }
    return Touch::none;
  }

  FntFont& font_;
  int count_;
  int cell_;
  int height_;
};

}  // namespace

void measureLetters(FntFont& font) {
  Cells cells(font);
  cells.clearBorders();
  font.left.clear();
  font.right.clear();
  font.kerning.clear();
  for (int i = 0; i < cells.count(); ++i) {
    font.left.push_back(toTable(cells.emptyLeft(i)));
    font.right.push_back(toTable(cells.emptyRight(i)));
  }
  for (int a = 0; a < cells.count(); ++a) {
    const auto before = static_cast<std::size_t>(a);
    for (int b = 0; b < cells.count(); ++b) {
      const int slide =
          cells.slide(a, font.left[before], font.right[before], b, font.left[static_cast<std::size_t>(b)]);
      font.kerning.push_back(toTable(1 - slide));
    }
  }
}

}  // namespace footlight
