#include "ListText.h"

std::string ListText(const KORListValKORUnicodeString& iList) {
  std::string text;
  for (int i = 1; i <= iList.Size(); ++i) {
    if (i > 1) text += ' ';
    text.append("[").append(iList[i].View()).append("]");
  }
  return text;
}
