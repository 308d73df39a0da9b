#pragma once

// FONT: a family of fonts for the texts of a scene. Each of its properties that begins with DEF_ is a font
// file: DEF_FAMILY_STYLE_SIZE.

#include "script/mc_object.h"
#include "text/font_collection.h"

namespace footlight {

namespace type {
inline constexpr int kFont = 2002;
}

class CMC_Font : public CMC_Object {
 public:
  CMC_Font(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Font() override;
  static bool isTypeOf(int type) { return type == type::kFont; }

  // Null only once the object has ended.
  CFontCollection* getFont() const { return fonts_.get(); }
  // The family, style and size of each font. The names of their files are not kept: fonts that are read have
  // no letters.
  void serialize(CXArchive& archive) override;
  // The fonts of the FONT object of that name; null when there is none.
  static CFontCollection* fontOf(const CMC_ObjectsContainer* scope, const CXString& name);

 protected:
  void unlink() override;

 private:
  void addFonts(const CMElement& element);

  Owned<CFontCollection> fonts_;
};

}  // namespace footlight
