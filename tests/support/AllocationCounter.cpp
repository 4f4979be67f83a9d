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

void* operator new(std::size_t iSize) { return Allocate(iSize); }
void* operator new[](std::size_t iSize) { return Allocate(iSize); }
void operator delete(void* iMemory) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory) noexcept { std::free(iMemory); }
void operator delete(void* iMemory, std::size_t) noexcept { std::free(iMemory); }
void operator delete[](void* iMemory, std::size_t) noexcept { std::free(iMemory); }

AllocationCounter::AllocationCounter() : _start(tAllocations) { ++tCounters; }
AllocationCounter::~AllocationCounter() { --tCounters; }
long AllocationCounter::Count() const { return tAllocations - _start; }
