#include "KORString.h"

KORString::KORString(const char* iText) : _text(iText ? iText : "") {}

KORString::KORString(const char* iText, std::size_t iLength)
    : _text(iText ? std::string(iText, iLength) : std::string()) {}

KORString& KORString::Append(const KORString& iOther) {
  _text.append(iOther._text);
  return *this;
}

KORString& KORString::Append(const char* iText) {
  if (iText) _text.append(iText);
  return *this;
}

KORString operator+(const KORString& iLeft, const KORString& iRight) {
  KORString result(iLeft);
  result.Append(iRight);
  return result;
}
