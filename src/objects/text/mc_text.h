#pragma once

// TEXT: the script's face of a text on the screen. It reads the properties and hands the text the font of a
// FONT object; a FONT that ends leaves it without one.

#include "script/mc_object.h"
#include "text/multiline_text6.h"

namespace footlight {

namespace type {
inline constexpr int kText = 2006;
}

// Nothing raises them.
enum class TextSignal { onCollision = kFirstOwnSignal, onCollisionFinished, count };

class CMC_Text : public CMC_Object {
 public:
  CMC_Text(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Text() override;
  static bool isTypeOf(int type) { return type == type::kText; }

  // Null only once the object has ended.
  CMultilineText6* getText() const { return text_.get(); }
  CGraphicsObject* getGraphic() const override { return getText(); }
  // Of the same font, place and look, and on the screen where this one is.
  std::unique_ptr<CMC_Object> copy() const override;
  // The texts of VJUSTIFY, HJUSTIFY and RECT, the priority on the screen, the name of the FONT, whether it is
  // on the screen, whether it shows, and the text as it is now.
  void serialize(CXArchive& archive) override;

  // The value of LEFT, RIGHT, CENTER, TOP or BOTTOM; of another word `otherwise`.
  static _justify resolveJustify(const CXString& word, _justify otherwise);

 protected:
  void unlink() override;

 private:
  CMC_Text(const CMC_Text& other);
  // Lays the text out by the properties and puts it on the screen.
  void build(const CXString& text, bool toCanvas, int priority, bool visible);
  CXRect area() const;

  CXString vJustify_, hJustify_, rect_, fontName_;
  Owned<CMultilineText6> text_;
};

}  // namespace footlight
