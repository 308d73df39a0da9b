#include "objects/data/insertion_order.h"

#include <cmath>
#include <limits>
#include <random>

#include "script/watchdog.h"

namespace footlight {

namespace {

// A value as each type reads it.
struct Reading {
  explicit Reading(CMC_Variable& value)
      : integer(value.asInteger()), real(value.asDouble()), truth(value.asBool()), text(value.asText()) {}

  int integer;
  double real;
  bool truth;
  CXString text;
};

// The greatest value of each type among some, where there is one.
struct Greatest {
  std::int64_t integer = std::numeric_limits<std::int64_t>::min();
  double real = -std::numeric_limits<double>::infinity();
  bool truth = false;
  const CXString* text = nullptr;

  // True when one of them compares greater than that.
  bool isAbove(const Reading& other) const {
    return integer > other.integer || real > other.real || (truth && !other.truth) ||
           (text != nullptr && text->view() > other.text.view());
  }
  void add(const Greatest& other) {
    integer = std::max(integer, other.integer);
    if (other.real > real) real = other.real;
    truth = truth || other.truth;
    if (text == nullptr || (other.text != nullptr && other.text->view() > text->view())) text = other.text;
  }
};

Greatest ownOf(int type, const Reading& value) {
  Greatest own;
  if (type == type::kInteger) own.integer = value.integer;
  if (type == type::kDouble && !std::isnan(value.real)) own.real = value.real;
  if (type == type::kBool) own.truth = value.truth;
  if (type == type::kString) own.text = &value.text;
  return own;
}

constexpr int kNone = -1;

// A tree in the order of the list, balanced by random weights; a node bears the number of its value.
class InsertionTree {
 public:
  explicit InsertionTree(std::span<CMC_Variable* const> values) {
    readings_.reserve(values.size());
    nodes_.reserve(values.size());
    std::minstd_rand weights;
    for (CMC_Variable* value : values) {
      if (!watchdog::mayContinue()) return;
      const Reading& reading = readings_.emplace_back(*value);
      const Greatest own = ownOf(value->getType(), reading);
      nodes_.push_back({own, own, weights(), kNone, kNone});
      root_ = inserted(root_, static_cast<int>(nodes_.size()) - 1);
    }
  }

  std::vector<int> order() const {
    std::vector<int> result;
    std::vector<int> above;
    for (int at = root_; at != kNone || !above.empty(); at = nodes_[index(at)].right) {
      for (; at != kNone; at = nodes_[index(at)].left) above.push_back(at);
      at = above.back();
      above.pop_back();
      result.push_back(at);
    }
    return result;
  }

 private:
  struct Node {
    Greatest own;
    Greatest all;  // of the node and what hangs below it
    std::minstd_rand::result_type weight;
    int left;
    int right;
  };
  static std::size_t index(int node) { return static_cast<std::size_t>(node); }
  Node& node(int number) { return nodes_[index(number)]; }

  // True when the new one goes somewhere before the node, or before something left of it.
  bool goesLeft(int at, int added) {
    const Reading& reading = readings_[index(added)];
    const int left = node(at).left;
    return node(at).own.isAbove(reading) || (left != kNone && node(left).all.isAbove(reading));
  }
  void gather(int at) {
    Node& top = node(at);
    top.all = top.own;
    if (top.left != kNone) top.all.add(node(top.left).all);
    if (top.right != kNone) top.all.add(node(top.right).all);
  }
  // The subtree with the new node in it.
  int inserted(int at, int added) {
    if (at == kNone) return added;
    if (node(added).weight > node(at).weight) {
      split(at, added, &node(added).left, &node(added).right);
      gather(added);
      return added;
    }
    int& side = goesLeft(at, added) ? node(at).left : node(at).right;
    side = inserted(side, added);
    gather(at);
    return at;
  }
  // Cuts a subtree where the new node belongs.
  void split(int at, int added, int* before, int* behind) {
    if (at == kNone) {
      *before = *behind = kNone;
    } else if (goesLeft(at, added)) {
      *behind = at;
      split(node(at).left, added, before, &node(at).left);
      gather(at);
    } else {
      *before = at;
      split(node(at).right, added, &node(at).right, behind);
      gather(at);
    }
  }

  std::vector<Reading> readings_;
  std::vector<Node> nodes_;
  int root_ = kNone;
};

}  // namespace

std::vector<int> insertionOrder(std::span<CMC_Variable* const> values) {
  return InsertionTree(values).order();
}

}  // namespace footlight
