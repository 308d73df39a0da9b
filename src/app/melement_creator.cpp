#include "app/melement_creator.h"

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/animo6.h"
#include "gfx/image.h"
#include "script/melement.h"
#include "sequence/sequenced_playable.h"

namespace footlight {

Owned<CXObject> CMElementCreator::createObject(CWindow* window, const CMElement* element) {
  const CXString fileName = element->getPropertyValue("FILENAME");
  if (element->getPropertyValue("TYPE") != "IMAGE" || fileName.IsEmpty()) return nullptr;
  Owned<CImage> image(new CImage(window, fileName));
  image->Visible(element->getPropertyBoolValue("VISIBLE"));
  return image;
}

CPlayable* CMElementCreator::createPlayable(CWindow* window, const CMElement* element, CPlayableTree* tree) {
  const CXString word = element->getPropertyValue("TYPE");
  if (word == "SEQUENCE") return tree->keep(Owned<CSequencedPlayable>(new CSequencedPlayable(window)));
  const CXString fileName = element->getPropertyValue("FILENAME");
  if (word != "ANIMO" || fileName.IsEmpty()) return nullptr;
  auto* animation = tree->keep(Owned<CAnimo6>(new CAnimo6(window, fileName)));
  if (element->getPropertyBoolValue("VISIBLE")) {
    animation->show();
  } else {
    animation->hide();
  }
  return animation;
}

namespace {

class SequenceMaker {
 public:
  SequenceMaker(CWindow* window, CPlayableTree* tree) : window_(window), tree_(tree) {}

  CPlayable* make(const CMElement* element, int depth) {
    if (depth >= limits::kTreeDepth || ++count_ > limits::kSequenceParts) {
      limitHit("parts of a sequence");
      return nullptr;
    }
    CPlayable* playable = CMElementCreator::createPlayable(window_, element, tree_);
    if (playable == nullptr) return nullptr;
    playable->setName(CXString(element->getName()));
    for (const CMElement* child : element->getChildren()) {
      CPlayable* below = make(child, depth + 1);
      if (below == nullptr) continue;
      below->addParent();
      playable->addChild(below);
    }
    return playable;
  }

 private:
  CWindow* window_;
  CPlayableTree* tree_;
  int count_ = 0;
};

}  // namespace

CPlayableTree CMElementCreator::createSequence(CWindow* window, const CMElements& elements,
                                               const CXString& name) {
  CPlayableTree tree;
  const CMElement* element = elements.get(name);
  if (element != nullptr) tree.setRoot(SequenceMaker(window, &tree).make(element, 0));
  return tree;
}

}  // namespace footlight
