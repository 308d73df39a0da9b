#include "objects/data/mc_path_nodes.h"

#include "files/archive.h"
#include "foundation/depth.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

CMC_PathNodes::CMC_PathNodes(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kPath) {
  if (const auto names = element->getPropertyListValue("NODES")) {
    for (const CXString& name : *names) add(container->getObject(name));
  }
  initializeBehaviours(container, element);
}

void CMC_PathNodes::add(CMC_Object* node) {
  if (node == nullptr) return;
  if (std::ssize(nodes_) >= limits::kArrayElements) {
    limitHit("nodes of a path");
    return;
  }
  nodes_.emplace_back(node);
}

std::vector<CMC_Object*> CMC_PathNodes::nodes() const {
  std::erase_if(nodes_, [](const WeakRef<CMC_Object>& node) { return !node; });
  std::vector<CMC_Object*> live;
  live.reserve(nodes_.size());
  for (const WeakRef<CMC_Object>& node : nodes_) live.push_back(node.get());
  return live;
}

void CMC_PathNodes::serialize(CXArchive& archive) {
  constexpr std::size_t kNameBytes = 4;
  CMC_Object::serialize(archive);
  const std::vector<CMC_Object*> present = nodes();
  const int count = archive.passCount(present.size(), kNameBytes);
  for (int i = 0; i < count && !archive.hasFailed(); ++i) {
    CXString name = archive.isStoring() ? present[static_cast<std::size_t>(i)]->getName() : CXString();
    archive.pass(name);
    if (!archive.isStoring() && getScene() != nullptr) add(getScene()->getObject(name));
  }
}

// A path within itself ends where runs may nest no deeper, or where the text is as long as texts may be.
CXString CMC_PathNodes::toString() const {
  const DepthGuard depth;
  if (!depth) return getName();
  CXString text;
  for (const CMC_Object* node : nodes()) {
    const CXString inner = node->toString();
    if (text.Length() + inner.Length() + 2 > limits::kStringBytes) break;
    text += '[';
    text += inner;
    text += ']';
  }
  return text;
}

namespace {

constexpr std::string_view kDensity = "DENSITY";

Result add(CMC_PathNodes& path, Call& call) {
  path.add(call.namedAny(0));
  return {};
}

Result getNode(CMC_PathNodes& path, Call& call) {
  const auto nodes = path.nodes();
  const int index = call.integer(0);
  const bool isIn = index >= 0 && index < std::ssize(nodes);
  return CMC_VariableFactory::makeString(isIn ? nodes[static_cast<std::size_t>(index)]->getName() : "NULL");
}

Result getSize(CMC_PathNodes& path, Call& /*call*/) { return Number(static_cast<int>(path.nodes().size())); }

Result setProperty(CMC_PathNodes& path, Call& call) {
  if (call.text(0) == kDensity) path.setDensity(call.real(1));
  return {};
}

Result getProperty(CMC_PathNodes& path, Call& call) {
  if (call.text(0) != kDensity) return {};
  return CMC_VariableFactory::makeDouble(path.getDensity());
}

constexpr Property kProperties[] = {
    {"NODES", PropertyKind::list, "", "The names of its nodes, which stand above it in the file."},
};

constexpr Method kMethods[] = {
    {1, "ADD", "node:name", method<add>, "Appends that object."},
    {2, "GETNODE", "index:int -> text", method<getNode>,
     "The name of the node at the index, from 0; \"NULL\" when there is none."},
    {3, "GETSIZE", "-> int", method<getSize>, "How many nodes it has."},
    {4, "SETPROPERTY", "name:text, value:real", method<setProperty>,
     "Sets \"DENSITY\", the only one there is."},
    {5, "GETPROPERTY", "name:text -> real", method<getProperty>, "The value of \"DENSITY\", 1 at first."},
};

}  // namespace

extern constinit const ScriptType kPathType = {
    .number = type::kPath,
    .idWord = "PATH",
    .definitionWord = "PATH",
    .meaning = "Points one after the other.",
    .pass = 6,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_PathNodes>,
};

}  // namespace footlight
