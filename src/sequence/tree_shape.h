#pragma once

// How the nodes of a sequence lie above each other while it is read. A node may stand in several places, but
// never below itself, no deeper than limits::kTreeDepth, and all places together, each counted with what lies
// below it, are bounded: else a few nodes of which each holds the next one twice would play for ever.

#include <cstdint>
#include <deque>
#include <vector>

namespace footlight {

class TreeShape {
 public:
  struct Node {
    std::vector<Node*> parents;
    std::vector<Node*> children;
    int depth = 0;   // nodes above it on the longest way
    int height = 0;  // nodes below it on the longest way
    unsigned mark = 0;
    std::int64_t places = -1;  // of itself and what lies below it; -1 while that is not counted
  };

  // Lives as long as the shape.
  Node* add();
  // Puts a child below a parent; false, with nothing done, where the rules forbid it.
  bool join(Node* parent, Node* child);
  // All places from a node down, itself included; no more than one above the limit are counted.
  static std::int64_t countPlaces(Node* node);

 private:
  bool isAbove(const Node* node, Node* below);

  std::deque<Node> nodes_;
  unsigned round_ = 0;
  std::int64_t steps_ = 0;  // that searches may still take: they grow with the joins, or a file could ask for
                            // their square
};

}  // namespace footlight
