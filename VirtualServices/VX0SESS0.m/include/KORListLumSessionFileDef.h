// KORListValKORLumSessionFileDef: session-file definitions. Equality of elements is on the type
// only, so Locate, RemoveDuplicates and list equality treat definitions of one type as the same
// element.
//
// A value list (see KORLumValueList.h): it owns a heap copy of each element,
// positions are 1-based and Locate returns 0 for absence. The list's
// instances of the pattern live in the library.
//
// Unlike the other lists, this one deliberately has no InsertAt, no resize
// with a filler (Size(int, const T*)) and no RemoveValue: definitions are
// appended, and leave the list by position, as duplicates or all at once.
#ifndef KORListLumSessionFileDef_h
#define KORListLumSessionFileDef_h

#include "KORLumSessionFileDef.h"
#include "KORLumValueList.h"
#include "VX0SESS0Export.h"

extern template class KORLumValueList<KORLumSessionFileDef>;

class VX0SESS0_API KORListValKORLumSessionFileDef : public KORLumValueList<KORLumSessionFileDef> {
 public:
  using KORLumValueList<KORLumSessionFileDef>::KORLumValueList;
};

#endif
