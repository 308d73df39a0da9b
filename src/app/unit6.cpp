#include "app/unit6.h"

#include "app/mc_scene.h"
#include "files/resources_manager.h"
#include "gfx/color.h"
#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

CUnit6::CUnit6(CWindow* window, CXString name, CResourcesManager* general)
    : unitName_(std::move(name)),
      window_(window),
      resources_(std::make_unique<CResourcesManager>(window)),
      general_(general) {
  if (general_ != nullptr) general_->add(resources_.get());
}

CUnit6::~CUnit6() {
  if (window_ != nullptr) {
    window_->unregisterKeyListener(this);
    window_->unregisterMouseListener(this);
  }
}

CRefreshScreen* CUnit6::getCanvas() const { return window_->getRefreshScreen(); }

void CUnit6::initialize(CMC_Scene* scene, CUnit6* other) {
  active_ = true;
  wasInitiallyUpdated_ = false;
  scene_ = WeakRef<CMC_Scene>(scene);
  if (other != this) musicFileName_ = other != nullptr ? other->getMusicFileName() : CXString();
  randomPlayable_.reset(new CRandomPlayable(window_, this));
  randomPlayable_->addNotifier(this);
  setBackground();
  window_->registerKeyListener(this);
  window_->registerMouseListener(this, kMousePriority);
  window_->setScreenUnit(this);
}

void CUnit6::onInitialUpdate() {
  wasInitiallyUpdated_ = true;
  startMusic(nullptr, false);
}

void CUnit6::done(CMC_Scene* /*scene*/, CUnit6* /*other*/) {
  if (dragging_) onEndDragging();
  if (CRefreshScreen* canvas = getCanvas()) {
    canvas->flush();
    canvas->SetBackground(static_cast<CGraphicsObject*>(nullptr));
    canvas->Invalidate(static_cast<CXRect*>(nullptr));
  }
  scene_ = WeakRef<CMC_Scene>();
  active_ = false;
  randomPlayable_.reset();
  window_->unregisterKeyListener(this);
  window_->unregisterMouseListener(this);
  resources_->flush();
}

void CUnit6::setBackground() {
  if (backgroundFileName_.IsString()) {
    window_->SetBackground(backgroundFileName_);
  } else {
    window_->SetBackground(static_cast<CColor*>(nullptr));
  }
}

void CUnit6::addRandomPlayable(CPlayable* playable, double rate, int repeats, const CXString& event) {
  if (randomPlayable_ != nullptr) randomPlayable_->add(playable, rate, repeats, event);
}

// Music

void CUnit6::startMusic(const char* name, bool force) {
  CMC_Scene* scene = scene_.get();
  if (scene == nullptr || (!force && !scene->shouldMusicBeStarted())) return;
  const CXString file = name != nullptr ? CXString(name) : scene->getMusicFilename();
  if (file.IsEmpty()) return;
  if (file.equalsIgnoreCase(musicFileName_) && window_->isMusicPlaying()) return;
  musicFileName_ = file;
  window_->StartMusic(file, true);
}

void CUnit6::stopMusic() { window_->StopMusic(); }

// Dragging

bool CUnit6::onStartDragging(CGraphicsObject* object, CXPoint point, CButton* button) {
  CRefreshScreen* canvas = getCanvas();
  if (object == nullptr || canvas == nullptr) return false;
  dragging_ = true;
  dragged_ = object;
  draggedButton_ = button;
  draggedPriority_ = canvas->GetPriority(object);
  canvas->SetPriority(object, kDragPriority);
  dragStart_ = object->GetPosition();
  dragPoint_ = point;
  if (button != nullptr) button->onStartDragging(point);
  return true;
}

void CUnit6::onDragging(CXPoint point) {
  if (CGraphicsObject* object = dragged_.get()) object->Move(point - dragPoint_);
  dragPoint_ = point;
  if (CButton* button = draggedButton_.get()) button->onDragging(point);
}

void CUnit6::onEndDragging() {
  dragging_ = false;
  CGraphicsObject* object = dragged_.get();
  if (object != nullptr && getCanvas() != nullptr) getCanvas()->SetPriority(object, draggedPriority_);
  dragged_ = nullptr;
  CButton* button = draggedButton_.get();
  draggedButton_ = nullptr;
  if (button != nullptr) button->onEndDragging(dragPoint_);
}

void CUnit6::bringBackDraggingObjectPosition() {
  CGraphicsObject* object = dragged_.get();
  if (object != nullptr) object->Move(dragStart_ - object->GetPosition());
}

bool CUnit6::onMouseMove(CXPoint point) {
  if (dragging_) onDragging(point);
  return CMouseListener::onMouseMove(point);
}

bool CUnit6::onClick(int button, CXPoint point) {
  if (dragging_ && draggingMode_) onEndDragging();
  return CMouseListener::onClick(button, point);
}

bool CUnit6::onRelease(int button, CXPoint point) {
  if (dragging_ && !draggingMode_) onEndDragging();
  return CMouseListener::onRelease(button, point);
}

}  // namespace footlight
