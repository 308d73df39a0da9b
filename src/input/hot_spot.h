#pragma once

// The bounds within which hot spots take part in hit tests, both included: a modal layer raises the lower one
// and so shuts out what lies under it.

namespace footlight {

class CHotSpot {
 public:
  static constexpr int kFirstMinPriority = 0;
  static constexpr int kFirstMaxPriority = 10000000;

  static void setMinPriority(int priority) { minPriority_ = priority; }
  static void setMaxPriority(int priority) { maxPriority_ = priority; }
  static int getMinPriority() { return minPriority_; }
  static int getMaxPriority() { return maxPriority_; }
  // Back to the state of a fresh engine.
  static void done() {
    minPriority_ = kFirstMinPriority;
    maxPriority_ = kFirstMaxPriority;
  }

 private:
  static inline int minPriority_ = kFirstMinPriority;
  static inline int maxPriority_ = kFirstMaxPriority;
};

}  // namespace footlight
