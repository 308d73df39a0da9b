#pragma once

// An animation: a store of frames, and events, each a named sequence of those frames with its own
// offsets, sounds and loop. It draws and measures like the picture of its current frame, and the
// animation manager steps it.
//
// Its place is a sum of three: a global position, that of the frame, and the offset of the event's position.
//
// Starts, steps and ends are told to observers, who run scripts: they may load, play, stop and end this very
// animation. It is pinned meanwhile, and goes on only if nobody gave it another course. Every index is
// checked where it is used.
//
// Frames stay packed in memory, and only the one on view is expanded. Clones share the frames until one of
// them edits the pixels; each has its own events, place and state.

#include <memory>
#include <vector>

#include "gfx/ann_format.h"
#include "gfx/frame.h"
#include "gfx/frame_sound.h"
#include "gfx/graphics_object.h"
#include "gfx/playable.h"

namespace footlight {

enum class _astatus { playing = 0, stopped = 1, paused = 2 };
enum class _direction { forward = 0, backward = 1 };

class CAnimo : public CGraphicsObject, public CPlayable {
 public:
  static constexpr int kType = 2;
  static constexpr int kUsualFps = 15;
  static constexpr std::uint32_t kUninterruptible = 0x40000;
  static constexpr std::uint32_t kSoundSurvives = 0x80000;
  static constexpr std::uint32_t kLaterFile = 0x200000;
  static constexpr std::uint32_t kStreamsSounds = 0x400000;
  static constexpr std::uint32_t kGoesOn = 0x800000;  // with the next event at the end of one
  // Marks for a position: the current one, the first, the last.
  static constexpr int kCurrent = -1;
  static constexpr int kFirst = -2;
  static constexpr int kLast = -3;

  // Without frames.
  explicit CAnimo(CWindow* window);
  // Loads at once; the result is the error code.
  CAnimo(CWindow* window, const CXString& name);
  // Shares the frames.
  CAnimo(const CAnimo& source);
  ~CAnimo() override;
  CAnimo& operator=(const CAnimo&) = delete;

  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CAnimo>(*this); }
  CXObject* asObject() override { return this; }
  int getGfxType() const override { return kType; }

  // Both give the error code; 2000 when there is no such file or it is no animation. The animation
  // is empty then.
  int Load(const CXString& name) override;
  int Load(CFile* file) override;
  // Writes the current layout. Only the run-length form packs anything. Gives the error code.
  using CGraphicsObject::Save;
  int Save(CFile* file, _compression compression) override;
  void Flush() override;

  virtual int GetNOF() const;
  virtual CFrame* GetFrame(int number) const;  // null outside of the store
  virtual void clearLastRefreshed();
  virtual _astatus GetStatus() const { return status_; }
  virtual bool IsPlaying() const { return status_ == _astatus::playing; }
  virtual int GetFPS() const { return fps_; }
  // The current event goes on from its position with its own speed.
  virtual void Continue();
  // An unknown event, or one without frames, plays nothing. `fps` is of no effect.
  virtual void Play(const CXString& event, int position, int fps);
  virtual void Play(int event, int position, int fps);
  virtual void Play() { Play(0, 0, kUsualFps); }
  virtual void Stop();
  virtual void StopNoNotify();
  virtual void Pause();
  virtual void Resume();
  virtual int Current() const { return currentFrame_; }
  // A step along the event, and back. True when another frame is shown.
  virtual bool Prev();
  virtual bool Next();
  virtual void Seek(int frame) { SetFrame(frame); }
  // The event backwards: the one that is named so, else a copy that is made now and kept.
  virtual void playReverse(const CXString& event, int position);

  void play() override { Play(lastEvent_, 0, kUsualFps); }
  // An unknown event, or one without frames, leaves the one that played last.
  void play(const CXString& event) override;
  void stop(bool notifies) override;
  void pause() override { Pause(); }
  void resume() override { Resume(); }
  void seek(int place) override;
  int next() override;
  int previous() override;
  int getFPS() const override { return fps_; }
  bool isVisible() const override { return CGraphicsObject::isVisible(); }
  void setVisibility(bool visible) override { Visible(visible); }

