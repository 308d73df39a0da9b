#include "script/code_lines.h"

#include "script/code_text.h"
#include "script/mc_behaviour.h"
#include "script/statement_compiler.h"

namespace footlight {

Ref<const CodeLines> CodeLines::make(CMC_Behaviour* behaviour, CXString text, bool isWatched) {
  const Ref<CodeLines> lines = makeRef<CodeLines>(behaviour, std::move(text));
  lines->generation_ = CMC_ObjectsContainer::generation();
  if (isWatched) {
    lines->uses_ = std::make_unique<NameUses>();
    lines->tellNames(*lines->uses_);
    lines->uses_->mark();
  }
  return lines;
}

bool CodeLines::isCurrent() const {
  if (!uses_ || !uses_->areBehavioursUntouched()) return false;
  const std::uint64_t generation = CMC_ObjectsContainer::generation();
  if (generation_ != generation && uses_->haveChanged()) return false;
  generation_ = generation;
  return true;
}

void CodeLines::tellNames(NameUses& uses) const {
  for (const auto& entry : entries_) entry->tellNames(uses);
}

CodeLines::CodeLines(CMC_Behaviour* behaviour, CXString text) : text_(std::move(text)) {
  CXString rest;
  for (CXString& statement : code_text::cutStatements(text_, &rest)) {
    entries_.push_back(compileStatement(behaviour, std::move(statement)));
    if (diagnose::isOn() && !entries_.back()->mayDoSomething())
      diagnose::report(diagnose::Group::statement, behaviour->getName(), "",
                       "calls nothing: " + entries_.back()->getLine().str(), behaviour->origin());
  }
  // A bare name or number is as often a text that only might have been code.
  const bool isStatement = rest.startsWith("@") || rest.Find('^') >= 0;
  if (isStatement && diagnose::isOn()) {
    diagnose::report(diagnose::Group::statement, behaviour->getName(), "",
                     "the last statement has no semicolon and is dropped: " + rest.str(),
                     behaviour->origin());
  }
}

void CodeLines::releaseTempBeh(bool owns) const {
  for (const auto& entry : entries_) entry->releaseTempBeh(owns);
}

}  // namespace footlight
