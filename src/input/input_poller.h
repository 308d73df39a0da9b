#pragma once

namespace footlight {

// A source of input that is asked at a steady pace. `tick` runs on the poller thread, where there is one, and
// only fills a bounded queue; `flushSignals` runs on the engine's thread and hands the queue on, or empties
// it unheard. Both run under the window's lock.
class CInputPoller {
 public:
  CInputPoller() = default;
  CInputPoller(const CInputPoller&) = delete;
  CInputPoller& operator=(const CInputPoller&) = delete;
  // Leaves the window's list. A poller whose `tick` uses its own members leaves it first thing in
  // its own destructor.
  virtual ~CInputPoller();

  virtual void tick() = 0;
  virtual void flushSignals(bool deliver) = 0;
};

}  // namespace footlight
