#include "host/counted_memory.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define FOOTLIGHT_SANITIZER_COUNTS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define FOOTLIGHT_SANITIZER_COUNTS 1
#endif
#endif

#ifdef FOOTLIGHT_SANITIZER_COUNTS

// Of the sanitizers' run-time library; not every compiler brings its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();

namespace footlight::host {

std::int64_t memoryInUse() { return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes()); }
void refuseMemoryAbove(std::int64_t /*bytes*/) {}

}  // namespace footlight::host

#else

namespace {

constexpr std::int64_t kStep = 64 << 10;  // what a thread keeps to itself before it tells the others

std::atomic<std::int64_t> counted{0};
std::atomic<std::int64_t> most{0};
thread_local std::int64_t untold = 0;

void count(std::int64_t bytes) {
  untold += bytes;
  if (untold < kStep && untold > -kStep) return;
  counted.fetch_add(untold, std::memory_order_relaxed);
  untold = 0;
}

bool isTooMuch(std::size_t size) {
  const std::int64_t limit = most.load(std::memory_order_relaxed);
  if (limit == 0) return false;
  const std::int64_t left = limit - counted.load(std::memory_order_relaxed);
  return left < 0 || size > static_cast<std::size_t>(left);
}

// As the standard asks: the handler is called until there is memory or no handler.
void* take(std::size_t size) {
  for (;;) {
    void* memory = isTooMuch(size) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) {
      count(static_cast<std::int64_t>(malloc_usable_size(memory)));
      return memory;
    }
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}

void giveBack(void* memory) {
  if (memory == nullptr) return;
  count(-static_cast<std::int64_t>(malloc_usable_size(memory)));
  std::free(memory);
}

}  // namespace

// The forms that the others are told in terms of; those for more than usual alignment stay as they are.
void* operator new(std::size_t size) { return take(size); }
void operator delete(void* memory) noexcept { giveBack(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { giveBack(memory); }

namespace footlight::host {

std::int64_t memoryInUse() { return counted.load(std::memory_order_relaxed) + untold; }
void refuseMemoryAbove(std::int64_t bytes) { most.store(bytes, std::memory_order_relaxed); }

}  // namespace footlight::host

#endif
