#include "app/unit6.h"

#include <algorithm>
#include <utility>

#include "app/mc_scene.h"
#include "files/resources_manager.h"
#include "gfx/color.h"
#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "input/keyboard.h"

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

// Edit boxes

CEditBox6* CUnit6::addEditBox(CSimpleFont6* font, const CXRect& rect, int priority, const CXString& text) {
  CEditBox6* box = editBoxes_.emplace_back(new CEditBox6(window_, this, font, rect, priority, text)).get();
  if (cursor_) box->setCursor(cursor_.get());
  return box;
}

namespace {

class TextBox final : public CTextBox {
 public:
  TextBox(CUnit6* unit, CEditBox6* box) : unit_(unit), box_(box) {}
  ~TextBox() override {
    if (unit_ && box_) unit_->removeEditBox(box_.get());
  }
  TextBox(const TextBox&) = delete;
  TextBox& operator=(const TextBox&) = delete;

  void setPosition(CXPoint leftTop) override {
    if (box_) box_->setPosition(leftTop);
  }

 private:
  WeakRef<CUnit6> unit_;
  WeakRef<CEditBox6> box_;
};

}  // namespace

std::unique_ptr<CTextBox> CUnit6::makeTextBox(CSimpleFont6* font, CXRect rect, int priority,
                                              const CXString& text) {
  return std::make_unique<TextBox>(this, addEditBox(font, rect, priority, text));
}

void CUnit6::activateEditBox(CEditBox6* box) {
  const WeakRef<CEditBox6> gaining(box);
  const Ref<CEditBox6> losing(activeBox_.get());
  activeBox_ = nullptr;
  if (losing) losing->activate(false);
  if (!gaining) return;
  activeBox_ = gaining;
  gaining->activate(true);
}

void CUnit6::onEditBoxActivated(CEditBox6* box) {
  const Ref<CEditBox6> losing(activeBox_.get());
  activeBox_ = box;
  if (losing && losing.get() != box && losing->isActive()) losing->activate(false);
}

void CUnit6::removeEditBox(CEditBox6* box) {
  std::erase_if(editBoxes_, [box](const auto& entry) { return entry.get() == box; });
}

// Their observers may belong to a level above and hear of the end.
void CUnit6::flushEditBoxes() {
  activeBox_ = nullptr;
  for (const Owned<CEditBox6>& box : std::exchange(editBoxes_, {})) box->notify(2);
}

int CUnit6::getCurrentEditBoxIndex() const {
  const auto active = std::ranges::find(editBoxes_, activeBox_.get(), &Owned<CEditBox6>::get);
  return active != editBoxes_.end() ? static_cast<int>(active - editBoxes_.begin()) : -1;
}

void CUnit6::nextEditBox() {
  const int active = getCurrentEditBoxIndex();
  const int count = static_cast<int>(editBoxes_.size());
  for (int step = 1; active >= 0 && step < count; ++step) {
    CEditBox6* box = editBoxes_[static_cast<std::size_t>((active + step) % count)].get();
    if (box->isEnabled()) return activateEditBox(box);
  }
}

void CUnit6::prevEditBox() {
  const int active = getCurrentEditBoxIndex();
  if (active < 0) return;
  const int before = active > 0 ? active - 1 : static_cast<int>(editBoxes_.size()) - 1;
  activateEditBox(editBoxes_[static_cast<std::size_t>(before)].get());
}

void CUnit6::onKeyDown(int key) {
  if (key != keys::kTab) return;
  const CKeyboard* keyboard = window_->getKeyboardInterface();
  if (!keyboard->isTyped(key)) return;
  if (keyboard->isKeyPressed("shift")) {
    prevEditBox();
  } else {
    nextEditBox();
  }
}

}  // namespace footlight
