// KORListValKORLumViewerDef: the viewer definitions, each an object with the viewer that shows it.
// Equality of elements is on object and viewer.
//
// A value list (see KORLumValueList.h): it owns a heap copy of each element,
// positions are 1-based and Locate returns 0 for absence. The list's
// instances of the pattern live in the library.
#ifndef KORListLumViewerDef_h
#define KORListLumViewerDef_h

#include "KORLumValueList.h"
#include "KORLumViewerDef.h"
#include "VX0SESS0Export.h"

extern template class KORLumValueList<KORLumViewerDef>;
extern template class KORLumEditableValueList<KORLumViewerDef>;

class VX0SESS0_API KORListValKORLumViewerDef : public KORLumEditableValueList<KORLumViewerDef> {
 public:
  using KORLumEditableValueList<KORLumViewerDef>::KORLumEditableValueList;
};

#endif
