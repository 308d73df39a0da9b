#include "script/inline_code.h"

#include "script/code_text.h"
#include "script/mc_objects_container.h"

namespace footlight {

Ref<CMC_Behaviour> CMC_InlineCode::makeBehaviour(CMC_ObjectsContainer* scope, const char* prefix,
                                                 std::string_view piece, Origin origin) {
  CXString name;
  do {
    name = CXString(prefix) + std::to_string(++number_);
  } while (scope->getObject(name) != nullptr);
  Ref<CMC_Behaviour> made(new CMC_Behaviour(scope, name, code_text::inlineCodeOf(piece), origin));
  made->setMadeByCode();
  made->init();
  scope->addObject(made.get());
  return made;
}

void CMC_InlineCode::end(CMC_Behaviour& behaviour) {
  const Ref<CMC_Behaviour> keep(&behaviour);
  if (behaviour.getScene() != nullptr) behaviour.getScene()->removeObject(&behaviour);
  CMC_Object::destroy(&behaviour);
}

}  // namespace footlight