  // Events by their number; null outside of the table.
  const _annEventInfo3* GetEventInfo(int event) const;
  // A name in any case; -1 for an unknown one.
  int GetEventNo(const CXString& name) const;
  int GetEventNo(int event) const { return event == kCurrent ? currentEvent_ : event; }
  int resolveEventName(const CXString& name) const { return GetEventNo(name); }
  CXString GetEventName(int event) const;
  int GetNOE() const { return static_cast<int>(events_.size()); }
  int GetNOFInEvent(int event) const;
  int GetNOFInEvent(const CXString& event) const { return GetNOFInEvent(GetEventNo(event)); }
  int GetCurrentEvent() const { return currentEvent_; }
  void setCurrentEvent(int event);
  int getLastEvent() const { return lastEvent_; }
  void setLastEvent(int event) { lastEvent_ = event; }
  int GetCurrentFrameInSequence() const { return frameInEvent_; }
  int getFirstEvent() const;
  // The frame at a position of an event, or of that name; -1 when there is none.
  int GetFrameNo() const { return currentFrame_; }
  int GetFrameNo(int event, int position) const;
  int GetFrameNo(int event, const CXString& name) const;
  // The first frame of that name in any event, null when there is none.
  CFrame* getFrame(const CXString& name) const;
  CXString getFrameName(int event, int position) const;
  void setFrameName(int event, int position, CXString name);

  void SetFrame(int frame);
  // A negative event is the current one, a negative position the first. Outside of the tables nothing
  // happens. What is shown changes, and the observers hear of it.
  void SetEventFrame(int event, int position);
  void SetEventFrame(int event, const CXString& name);

  void SetFPS(int fps) { fps_ = fps < 1 ? 1 : fps; }
  void SetAnimoFlags(std::uint32_t flags) { animoFlags_ = flags; }
  std::uint32_t GetAnimoFlags() const { return animoFlags_; }
  void setDirection(_direction direction) { direction_ = direction; }
  const CXString& getAuthor() const { return author_; }
  const CXString& getDescription() const { return description_; }

  void SetPosition(int px, int py) override;  // of all frames
  using CGraphicsObject::SetPosition;
  void setPosition(int px, int py) override { SetGlobalPosition(px, py); }
  void setPosition(CXPoint point) override { setPosition(point.x, point.y); }
  void SetGlobalPosition(int px, int py) override;  // puts the anchor there
  CXPoint exchangePlace(CXPoint place) override { return std::exchange(globalPosition_, place); }
  using CPlayable::SetGlobalPosition;
  void Move(int dx, int dy) override;
  using CGraphicsObject::Move;
  void move(int dx, int dy) override { Move(dx, dy); }
  using CPlayable::move;
  CXPoint GetPosition() const override { return position_ + globalPosition_; }
  CXPoint GetGlobalPosition() const { return globalPosition_; }
  // The place of the current frame and its offset, without the global position.
  CXPoint getCurrFramePosition() const { return position_; }
  CXRect getRect() const override;
  CXRect GetBoundingBox() const override;
  CXRect GetAbsoluteBoundingBox() const override { return GetBoundingBox(); }
  CGraphicsObject* getDrawn() override;

  void retire() override;
  void destroy() override { dispose(); }

 protected:
  CFrame* currentFrame() const { return GetFrame(currentFrame_); }
  // The frame's place while it is drawn for this animation.
  CXPoint framePlace(int frame) const;
  void takePixels();
  void ownFrames();

  using Frames = std::vector<Owned<CFrame>>;
  std::shared_ptr<Frames> frames_;
  WeakRef<CFrame> lastRefreshed_;
  CFrameSound* streamedSound() const { return streamedSound_.get(); }
  CFrameSound* currentSound() const { return currentSound_.get(); }

 private:
  using Sounds = std::vector<std::vector<std::shared_ptr<CFrameSound>>>;

  void take(AnnFile file);
  void Set(int frame);
  void updateWithCurrentFrame();
  const _anmFrameInfo3* currentInfo() const;
  bool finish();
  bool endEvent(int* position);
  bool stepLoop(const _annEventInfo3& event, int* position);
  bool countLoop(int* position);
  bool stepBack(const _annEventInfo3& event, int* position);
  bool isSounding() const;
  bool isInterruptible() const;
  int addReverse(const _annEventInfo3& event);
  void preloadSounds();
  std::shared_ptr<CFrameSound>& soundAt(int event, int position, const CXString& name);
  // With the volume, the pan and the frequency that the animation was given.
  void start(CFrameSound& sound) const;
  void PlaySoundFX(int event, int position);

  std::vector<_annEventInfo3> events_;
  Sounds sounds_;  // by event and position; null where there is none
  std::unique_ptr<CFrameSound> streamedSound_;
  std::shared_ptr<CFrameSound> currentSound_;
  std::vector<CXPoint> framePositions_;
  CXString author_;
  CXString description_;
  int frameInEvent_ = 0;
  int currentFrame_ = -1;
  int currentEvent_ = 0;
  int lastEvent_ = 0;
  int fps_ = kUsualFps;
  int randomFramesNumber_ = 0;
  std::uint32_t animoFlags_ = 0;
  CXPoint globalPosition_;
  _astatus status_ = _astatus::stopped;
  _direction direction_ = _direction::forward;
  int course_ = 0;  // counts what gives the animation another course: a start, a stop, other frames
};

}  // namespace footlight
