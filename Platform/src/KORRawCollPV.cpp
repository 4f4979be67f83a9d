#include "KORRawCollPV.h"

#include "KORPlatformCheck.h"

KORCollecRoot::~KORCollecRoot() = default;

KORRawCollPV::KORRawCollPV(int iInitialCapacity) {
  if (iInitialCapacity > 0) _slots.reserve(static_cast<std::size_t>(iInitialCapacity));
}

KORRawCollPV::~KORRawCollPV() = default;

void KORRawCollPV::Size(int iCount) {
  KOR_PLATFORM_CHECK(iCount >= 0);
  _slots.resize(static_cast<std::size_t>(iCount), nullptr);
}

void*& KORRawCollPV::operator[](int iIndex) {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size());
  return _slots[static_cast<std::size_t>(iIndex - 1)];
}

void* KORRawCollPV::operator[](int iIndex) const {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size());
  return _slots[static_cast<std::size_t>(iIndex - 1)];
}

void KORRawCollPV::Append(void* iPointer) { _slots.push_back(iPointer); }

void KORRawCollPV::InsertAt(int iIndex, void* iPointer) {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size() + 1);
  _slots.insert(_slots.begin() + (iIndex - 1), iPointer);
}

void KORRawCollPV::RemovePosition(int iIndex) {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size());
  _slots.erase(_slots.begin() + (iIndex - 1));
}

void KORRawCollPV::RemoveAll(KORCollec::MemoryHandling iMode) {
  if (iMode == KORCollec::KeepMemory) {
    _slots.clear();
  } else {
    std::vector<void*>().swap(_slots);
  }
}
