// KORRawCollPV: the platform's untyped collection of pointers, and its root.
//
// A KORRawCollPV is a 1-based array of `void*` slots. It never owns what the
// slots point to: freeing the pointed-to objects is the business of whoever
// put them there (the typed value lists of the session-file library do).
//
// A position out of range (operator[], InsertAt, RemovePosition) or a negative
// count (Size) is a programming error: the process stops through __assert.
#ifndef KORRawCollPV_h
#define KORRawCollPV_h

#include <vector>

#include "KORPlatformExport.h"

// Root of the platform's collections. Its only virtual operation is the
// destructor.
class KORPLATFORM_API KORCollecRoot {
 public:
  KORCollecRoot() = default;
  KORCollecRoot(const KORCollecRoot&) = default;
  KORCollecRoot& operator=(const KORCollecRoot&) = default;
  virtual ~KORCollecRoot();
};

namespace KORCollec {
// What emptying a collection does to its storage.
enum MemoryHandling {
  ReleaseMemory = 0,  // the storage is released
  KeepMemory = 1      // the capacity is kept for later growth
};
}  // namespace KORCollec

class KORPLATFORM_API KORRawCollPV : public KORCollecRoot {
 public:
  // An empty collection with room for iInitialCapacity slots (a negative
  // capacity is taken as 0).
  explicit KORRawCollPV(int iInitialCapacity = 0);
  KORRawCollPV(const KORRawCollPV&) = default;
  KORRawCollPV& operator=(const KORRawCollPV&) = default;
  ~KORRawCollPV() override;

  // Number of slots.
  [[nodiscard]] int Size() const noexcept { return static_cast<int>(_slots.size()); }
  // Sets the number of slots (iCount >= 0): new slots at the end are null,
  // slots beyond the new count are dropped without touching what they point to.
  void Size(int iCount);

  // The slot at iIndex (1 <= iIndex <= Size()) itself, assignable.
  void*& operator[](int iIndex);
  void* operator[](int iIndex) const;

  // Adds a slot at the end.
  void Append(void* iPointer);
  // Places a slot at iIndex (1 <= iIndex <= Size() + 1); later slots move down.
  void InsertAt(int iIndex, void* iPointer);
  // Removes the slot at iIndex (1 <= iIndex <= Size()); later slots move up.
  void RemovePosition(int iIndex);
  // Removes every slot; the storage is released or kept as iMode says.
  void RemoveAll(KORCollec::MemoryHandling iMode = KORCollec::ReleaseMemory);

 private:
  std::vector<void*> _slots;
};

#endif
