#include "tests/support/AllocationTally.h"

#include <cstdlib>
#include <new>

namespace {

thread_local AllocationTally* active = nullptr;

}  // namespace

void AllocationTally::Add(size_t bytes) {
  if (active == nullptr) return;
  ++active->allocations_;
  active->bytes_ += bytes;
}

AllocationTally::~AllocationTally() { active = nullptr; }

#ifdef __SANITIZE_ADDRESS__

// The sanitizer's own operators stay: they find what replacements would not. It tells of every allocation, also by
// malloc, once it has been asked to, and for ever.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void* block, size_t bytes),
                                                         void (*onFree)(const volatile void* block));

AllocationTally::AllocationTally() {
  [[maybe_unused]] static const int installed = __sanitizer_install_malloc_and_free_hooks(
      [](const volatile void*, size_t bytes) { Add(bytes); }, [](const volatile void*) {});
  active = this;
}

#else

AllocationTally::AllocationTally() { active = this; }

void* operator new(size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  AllocationTally::Add(size);
  return block;
}

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, size_t) noexcept { std::free(block); }

#endif
