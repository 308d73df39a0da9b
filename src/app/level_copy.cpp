#include "app/level_copy.h"

#include "app/mc_episode.h"

namespace footlight {

CLevelCopy::CLevelCopy(CMC_Scene& level, CMC_Scene* parent) {
  if (level.getType() == type::kEpisode) {
    copy_.reset(new CMC_Episode(level.getWindow()));
  } else {
    copy_.reset(new CMC_Scene(level.getWindow()));
  }
  copy_->takeLevel(level);
  copy_->binary_ = level.binary_;
  copy_->isCopy_ = true;
  copy_->isHeadRead_ = true;
  copy_->setParent(parent);
  if (copy_->dlls_.IsString()) copy_->resolveDLLs(copy_->dlls_);
  copy_->enterDefinitionFolder();
  copy_->loadCnv();
}

CLevelCopy::~CLevelCopy() { copy_->endQuietly(); }

}  // namespace footlight
