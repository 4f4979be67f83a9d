// KORLumValueList<T> and KORLumEditableValueList<T>: the pattern of the
// library's typed value lists (KORListValKORLumSessionFile,
// KORListValKORLumSessionFileDef, KORListValKORLumViewerBag,
// KORListValKORLumViewerDef).
//
// A value list owns its elements: every element is the list's own heap copy,
// made with the element's copy constructor when it enters the list and
// destroyed with its destructor when it leaves (removal, shrinking, emptying,
// assignment to the list, or the list's destruction). The copies sit in the
// slots of a KORRawCollPV that the list holds as a member and never shares.
//
// Positions are 1-based: the first element is at 1, the last at Size().
// Indices are not checked by the list; they reach the raw collection, which
// stops the process through an assertion when one is out of range.
// operator[] gives the stored element itself, not a copy; the reference
// stays valid until the element is removed or the list is assigned to or
// destroyed.
//
// Element equality is the element's own int operator== / operator!=; for
// viewer bags and session-file definitions it is deliberately partial (the
// object, the type), and Locate, RemoveValue, RemoveDuplicates and list
// equality inherit that.
//
//   KORListValKORLumViewerDef defs;
//   defs.Append(KORLumViewerDef("Part", "Viewer3D"));
//   defs.Append(KORLumViewerDef("Product", "Viewer2D"));
//   defs.Locate(KORLumViewerDef("Product", "Viewer2D"), 1);  // 2
//   defs.Locate(KORLumViewerDef("Part", "Other"), 1);        // 0: absent
//   defs[1].GetViewer();                                     // "Viewer3D"
//
// The lists open no trace scope and write no trace line.
//
// T needs a copy constructor, a destructor, and const operator== and
// operator!= returning 1 or 0.
#ifndef KORLumValueList_h
#define KORLumValueList_h

#include <memory>

#include "KORRawCollPV.h"
#include "VX0SESS0Export.h"

template <typename T>
class VX0SESS0_API KORLumValueList : public KORCollecRoot {
 public:
  // An empty list.
  KORLumValueList();
  // An empty list with room for iSize elements.
  explicit KORLumValueList(int iSize);
  // An empty list with room for iSize elements; the second argument is
  // accepted for callers that pass one, and ignored.
  KORLumValueList(int iSize, int iIgnored);
  // A list holding a new copy of each element of iCopy, in the same order.
  KORLumValueList(const KORLumValueList& iCopy);
  // Destroys the elements from the last to the first, then the slots.
  ~KORLumValueList() override;

  // Replaces the elements by new copies of those of iCopy (nothing happens
  // when iCopy is this very list).
  KORLumValueList& operator=(const KORLumValueList& iCopy);

  // Adds a new copy of iValue at the end.
  void Append(const T& iValue);

  // Number of elements.
  [[nodiscard]] int Size() const;

  // The element at iIndex itself (1 <= iIndex <= Size()).
  T& operator[](int iIndex);
  const T& operator[](int iIndex) const;

  // Position of the first element at or after iFrom that equals iValue (the
  // stored element's operator== with iValue), or 0 when there is none. iFrom
  // is used as given; a start beyond Size() returns 0 without comparing.
  [[nodiscard]] int Locate(const T& iValue, int iFrom = 1) const;

  // Destroys the element at iIndex; later elements move up by one.
  void RemovePosition(int iIndex);
  // Destroys every element and empties the raw collection, whose storage is
  // released or kept as iMode says.
  void RemoveAll(KORCollec::MemoryHandling iMode);
  // Removes every element equal to an earlier one: the first of equal
  // elements stays, the order of the kept ones is unchanged. Returns how many
  // were removed.
  int RemoveDuplicates();

  // 1 when both lists have the same size and equal elements position by
  // position, else 0. A list is equal to itself without any comparison, and
  // lists of different sizes differ without any comparison.
  int operator==(const KORLumValueList& iOther) const;
  // The negation of operator==.
  int operator!=(const KORLumValueList& iOther) const;

 protected:
  // Implementation details only, past this point: the slots, for the
  // operations that KORLumEditableValueList adds.
  [[nodiscard]] KORRawCollPV& Slots() { return _slots; }
  // A new heap copy of iValue, owned by the caller until stored in a slot.
  static std::unique_ptr<T> NewElement(const T& iValue) { return std::make_unique<T>(iValue); }
  // Destroys the element in iSlot, if any, and clears the slot.
  static void DestroyElement(void*& ioSlot) noexcept;

 private:
  // Destroys the elements from the last position down to the first.
  void DestroyAllElements() noexcept;
  // Appends a new copy of each element of iSource.
  void AppendCopies(const KORLumValueList& iSource);

  KORRawCollPV _slots;
};

// KORLumEditableValueList<T>: a value list that can also insert at a
// position, resize with a filler and remove a given value.
template <typename T>
class VX0SESS0_API KORLumEditableValueList : public KORLumValueList<T> {
 public:
  using KORLumValueList<T>::KORLumValueList;
  using KORLumValueList<T>::Size;

  // Places a new copy of iValue at iIndex (1 <= iIndex <= Size() + 1); the
  // elements from iIndex on move down by one.
  void InsertAt(int iIndex, const T& iValue);

  // Resizes the list to iSize elements. Shrinking destroys the elements past
  // iSize; growing stores a new copy of *iFiller in every new position, so
  // iFiller must not be null when the list grows. Nothing happens, and
  // iFiller is not read, when iSize is the current size.
  void Size(int iSize, const T* iFiller);

