// KORListValKORUnicodeString: the platform's value list of strings.
//
// Positions are 1-based: the first element is at 1, the last at Size().
// Locate returns 0 when the value is absent. The list owns its elements;
// operator[] gives the element itself (not a copy), valid until the element
// is removed or the list is assigned to or destroyed.
//
// A position out of range given to operator[], InsertAt or RemovePosition is
// a programming error: the process stops through __assert.
//
//   KORListValKORUnicodeString viewers;
//   viewers.Append("Viewer3D");
//   viewers.Append("Viewer2D");
//   viewers.Locate("Viewer2D");      // 2
//   viewers.Locate("Unknown");       // 0
//   viewers[1];                      // "Viewer3D"
#ifndef KORListValKORUnicodeString_h
#define KORListValKORUnicodeString_h

#include <vector>

#include "KORPlatformExport.h"
#include "KORUnicodeString.h"

class KORPLATFORM_API KORListValKORUnicodeString {
 public:
  KORListValKORUnicodeString() = default;
  KORListValKORUnicodeString(const KORListValKORUnicodeString&) = default;
  KORListValKORUnicodeString(KORListValKORUnicodeString&&) noexcept = default;
  KORListValKORUnicodeString& operator=(const KORListValKORUnicodeString&) = default;
  KORListValKORUnicodeString& operator=(KORListValKORUnicodeString&&) noexcept = default;
  ~KORListValKORUnicodeString() = default;

  // Adds a copy of iValue at the end.
  void Append(const KORUnicodeString& iValue);
  // Places a copy of iValue at position iIndex (1 <= iIndex <= Size() + 1);
  // the elements from iIndex on move one place down.
  void InsertAt(int iIndex, const KORUnicodeString& iValue);

  // Number of elements.
  [[nodiscard]] int Size() const noexcept { return static_cast<int>(_values.size()); }

  // The element at iIndex (1 <= iIndex <= Size()) itself.
  KORUnicodeString& operator[](int iIndex);
  const KORUnicodeString& operator[](int iIndex) const;

  // Position of the first element equal to iValue at or after iFrom, or 0
  // when there is none (also when iFrom is beyond Size()). A start before 1
  // is taken as 1.
  [[nodiscard]] int Locate(const KORUnicodeString& iValue, int iFrom = 1) const;

  // Removes every element equal to iValue; returns how many were removed.
  int RemoveValue(const KORUnicodeString& iValue);
  // Removes the element at iIndex (1 <= iIndex <= Size()).
  void RemovePosition(int iIndex);
  // Removes every element.
  void RemoveAll() noexcept;
  // Removes every element equal to an earlier one: the first occurrence of
  // each value is kept, and so is the order. Returns how many were removed.
  int RemoveDuplicates();

  // Element-wise equality.
  friend bool operator==(const KORListValKORUnicodeString& iLeft,
                         const KORListValKORUnicodeString& iRight) {
    return iLeft._values == iRight._values;
  }
  friend bool operator!=(const KORListValKORUnicodeString& iLeft,
                         const KORListValKORUnicodeString& iRight) {
    return !(iLeft == iRight);
  }

 private:
  std::vector<KORUnicodeString> _values;
};

#endif
