// Test helper: short names for the type and mode values of a session file,
// so that a test's value constructor fits on a line.
//
//   KORLumSessionFile file(kGraph, "/data/model.hub", KORUnicodeString("V"), kStatic, kAll, 0UL);
#ifndef SessionFileValues_h
#define SessionFileValues_h

#include "KORLumSessionFileType.h"

constexpr _KORLumSessionFileType kNone = KORLumSessionFileType_None;
constexpr _KORLumSessionFileType kGraph = KORLumSessionFileType_Graph;
constexpr _KORLumSessionFileType kQuery = KORLumSessionFileType_Query;
constexpr _KORLumGraphSessionLoadMode kLoadNone = KORLumGraphSessionLoadMode_None;
constexpr _KORLumGraphSessionLoadMode kDynamic = KORLumGraphSessionLoadMode_Dynamic;
constexpr _KORLumGraphSessionLoadMode kStatic = KORLumGraphSessionLoadMode_Static;
constexpr _KORLumGraphSessionInstanceMode kInstanceNone = KORLumGraphSessionInstanceMode_None;
constexpr _KORLumGraphSessionInstanceMode kAll = KORLumGraphSessionInstanceMode_All;
constexpr _KORLumGraphSessionInstanceMode kSelected = KORLumGraphSessionInstanceMode_Selected;

#endif
