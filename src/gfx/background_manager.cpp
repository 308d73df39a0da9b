#include "gfx/background_manager.h"

#include <algorithm>

#include "gfx/refresh_screen.h"

namespace footlight {

namespace {

int wrapped(int value, int size) {
  const int rest = remainder(value, size);
  return rest < 0 ? rest + size : rest;
}

}  // namespace

void CBackgroundManager::SetBackground(CColor* colour) {
  surface_.reset(new CDirectDrawSurface(window_, owner_->Size(), owner_->getBpp(), false));
  CColor usual(7, 7, 7);
  surface_->Fill(colour != nullptr ? colour : &usual);
  scrollMode_ = ScrollMode::none;
}

void CBackgroundManager::SetBackground(CGraphicsObject* object) {
  surface_.reset();
  if (object == nullptr) return;
  surface_.reset(new CDirectDrawSurface(window_, object->Size(), owner_->getBpp(), true));
  object->SetDestiny(surface_.get());
  object->Redraw();
  surface_->applyToRestore(object);
  checkScrollMode();
}

void CBackgroundManager::setBackground(Owned<CDirectDrawSurface> surface) {
  surface_ = std::move(surface);
  if (surface_ != nullptr) checkScrollMode();
}

void CBackgroundManager::checkScrollMode() {
  const CXSize screen = owner_->Size();
  const CXSize picture = surface_->Size();
  if (screen.width < picture.width && screen.height < picture.height) {
    scrollMode_ = ScrollMode::both;
  } else if (screen.height == picture.height) {
    scrollMode_ = ScrollMode::horizontal;
  } else if (screen.width == picture.width) {
    scrollMode_ = ScrollMode::vertical;
  } else {
    scrollMode_ = ScrollMode::none;
  }
}

void CBackgroundManager::Redraw(CDirectDrawSurface* destination, const CRefreshRegion& region) {
  if (surface_ == nullptr || destination == nullptr || surface_->Width() == 0 || surface_->Height() == 0)
    return;
  const CXPoint position = wrapPosition();
  if (scrollMode_ == ScrollMode::none && position.x != 0) scrollMode_ = ScrollMode::horizontal;
  if (scrollMode_ == ScrollMode::none && position.y != 0) scrollMode_ = ScrollMode::vertical;
  if (region.isFull()) restore(destination, owner_->screenRect(), position);
  for (std::size_t i = 0; i < region.rects().size(); ++i) restore(destination, region.rects()[i], position);
}

CXPoint CBackgroundManager::wrapPosition() {
  const CXPoint position = surface_->GetPosition();
  const CXPoint inside(wrapped(position.x, surface_->Width()), wrapped(position.y, surface_->Height()));
  surface_->placeAt(inside);
  return inside;
}

// Screen pixel (sx, sy) shows the background's ((sx + x) mod width, (sy + y) mod height), each axis only if
// the mode wraps it; the copies are split at the seams.
void CBackgroundManager::restore(CDirectDrawSurface* destination, const CXRect& rect, CXPoint position) {
  if (rect.IsEmpty()) return;
  if (scrollMode_ == ScrollMode::none) {
    const CXRect shown = (rect + position).Common(owner_->screenRect() + position);
    if (!shown.IsEmpty()) destination->Blt(surface_.get(), rect.left, rect.top, &shown);
    return;
  }
  const int width = surface_->Width();
  const int height = surface_->Height();
  const bool wrapsX = scrollMode_ != ScrollMode::vertical;
  const bool wrapsY = scrollMode_ != ScrollMode::horizontal;
  for (int top = rect.top; top < rect.bottom;) {
    const int fromY = wrapsY ? wrapped(top + position.y, height) : top;
    const int rows = std::min(rect.bottom - top, height - fromY);
    if (rows <= 0) return;
    for (int left = rect.left; left < rect.right;) {
      const int fromX = wrapsX ? wrapped(left + position.x, width) : left;
      const int columns = std::min(rect.right - left, width - fromX);
      if (columns <= 0) break;
      const CXRect part(fromX, fromY, fromX + columns, fromY + rows);
      destination->Blt(surface_.get(), left, top, &part);
      left += columns;
    }
    top += rows;
  }
}

}  // namespace footlight
