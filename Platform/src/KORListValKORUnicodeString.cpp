#include "KORListValKORUnicodeString.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "KORPlatformCheck.h"

void KORListValKORUnicodeString::Append(const KORUnicodeString& iValue) {
  _values.push_back(iValue);
}

void KORListValKORUnicodeString::InsertAt(int iIndex, const KORUnicodeString& iValue) {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size() + 1);
  _values.insert(_values.begin() + (iIndex - 1), iValue);
}

KORUnicodeString& KORListValKORUnicodeString::operator[](int iIndex) {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size());
  return _values[static_cast<std::size_t>(iIndex - 1)];
}

const KORUnicodeString& KORListValKORUnicodeString::operator[](int iIndex) const {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size());
  return _values[static_cast<std::size_t>(iIndex - 1)];
}

int KORListValKORUnicodeString::Locate(const KORUnicodeString& iValue, int iFrom) const {
  if (iFrom < 1) iFrom = 1;
  for (int i = iFrom; i <= Size(); ++i) {
    if (_values[static_cast<std::size_t>(i - 1)] == iValue) return i;
  }
  return 0;
}

int KORListValKORUnicodeString::RemoveValue(const KORUnicodeString& iValue) {
  // iValue may be one of the elements (list.RemoveValue(list[1])), which the
  // removal overwrites: compare with a copy.
  const KORUnicodeString value(iValue);  // NOLINT(performance-unnecessary-copy-initialization)
  const auto before = _values.size();
  _values.erase(std::remove(_values.begin(), _values.end(), value), _values.end());
  return static_cast<int>(before - _values.size());
}

void KORListValKORUnicodeString::RemovePosition(int iIndex) {
  KOR_PLATFORM_CHECK(iIndex >= 1 && iIndex <= Size());
  _values.erase(_values.begin() + (iIndex - 1));
}

void KORListValKORUnicodeString::RemoveAll() noexcept { _values.clear(); }

int KORListValKORUnicodeString::RemoveDuplicates() {
  // Linear in the number of elements: first mark the elements to keep with a
  // set of the texts seen so far (views into the unchanged list), then close
  // the gaps in one pass.
  std::vector<bool> keep(_values.size());
  {
    std::unordered_set<std::string_view> seen;
    seen.reserve(_values.size());
    for (std::size_t i = 0; i < _values.size(); ++i) {
      keep[i] = seen.insert(_values[i].View()).second;
    }
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < _values.size(); ++i) {
    if (!keep[i]) continue;
    if (kept != i) _values[kept] = std::move(_values[i]);
    ++kept;
  }
  const auto removed = _values.size() - kept;
  _values.resize(kept);
  return static_cast<int>(removed);
}
