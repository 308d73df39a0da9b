// The list of all types, a line each. A type's constant stands at the end of its own source.

#include "objects/all_types.h"

#include <array>

#include "script/type_registry.h"

namespace footlight {

// clang-format off
#define FOOTLIGHT_TYPES(TYPE) \
  TYPE(kIntegerType) \
  TYPE(kStringType) \
  TYPE(kBoolType) \
  TYPE(kDoubleType) \
  TYPE(kVariableType) \
  TYPE(kConditionType) \
  TYPE(kComplexConditionType) \
  TYPE(kExpressionType) \
  TYPE(kBehaviourType) \
  TYPE(kMouseType) \
  TYPE(kKeyboardType) \
  TYPE(kRandomType) \
  TYPE(kCanvasObserverType) \
  TYPE(kApplicationType) \
  TYPE(kEpisodeType) \
  TYPE(kSceneType) \
  TYPE(kAnimoType) \
  TYPE(kButtonType) \
  TYPE(kFontType) \
  TYPE(kSequenceType) \
  TYPE(kSoundType) \
  TYPE(kTextType) \
  TYPE(kTimerType) \
  TYPE(kImageType) \
  TYPE(kEditBoxType) \
  TYPE(kNetPeerType) \
  TYPE(kNetServerType) \
  TYPE(kNetClientType) \
  TYPE(kDialogType) \
  TYPE(kFilterType) \
  TYPE(kStaticFilterType) \
  TYPE(kVectorType) \
  TYPE(kPathType) \
  TYPE(kFifoType) \
  TYPE(kLifoType) \
  TYPE(kCanvasType) \
  TYPE(kPatternType) \
  TYPE(kScrollType) \
  TYPE(kJoystickType) \
  TYPE(kMovieType) \
  TYPE(kGrBufferType) \
  TYPE(kGroupType) \
  TYPE(kArrayType) \
  TYPE(kStructureType) \
  TYPE(kDatabaseType) \
  TYPE(kClassType) \
  TYPE(kVirtualGraphicsObjectType) \
  TYPE(kMultiArrayType) \
  TYPE(kColouringType) \
  TYPE(kMatrixType) \
  TYPE(kSwfType) \
  TYPE(kSystemType) \
  TYPE(kCnvLoaderType)

// clang-format on

#define FOOTLIGHT_DECLARE(name) extern const ScriptType name;
FOOTLIGHT_TYPES(FOOTLIGHT_DECLARE)
#undef FOOTLIGHT_DECLARE

void installAllTypes() {
  if (!allTypes().empty()) return;
#define FOOTLIGHT_ENTER(name) &name,
  static constexpr std::array kTypes = {FOOTLIGHT_TYPES(FOOTLIGHT_ENTER)};
#undef FOOTLIGHT_ENTER
  installTypes(kTypes);
}

}  // namespace footlight