  // Removes the first element equal to iValue. Returns its former position,
  // or 0 (nothing removed) when there is none; later equal elements stay.
  int RemoveValue(const T& iValue);
};

// Implementation details only, past this point. The members are defined out
// of the class bodies so that they are not inline: the library instantiates
// them once per element type in its list units, and clients reach those
// instances (declared extern template in the list headers).

template <typename T>
KORLumValueList<T>::KORLumValueList() : KORLumValueList(0) {}

template <typename T>
KORLumValueList<T>::KORLumValueList(int iSize) : KORCollecRoot(), _slots(iSize) {}

template <typename T>
KORLumValueList<T>::KORLumValueList(int iSize, int /*iIgnored*/) : KORLumValueList(iSize) {}

// The new raw collection is empty (its argument is only a capacity), so the
// copies are appended after nothing. Delegating first means the destructor
// cleans up if a copy fails half-way.
template <typename T>
KORLumValueList<T>::KORLumValueList(const KORLumValueList& iCopy) : KORLumValueList(iCopy.Size()) {
  AppendCopies(iCopy);
}

template <typename T>
KORLumValueList<T>::~KORLumValueList() {
  DestroyAllElements();
}

// The list keeps its own collection of slots, emptied and refilled.
template <typename T>
// cppcheck-suppress operatorEqVarError
KORLumValueList<T>& KORLumValueList<T>::operator=(const KORLumValueList& iCopy) {
  if (&iCopy == this) return *this;
  DestroyAllElements();
  _slots.RemoveAll(KORCollec::ReleaseMemory);
  AppendCopies(iCopy);
  return *this;
}

template <typename T>
void KORLumValueList<T>::Append(const T& iValue) {
  std::unique_ptr<T> element = NewElement(iValue);
  _slots.Append(element.get());
  (void)element.release();  // owned by the list from now on
}

template <typename T>
int KORLumValueList<T>::Size() const {
  return _slots.Size();
}

template <typename T>
T& KORLumValueList<T>::operator[](int iIndex) {
  return *static_cast<T*>(_slots[iIndex]);
}

template <typename T>
const T& KORLumValueList<T>::operator[](int iIndex) const {
  return *static_cast<const T*>(_slots[iIndex]);
}

template <typename T>
int KORLumValueList<T>::Locate(const T& iValue, int iFrom) const {
  const int size = Size();
  if (size < iFrom) return 0;
  for (int i = iFrom; i <= size; ++i) {
    if ((*this)[i] == iValue) return i;
  }
  return 0;
}

template <typename T>
void KORLumValueList<T>::RemovePosition(int iIndex) {
  DestroyElement(_slots[iIndex]);
  _slots.RemovePosition(iIndex);
}

template <typename T>
void KORLumValueList<T>::RemoveAll(KORCollec::MemoryHandling iMode) {
  DestroyAllElements();
  _slots.RemoveAll(iMode);
}

template <typename T>
int KORLumValueList<T>::RemoveDuplicates() {
  int removed = 0;
  if (Size() < 1) return 0;
  for (int i = 1; i <= Size(); ++i) {
    int j = i + 1;
    while (j <= Size()) {
      if ((*this)[i] == (*this)[j]) {
        RemovePosition(j);
        ++removed;
      } else {
        ++j;
      }
    }
  }
  return removed;
}

template <typename T>
int KORLumValueList<T>::operator==(const KORLumValueList& iOther) const {
  return (*this != iOther) ? 0 : 1;
}

template <typename T>
int KORLumValueList<T>::operator!=(const KORLumValueList& iOther) const {
  if (&iOther == this) return 0;
  const int size = Size();
  if (size != iOther.Size()) return 1;
  for (int i = 1; i <= size; ++i) {
    if ((*this)[i] != iOther[i]) return 1;
  }
  return 0;
}

template <typename T>
void KORLumValueList<T>::DestroyElement(void*& ioSlot) noexcept {
  delete static_cast<T*>(ioSlot);
  ioSlot = nullptr;
}

template <typename T>
void KORLumValueList<T>::DestroyAllElements() noexcept {
  for (int i = _slots.Size(); i >= 1; --i) DestroyElement(_slots[i]);
}

template <typename T>
void KORLumValueList<T>::AppendCopies(const KORLumValueList& iSource) {
  const int size = iSource.Size();
  for (int i = 1; i <= size; ++i) Append(iSource[i]);
}

template <typename T>
void KORLumEditableValueList<T>::InsertAt(int iIndex, const T& iValue) {
  std::unique_ptr<T> element = this->NewElement(iValue);
  this->Slots().InsertAt(iIndex, element.get());
  (void)element.release();  // owned by the list from now on
}

template <typename T>
void KORLumEditableValueList<T>::Size(int iSize, const T* iFiller) {
  const int size = Size();
  if (iSize == size) return;
  KORRawCollPV& slots = this->Slots();
  if (iSize < size) {
    for (int i = iSize + 1; i <= size; ++i) this->DestroyElement(slots[i]);
    slots.Size(iSize);
    return;
  }
  // The new slots are null until filled; a null slot is skipped wherever
  // elements are destroyed, so a copy failing half-way leaks nothing.
  slots.Size(iSize);
  // iFiller is not null when the list grows: the caller's precondition above.
  for (int i = size + 1; i <= iSize; ++i) {
    slots[i] = this->NewElement(*iFiller).release();  // NOLINT(clang-analyzer-core.NonNull*)
  }
}

template <typename T>
int KORLumEditableValueList<T>::RemoveValue(const T& iValue) {
  const int position = this->Locate(iValue, 1);
  if (position != 0) this->RemovePosition(position);
  return position;
}

#endif
