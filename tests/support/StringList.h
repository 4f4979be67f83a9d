// Test helper: a platform string list written inline.
//
//   KORListValKORUnicodeString viewers = StringList({"V1", "", "V2"});  // 3 elements
#ifndef StringList_h
#define StringList_h

#include <initializer_list>

#include "KORListValKORUnicodeString.h"

// The names, in order, as a 1-based string list.
inline KORListValKORUnicodeString StringList(std::initializer_list<const char*> iNames) {
  KORListValKORUnicodeString list;
  for (const char* name : iNames) list.Append(name);
  return list;
}

#endif
