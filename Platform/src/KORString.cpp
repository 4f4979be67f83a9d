#include "KORString.h"

#include <algorithm>
#include <cstring>
#include <utility>

KORString::KORString(const char* iText) {
  if (iText) Assign(iText, std::strlen(iText));
}

KORString::KORString(const char* iText, std::size_t iLength) {
  if (iText) Assign(iText, iLength);
}

KORString::KORString(const KORString& iOther) {
  if (iOther._heap) {
    Assign(iOther._heap, iOther._size);
  } else {
    // The whole inline buffer, in a few moves of known size and without a
    // call: cheaper than a copy of the text's length (a lookup copies its
    // catalogue's name and compares it at once).
    std::memcpy(_inline, iOther._inline, sizeof _inline);
    _size = iOther._size;
  }
}

KORString::KORString(KORString&& iOther) noexcept
    : _heap(std::exchange(iOther._heap, nullptr)),
      _size(std::exchange(iOther._size, 0)),
      _capacity(std::exchange(iOther._capacity, kInline)) {
  if (!_heap) std::memcpy(_inline, iOther._inline, _size + 1);
  iOther._inline[0] = '\0';
}

KORString& KORString::operator=(const KORString& iOther) {
  if (this != &iOther) Assign(iOther.data(), iOther._size);
  return *this;
}

KORString& KORString::operator=(KORString&& iOther) noexcept {
  if (this != &iOther) {
    delete[] _heap;
    _heap = std::exchange(iOther._heap, nullptr);
    _size = std::exchange(iOther._size, 0);
    _capacity = std::exchange(iOther._capacity, kInline);
    if (!_heap) std::memcpy(_inline, iOther._inline, _size + 1);
    iOther._inline[0] = '\0';
  }
  return *this;
}

KORString::~KORString() { delete[] _heap; }

void KORString::Assign(const char* iText, std::size_t iLength) {
  if (iLength > _capacity) {
    // A new buffer: iText may lie in the old one, which is released after.
    char* grown = new char[iLength + 1];
    std::memcpy(grown, iText, iLength);
    delete[] _heap;
    _heap = grown;
    _capacity = iLength;
  } else {
    std::memmove(buffer(), iText, iLength);
  }
  _size = iLength;
  buffer()[_size] = '\0';
}

void KORString::AppendBytes(const char* iText, std::size_t iLength) {
  if (iLength == 0) return;
  const std::size_t size = _size + iLength;
  if (size > _capacity) {
    // iText may lie in this string's own buffer: copy it from the old
    // buffer before releasing it.
    const std::size_t capacity = std::max(size, 2 * _capacity);
    char* grown = new char[capacity + 1];
    std::memcpy(grown, data(), _size);
    std::memcpy(grown + _size, iText, iLength);
    delete[] _heap;
    _heap = grown;
    _capacity = capacity;
  } else {
    std::memmove(buffer() + _size, iText, iLength);
  }
  _size = size;
  buffer()[_size] = '\0';
}

KORString& KORString::Append(const KORString& iOther) {
  AppendBytes(iOther.data(), iOther._size);
  return *this;
}

KORString& KORString::Append(const char* iText) {
  if (iText) AppendBytes(iText, std::strlen(iText));
  return *this;
}

KORString operator+(const KORString& iLeft, const KORString& iRight) {
  KORString result(iLeft);
  result.Append(iRight);
  return result;
}
