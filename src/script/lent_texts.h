#pragma once

// A list of arguments for one run: calls come one in another, so lists are taken from a stack and given back,
// with their memory.

#include <memory>
#include <vector>

#include "script/argument_text.h"

namespace footlight {

class LentTexts {
 public:
  LentTexts() {
    if (depth == lists.size()) lists.push_back(std::make_unique<TextList>());
    list_ = lists[depth++].get();
  }
  ~LentTexts() {
    list_->clear();
    --depth;
  }
  LentTexts(const LentTexts&) = delete;
  LentTexts& operator=(const LentTexts&) = delete;

  TextList& list() const { return *list_; }

 private:
  static inline std::vector<std::unique_ptr<TextList>> lists;
  static inline std::size_t depth = 0;

  TextList* list_;
};

}  // namespace footlight
