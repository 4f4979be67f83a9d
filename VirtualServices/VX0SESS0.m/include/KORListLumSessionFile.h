// KORListValKORLumSessionFile: session files. Equality of elements is on all seven members of a
// session file.
//
// A value list (see KORLumValueList.h): it owns a heap copy of each element,
// positions are 1-based and Locate returns 0 for absence. The list's
// instances of the pattern live in the library.
#ifndef KORListLumSessionFile_h
#define KORListLumSessionFile_h

#include "KORLumSessionFile.h"
#include "KORLumValueList.h"
#include "VX0SESS0Export.h"

extern template class KORLumValueList<KORLumSessionFile>;
extern template class KORLumEditableValueList<KORLumSessionFile>;

class VX0SESS0_API KORListValKORLumSessionFile : public KORLumEditableValueList<KORLumSessionFile> {
 public:
  using KORLumEditableValueList<KORLumSessionFile>::KORLumEditableValueList;
};

#endif
