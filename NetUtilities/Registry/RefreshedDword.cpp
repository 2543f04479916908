#include "NetUtilities/Registry/RefreshedDword.h"

namespace {

// What the calling thread is reading: the innermost reading, with those around it.
struct Reading {
  explicit Reading(const RefreshedDword* read);
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  const RefreshedDword* value;
  const Reading* around;
};
thread_local const Reading* innermost = nullptr;

Reading::Reading(const RefreshedDword* read) : value(read), around(innermost) { innermost = this; }
Reading::~Reading() { innermost = around; }

bool IsBeingRead(const RefreshedDword* value) {
  const Reading* reading = innermost;
  while (reading != nullptr && reading->value != value) reading = reading->around;
  return reading != nullptr;
}

}  // namespace

uint32_t RefreshedDword::Get() {
  const Clock::duration now = now_().time_since_epoch();
  if (!IsOld(now) || IsBeingRead(this)) return value_.load(std::memory_order_relaxed);
  const Reading reading(this);
  const uint32_t value = read_();
  // In this order: who sees the new time sees the new value too.
  value_.store(value, std::memory_order_relaxed);
  readAt_.store(now.count(), std::memory_order_release);
  return value;
}

bool RefreshedDword::IsOld(Clock::duration now) const {
  // The age in whole seconds must exceed this, which it does from eleven seconds on.
  constexpr std::chrono::seconds kKeptWholeSeconds(10);
  const Clock::rep readAt = readAt_.load(std::memory_order_acquire);
  if (readAt == kNever) return true;
  return std::chrono::floor<std::chrono::seconds>(now - Clock::duration(readAt)) > kKeptWholeSeconds;
}
