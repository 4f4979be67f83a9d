#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {
thread_local long tAllocations = 0;
thread_local int tCounters = 0;

void* Allocate(std::size_t iSize) {
  if (tCounters > 0) ++tAllocations;
  if (iSize == 0) iSize = 1;
  void* memory = std::malloc(iSize);
  if (!memory) throw std::bad_alloc();
  return memory;
}
}  // namespace

// Every form of the global allocation functions is replaced, so that memory
// from any of them is released by the matching replacement.
void* operator new(std::size_t iSize) { return Allocate(iSize); }
void* operator new[](std::size_t iSize) { return Allocate(iSize); }
void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept {
  try {
    return Allocate(iSize);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void* operator new[](std::size_t iSize, const std::nothrow_t& iTag) noexcept {
  return operator new(iSize, iTag);
}
void operator delete(void* iMemory) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory) noexcept { std::free(iMemory); }
void operator delete(void* iMemory, std::size_t) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory, std::size_t) noexcept { std::free(iMemory); }
void operator delete(void* iMemory, const std::nothrow_t&) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory, const std::nothrow_t&) noexcept { std::free(iMemory); }

void* operator new(std::size_t iSize, std::align_val_t iAlignment) {
  if (tCounters > 0) ++tAllocations;
  const auto alignment = static_cast<std::size_t>(iAlignment);
  // aligned_alloc wants a size that is a multiple of the alignment.
  const std::size_t size = ((iSize ? iSize : 1) + alignment - 1) / alignment * alignment;
  void* memory = std::aligned_alloc(alignment, size);
  if (!memory) throw std::bad_alloc();
  return memory;
}
void* operator new[](std::size_t iSize, std::align_val_t iAlignment) {
  return operator new(iSize, iAlignment);
}
void operator delete(void* iMemory, std::align_val_t) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory, std::align_val_t) noexcept { std::free(iMemory); }
void operator delete(void* iMemory, std::size_t, std::align_val_t) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory, std::size_t, std::align_val_t) noexcept {
  std::free(iMemory);
}

AllocationCounter::AllocationCounter() : _start(tAllocations) { ++tCounters; }
AllocationCounter::~AllocationCounter() { --tCounters; }
long AllocationCounter::Count() const { return tAllocations - _start; }
