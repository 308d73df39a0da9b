#pragma once

// CFontCollection is a family of fonts that are told apart by family, style and size. To whoever asks it for
// letters it is its base font; texts change to another one of it with their codes.
//
// It owns its fonts. They stay until it ends.

#include <vector>

#include "text/simple_font.h"

namespace footlight {

class CFontCollection final : public CSimpleFont6 {
 public:
  explicit CFontCollection(CWindow* window) : CSimpleFont6(window) {}

  // The first one is the base font too, unless there is one.
  void addFont(Owned<CSimpleFont6> font);
  // One of its own; null for none.
  void setBaseFont(CSimpleFont6* font);
  CSimpleFont6* getBaseFont() const { return baseFont_; }
  // The first of that family and style, in any case, and of exactly that size; null when there is none.
  CSimpleFont6* get(const CXString& family, const CXString& style, int size) const;
  // In the order of adding; null outside of the list.
  CSimpleFont6* at(int index) const;
  int indexOf(const CSimpleFont6* font) const;
  int count() const { return static_cast<int>(fonts_.size()); }

  int drawLetter(int x, int y, char previous, char letter) override;
  int getLetterWidth(char previous, char letter) const override;
  int getRealLetterWidth(char letter) const override;
  int Height() const override;
  using CSimpleFont6::SetClippingRect;
  void SetClippingRect(char letter, CXRect rect) override;
  void setColor(int colour) override;
  void SetOpacity(std::uint8_t opacity) override;
  void setDefColor(int colour) override;
  bool isMultifont() const override { return true; }

 private:
  std::vector<Owned<CSimpleFont6>> fonts_;
  CSimpleFont6* baseFont_ = nullptr;  // one of them
};

}  // namespace footlight
