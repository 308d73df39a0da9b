#pragma once

// CXObject is the root of everything that sits in a container or that scripts can reach.
//
// Life of an object. It has one of two kinds of life:
//
// - It has an owner: whoever created it, until it is handed on. An owned object that may still be in use
//   further up the call stack is never deleted at once: its owner calls `dispose`, which makes every WeakRef
//   to it null and deletes it when the last Ref (a "pin") has gone.
// - It is counted: `makeRef` made it, nobody owns it, and it goes with its last Ref.
//
// Code that calls into scripts holds a Ref to each object that it touches afterwards, and nothing else keeps
// a plain pointer over such a call.
//
// All of this belongs to the engine's main thread; the counters are not atomic.

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

namespace footlight {

class CXString;
class CMessage;

class CXObject {
 public:
  CXObject() = default;
  // A copy is a new object: it takes the error code, but neither pins nor weak references nor
  // the deletion mark.
  CXObject(const CXObject& other) : errorCode_(other.errorCode_) {}
  CXObject& operator=(const CXObject& other) {
    if (this != &other) errorCode_ = other.errorCode_;
    return *this;
  }
  virtual ~CXObject();

  virtual bool isToDelete() const { return toDelete_; }
  virtual void setToDelete() { toDelete_ = true; }
  // The object's address, folded to 32 bits, unless a class has a better one.
  virtual std::uint32_t getHashcode() const;
  // Identity, unless a class compares by value.
  virtual bool equals(const CXObject* other) const { return this == other; }
  // 0 for the object itself, nonzero for every other, unless a class has an order.
  virtual int compare(const CXObject* other) const { return this == other ? 0 : 1; }
  // A new object for the caller to own; null for classes that cannot be copied.
  virtual std::unique_ptr<CXObject> clone() const { return nullptr; }
  virtual CXString toString() const;
  virtual void notifyMessageReceive(CMessage* message);
  virtual int processMessage(CMessage* message);
  // A hash for look-ups that never shows in any order: objects that are equal have the same one. Classes
  // whose getHashcode gives one number to many objects have a better one.
  virtual std::size_t lookupHash() const { return getHashcode(); }

  // The engine's failure codes, 0 when all is well: 2000 file, 3000 application, -997 sound, -998 graphics.
  void setErrorCode(int code) { errorCode_ = code; }
  int LastError() const { return errorCode_; }

  // There is no log: the text is dropped.
  void log(std::string_view /*text*/, bool /*newLine*/ = true) const {}
  // A stop watch by name for developers: starts it, or writes the milliseconds since its start to
  // the debug output.
  static void profile(std::string_view text, bool starts);

  static std::int16_t swap_word(std::int16_t value);
  static std::int32_t swap_dword(std::int32_t value);

  // Ends an owned object: weak references become null now, the memory goes when nothing pins it any more.
  void dispose();
  // True from `dispose` on. A disposed object answers no look-ups and gets no further calls from the engine.
  bool isDisposed() const { return disposed_; }

  void pin() const { ++pins_; }
  void unpin() const {
    if (--pins_ == 0 && endsUnpinned_) destroyNow();
  }
  std::uint32_t pins() const { return pins_; }

  // The shared cell behind every WeakRef; made on first use.
  struct WeakCell {
    CXObject* object;
    std::uint32_t users;
  };
  WeakCell* weakCell() const;

 private:
  template <class T, class... Arguments>
  friend auto makeRef(Arguments&&... arguments);

  // Pins taken while the destructor runs must not end the object a second time.
  static constexpr std::uint32_t kDying = 1U << 30;
  void destroyNow() const {
    pins_ = kDying;
    delete this;
  }
  void dropWeakCell() const;

  int errorCode_ = 0;
  bool toDelete_ = false;
  bool disposed_ = false;
  bool endsUnpinned_ = false;  // nobody owns it, or its owner has disposed of it
  mutable std::uint32_t pins_ = 0;
  mutable WeakCell* weakCell_ = nullptr;
};

// A counted pin: the object stays in memory while one exists.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  Ref(T* object) : object_(object) {
    if (object_ != nullptr) object_->pin();
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other) : Ref(other.get()) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_ != nullptr) object_->unpin();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }

 private:
  T* object_ = nullptr;
};

// Makes a counted object: it begins with this one Ref and lives by its Refs.
template <class T, class... Arguments>
auto makeRef(Arguments&&... arguments) {
  Ref<T> made(new T(std::forward<Arguments>(arguments)...));
  made->endsUnpinned_ = true;
  return made;
}

// A reference that becomes null when its object is disposed or destroyed.
template <class T>
class WeakRef {
 public:
  WeakRef() = default;
  WeakRef(std::nullptr_t) {}
  WeakRef(T* object) {
    if (object == nullptr || object->isDisposed()) return;
    cell_ = object->weakCell();
    ++cell_->users;
  }
  WeakRef(const WeakRef& other) : cell_(other.cell_) {
    if (cell_ != nullptr) ++cell_->users;
  }
  WeakRef(WeakRef&& other) noexcept : cell_(std::exchange(other.cell_, nullptr)) {}
  WeakRef& operator=(WeakRef other) noexcept {
    std::swap(cell_, other.cell_);
    return *this;
  }
  ~WeakRef() {
    if (cell_ != nullptr && --cell_->users == 0) delete cell_;
  }

  T* get() const { return cell_ != nullptr ? static_cast<T*>(cell_->object) : nullptr; }
  T* operator->() const { return get(); }
  explicit operator bool() const { return get() != nullptr; }
  // True when this once stood for an object that has gone since.
  bool isDead() const { return cell_ != nullptr && cell_->object == nullptr; }

 private:
  CXObject::WeakCell* cell_ = nullptr;
};

// Sole ownership of an object that scripts may still be running in: goes through `dispose`.
struct Disposer {
  void operator()(CXObject* object) const {
    if (object != nullptr) object->dispose();
  }
};
template <class T>
using Owned = std::unique_ptr<T, Disposer>;

}  // namespace footlight
