// The binary form of a level: its part of "application.bin", and its own file.
//
// The file holds the texts of DLLS, BACKGROUND and MUSIC, the number of objects, and of each object the
// number of its type and what its `serialize` writes.

#include <algorithm>

#include "app/mc_application.h"
#include "app/mc_scene.h"
#include "files/archive.h"
#include "files/file.h"
#include "gfx/window.h"
#include "objects/system/mc_cnv_loader.h"
#include "objects/system/mc_system.h"
#include "script/mc_behaviour.h"
#include "script/mc_runner.h"
#include "script/melement.h"

namespace footlight {

namespace {

// The types that are read back; what modules make comes beside them.
constexpr int kRead[] = {1,    2,    3,    4,    10,   11,   12,   13,   100,  101,  103,  2000,
                         2001, 2002, 2004, 2005, 2006, 2007, 2008, 2009, 2011, 2012, 2013, 2014,
                         2015, 2016, 2017, 2018, 2019, 2020, 2021, 2022, 3000, 3001};
// The levels, and what the application makes for itself. What code makes of itself is left out too.
constexpr int kLeftOut[] = {type::kApplication, type::kEpisode, type::kScene,
                            type::kRandom,      type::kSystem,  type::kCnvLoader};

bool isRead(int type) { return std::ranges::binary_search(kRead, type); }
bool isLeftOut(CMC_Object& object) {
  const auto* behaviour = object_cast<CMC_Behaviour>(&object);
  if (behaviour != nullptr && behaviour->isMadeByCode()) return true;
  return std::ranges::find(kLeftOut, object.getType()) != std::end(kLeftOut);
}

}  // namespace

void CMC_Scene::takeLevel(const CMC_Scene& other) {
  setName(other.getName());
  path_ = other.path_;
  dlls_ = other.dlls_;
  background_ = other.background_;
  music_ = other.music_;
  bound_ = other.bound_;
}

void CMC_Scene::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  if (!archive.isStoring()) {
    bound_ = storedBindings();
    removeAllBehaviours();
  }
  archive.pass(path_);
  if (archive.isStoring() && !storeFile()) archive.fail();
}

void CMC_Scene::passHead(CXArchive& archive) {
  for (CXString* text : {&dlls_, &background_, &music_}) archive.pass(*text);
}

// Storing

// What nobody reads back comes last, so that all the others are there.
bool CMC_Scene::storeFile() {
  enterDefinitionFolder();
  CXArchive archive(getWindow(), CFile::getCurrentDirectory() + getName() + ".bin");
  passHead(archive);
  archive.store(getElementsNo());
  std::vector<Ref<CMC_Object>> stored = snapshot();
  std::erase_if(stored, [](const auto& object) { return isLeftOut(*object); });
  std::stable_partition(stored.begin(), stored.end(),
                        [](const auto& object) { return isRead(object->getType()); });
  for (const auto& object : stored) {
    const CXString word = typeToString(object->getType());
    if (!isRead(object->getType()) && diagnose::isOn())
      diagnose::report(diagnose::Group::file, object->getName(), "",
                       "only a module can read a " + word.str() + " back from the binary form",
                       object->origin());
    archive.store(object->getType());
    object->serialize(archive);
  }
  return archive.Close();
}

void CMC_Scene::silence() {
  for (const Ref<CMC_Object>& object : snapshot()) {
    if (!isOwnedElsewhere(object.get())) object->removeAllBehaviours();
  }
  removeAllBehaviours();
}

void CMC_Scene::endQuietly() {
  silence();
  CMC_ObjectsContainer::unload();
  while (!monitored_.empty()) removeMonitorCollisions(monitored_.back().get(), nullptr);
  doneDLLs();
}

// Reading

void CMC_Scene::readHead() {
  enterDefinitionFolder();
  CFile file(getWindow(), definitionName(), CFile::kReadBinary);
  if (!file.isOpen()) return;
  CXArchive archive(file);
  passHead(archive);
  isHeadRead_ = true;
}

void CMC_Scene::loadBinary() {
  CFile file(getWindow(), definitionName(), CFile::kReadBinary);
  if (!file.isOpen()) return;
  CXArchive archive(file);
  CXString passed;
  for (int i = 0; i < 3; ++i) archive.pass(passed);  // known since `readHead`
  int count = 0;
  archive.pass(count);
  std::vector<Adopted> adopted;
  std::size_t at = archive.position();
  bool fits = !archive.hasFailed() && count >= 0;
  // Reports name an object by its number in the file.
  Origin place{diagnose::internFile(file.getFileName()), 0};
  while (fits && place.line < count && archive.left() > 0) {
    at = archive.position();
    ++place.line;
    fits = readObject(archive, adopted, place);
  }
  if (!fits)
    reportMisfit(file.getFileName(), archive.hasFailed() ? archive.position() : at, getName() + ".cnv");
  bindRead(adopted);
}

// False when nobody knows what comes next, or it does not fit.
bool CMC_Scene::readObject(CXArchive& archive, std::vector<Adopted>& adopted, Origin place) {
  int number = 0;
  archive.pass(number);
  CMC_Object* made = makeNext(archive, number, place);
  if (made == nullptr || archive.hasFailed()) {
    CMC_Object::destroy(made);
    return false;
  }
  const ScriptType* type = findType(number);
  CMC_Object* existing =
      type != nullptr && type->isOnceAChain && adoptsExisting() ? getObject(type->idWord) : nullptr;
  if (existing != nullptr && existing->getType() == number) {
    adopted.push_back({WeakRef<CMC_Object>(existing), made->storedBindings()});
    CMC_Object::destroy(made);
  } else {
    addObject(made);
  }
  return true;
}

CMC_Object* CMC_Scene::makeNext(CXArchive& archive, int type, Origin place) {
  const diagnose::PlaceGuard guard(place);
  if (!isRead(type)) return serializeEx(archive, type);
  const CMElement nothing("", place);
  const ScriptType* known = findType(type);
  CMC_Object* made = known != nullptr ? makeObject(this, &nothing, *known) : nullptr;
  if (made == nullptr) return nullptr;
  made->setScene(this);
  made->serialize(archive);
  return made;
}

void CMC_Scene::bindRead(const std::vector<Adopted>& adopted) {
  bindStored(bound_, this);
  for (const Ref<CMC_Object>& object : snapshot()) {
    if (!isOwnedElsewhere(object.get())) object->initializeBehaviours(this, nullptr);
  }
  for (const Ref<CMC_Object>& object : snapshot()) {
    auto* behaviour = object_cast<CMC_Behaviour>(object.get());
    if (behaviour == nullptr || behaviour->isDisposed()) continue;
    behaviour->resolveCondition();
    if (behaviour->isBoundInline()) behaviour->init();
  }
  for (const auto& [object, bindings] : adopted) {
    if (object) object->bindStored(bindings, this);
  }
}

void CMC_Scene::reportMisfit(const CXString& binary, std::size_t offset, const CXString& text) {
  if (!diagnose::isOn()) return;
  std::string why = "the binary form does not fit from byte " + std::to_string(offset) + " on";
  if (CFile::canRead(text)) why += "; -forceCNV reads the text form";
  diagnose::report(diagnose::Group::file, binary, "", why);
}

}  // namespace footlight
