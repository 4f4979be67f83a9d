// Test helper: the elements of a string list as one readable text, so that a
// failed comparison shows the lists themselves.
//
//   EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()), "[fr_CA] [fr] []");
#ifndef ListText_h
#define ListText_h

#include <string>

#include "KORListValKORUnicodeString.h"

// Each element in brackets, separated by one blank; "" for an empty list.
std::string ListText(const KORListValKORUnicodeString& iList);

#endif
