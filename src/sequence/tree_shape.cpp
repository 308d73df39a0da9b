#include "sequence/tree_shape.h"

#include <algorithm>
#include <utility>

#include "foundation/limits.h"

namespace footlight {

namespace {

constexpr int kStepsOfJoin = 4 * limits::kTreeDepth;

}  // namespace

TreeShape::Node* TreeShape::add() { return &nodes_.emplace_back(); }

// Walks upwards, past what lies too high to have the node above it.
bool TreeShape::isAbove(const Node* node, Node* below) {
  ++round_;
  std::vector<Node*> waiting{below};
  while (!waiting.empty()) {
    Node* current = waiting.back();
    waiting.pop_back();
    if (current == node || --steps_ < 0) return true;
    if (std::exchange(current->mark, round_) == round_ || current->depth <= node->depth) continue;
    waiting.insert(waiting.end(), current->parents.begin(), current->parents.end());
  }
  return false;
}

bool TreeShape::join(Node* parent, Node* child) {
  steps_ += kStepsOfJoin;
  if (parent == child || parent->depth + 1 + child->height >= limits::kTreeDepth) return false;
  if (!child->children.empty() && isAbove(child, parent)) return false;
  parent->children.push_back(child);
  child->parents.push_back(parent);
  std::vector<Node*> waiting;
  const auto raise = [&waiting](Node* node, int* value, int least) {
    if (*value >= least) return;
    *value = least;
    waiting.push_back(node);
  };
  raise(child, &child->depth, parent->depth + 1);
  while (!waiting.empty()) {
    const Node* node = waiting.back();
    waiting.pop_back();
    for (Node* below : node->children) raise(below, &below->depth, node->depth + 1);
  }
  raise(parent, &parent->height, child->height + 1);
  while (!waiting.empty()) {
    const Node* node = waiting.back();
    waiting.pop_back();
    for (Node* above : node->parents) raise(above, &above->height, node->height + 1);
  }
  return true;
}

std::int64_t TreeShape::countPlaces(Node* node) {
  if (node->places >= 0) return node->places;
  std::int64_t places = 1;
  for (Node* child : node->children) {
    places = std::min<std::int64_t>(places + countPlaces(child), limits::kSequenceParts + 1);
  }
  node->places = places;
  return places;
}

}  // namespace footlight
