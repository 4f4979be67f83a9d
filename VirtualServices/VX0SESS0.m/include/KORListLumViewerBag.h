// KORListValKORLumViewerBag: the viewer bags, each an object with its viewers. Equality of elements
// is on the object only, so Locate, RemoveValue and RemoveDuplicates treat bags of one object as
// the same element.
//
// A value list (see KORLumValueList.h): it owns a heap copy of each element,
// positions are 1-based and Locate returns 0 for absence. The list's
// instances of the pattern live in the library.
#ifndef KORListLumViewerBag_h
#define KORListLumViewerBag_h

#include "KORLumValueList.h"
#include "KORLumViewerBag.h"
#include "VX0SESS0Export.h"

extern template class KORLumValueList<KORLumViewerBag>;
extern template class KORLumEditableValueList<KORLumViewerBag>;

class VX0SESS0_API KORListValKORLumViewerBag : public KORLumEditableValueList<KORLumViewerBag> {
 public:
  using KORLumEditableValueList<KORLumViewerBag>::KORLumEditableValueList;
};

#endif
