// Test helper: the problems a resource file recorded, one per line, so that a
// failed comparison shows them as lumsess check would.
//
//   EXPECT_EQ(ProblemsOf(file), "test.msgcat:2: no '=' between a key and a value\n");
#ifndef ResourceProblems_h
#define ResourceProblems_h

#include <string>

#include "KORResourceFile.h"

// Each problem followed by a line end; "" when there is none.
inline std::string ProblemsOf(const KORResourceFile& iFile) {
  const KORListValKORUnicodeString problems = iFile.GetProblems();
  std::string text;
  for (int i = 1; i <= problems.Size(); ++i) text.append(problems[i].View()).append("\n");
  return text;
}

#endif
