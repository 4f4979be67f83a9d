#include "KORUnicodeString.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <utility>

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD in UTF-8

// Matches the longest prefix, at iText[0..iSize), of a well-formed UTF-8
// sequence (no overlong form, no surrogate, nothing above U+10FFFF). Sets
// oLength to the length a sequence with that lead byte must have (0 when the
// byte cannot start one) and returns the number of bytes that match: the
// sequence is valid when both are equal. An ill-formed sequence is replaced
// by one U+FFFD per maximal matching prefix, as Unicode recommends.
std::size_t MatchSequence(const unsigned char* iText, std::size_t iSize, std::size_t& oLength) {
  const unsigned char lead = iText[0];
  unsigned char low = 0x80;  // bounds of the second byte
  unsigned char high = 0xBF;
  if (lead < 0x80) {
    oLength = 1;
  } else if (lead >= 0xC2 && lead <= 0xDF) {
    oLength = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    oLength = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    oLength = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    oLength = 0;
    return 0;
  }
  std::size_t matched = 1;
  while (matched < oLength && matched < iSize) {
    const unsigned char next = iText[matched];
    if (next < (matched == 1 ? low : 0x80) || next > (matched == 1 ? high : 0xBF)) break;
    ++matched;
  }
  return matched;
}

// Copies iText into oValid, replacing ill-formed sequences by U+FFFD, and
// returns the number of code points.
int Sanitize(const char* iText, std::size_t iSize, std::string& oValid) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(iText);
  // Most texts (keys, labels, paths, templates) are ASCII: one copy, no
  // per-run appending.
  std::size_t ascii = 0;
  while (ascii < iSize && bytes[ascii] < 0x80) ++ascii;
  if (ascii == iSize) {
    oValid.assign(iText, iSize);
    return static_cast<int>(iSize);
  }
  oValid.clear();
  oValid.reserve(iSize);
  oValid.append(iText, ascii);
  int count = static_cast<int>(ascii);
  std::size_t i = ascii;
  while (i < iSize) {
    // Fast path for runs of ASCII.
    std::size_t start = i;
    while (i < iSize && bytes[i] < 0x80) ++i;
    if (i > start) {
      oValid.append(iText + start, i - start);
      count += static_cast<int>(i - start);
      continue;
    }
    std::size_t length = 0;
    const std::size_t matched = MatchSequence(bytes + i, iSize - i, length);
    if (length > 0 && matched == length) {
      oValid.append(iText + i, length);
      i += length;
    } else {
      oValid.append(kReplacement, 3);
      i += matched > 0 ? matched : 1;
    }
    ++count;
  }
  return count;
}

// Position of the first occurrence of the non-empty iNeedle in iText at or
// after iFrom, or npos. Each byte equal to the needle's first is found with
// memchr and the rest of the needle compared byte by byte: the texts searched
// here have often just been written (one replacement after another in one
// template), and the C library's memcmp would read them back in wider loads
// than they were written with, which the processor cannot serve from its
// pending stores: every candidate would wait for the stores to land.
std::size_t FindFrom(std::string_view iText, std::string_view iNeedle, std::size_t iFrom) {
  const std::size_t size = iNeedle.size();
  if (iFrom > iText.size() || size > iText.size() - iFrom) return std::string::npos;
  const char* const begin = iText.data();
  const char* const last = begin + (iText.size() - size);  // last possible start
  for (const char* at = begin + iFrom; at <= last; ++at) {
    at = static_cast<const char*>(
        std::memchr(at, iNeedle[0], static_cast<std::size_t>(last - at) + 1));
    if (at == nullptr) return std::string::npos;
    std::size_t matched = 1;
    while (matched < size && at[matched] == iNeedle[matched]) ++matched;
    if (matched == size) return static_cast<std::size_t>(at - begin);
  }
  return std::string::npos;
}

bool IsContinuation(char iByte) { return (static_cast<unsigned char>(iByte) & 0xC0) == 0x80; }

int CountCodePoints(std::string_view iText) {
  int count = 0;
  for (char byte : iText) {
    if (!IsContinuation(byte)) ++count;
  }
  return count;
}

// Byte offset of code point iIndex (0 <= iIndex <= number of code points).
std::size_t ByteOffset(std::string_view iText, int iIndex) {
  std::size_t offset = 0;
  for (int seen = 0; offset < iText.size(); ++offset) {
    if (!IsContinuation(iText[offset])) {
      if (seen == iIndex) return offset;
      ++seen;
    }
  }
  return iText.size();
}

void EncodeUtf8(KORUnicodeChar iChar, std::string& oText) {
  const auto code = static_cast<std::uint32_t>(iChar);
  if ((code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF) {
    oText.append(kReplacement, 3);
  } else if (code < 0x80) {
    oText.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    oText.push_back(static_cast<char>(0xC0 | (code >> 6)));
    oText.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else if (code < 0x10000) {
    oText.push_back(static_cast<char>(0xE0 | (code >> 12)));
    oText.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    oText.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    oText.push_back(static_cast<char>(0xF0 | (code >> 18)));
    oText.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
    oText.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    oText.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

// The largest width or precision BuildFromNum accepts: a number is rendered
// in a few dozen characters, and a larger field would only make the
// rendering as large as the caller asked (up to gigabytes).
constexpr long kMaxFieldSize = 4096;

// Skips the digits at ioPosition (none is fine); false when the number they
// write is above kMaxFieldSize.
bool SkipBoundedNumber(const char*& ioPosition) {
  long number = 0;
  for (; *ioPosition >= '0' && *ioPosition <= '9'; ++ioPosition) {
    number = number * 10 + (*ioPosition - '0');
    if (number > kMaxFieldSize) return false;
  }
  return true;
}

// Checks a printf format for BuildFromNum: besides "%%", exactly one
// conversion (flags, width and precision allowed), with the length modifier
// "l" when iLongArgument is true and none otherwise, and one of the integer
// conversion letters d, i, o, u, x and X. oConversion receives the letter.
bool IsSingleConversionFormat(const char* iFormat, bool iLongArgument, char& oConversion) {
  if (!iFormat) return false;
  int conversions = 0;
  for (const char* p = iFormat; *p; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p == '%') continue;
    if (++conversions > 1) return false;
    while (*p == '-' || *p == '+' || *p == ' ' || *p == '#' || *p == '0') ++p;
    if (!SkipBoundedNumber(p)) return false;  // the width
    if (*p == '.') {
      ++p;
      if (!SkipBoundedNumber(p)) return false;  // the precision
    }
    const bool hasLong = (*p == 'l');
    if (hasLong) ++p;
    if (hasLong != iLongArgument) return false;
    if (*p == '\0' || !std::strchr("diouxX", *p)) return false;
    oConversion = *p;
  }
  return conversions == 1;
}

template <typename Number>
int FormatNumber(const char* iFormat, Number iValue, std::string& oText) {
  const int size = std::snprintf(nullptr, 0, iFormat, iValue);
  if (size < 0) return 1;
  oText.assign(static_cast<std::size_t>(size) + 1, '\0');
  // Writes the size measured above: its count is known already.
  (void)std::snprintf(oText.data(), oText.size(), iFormat, iValue);
  oText.resize(static_cast<std::size_t>(size));
  return 0;
}

}  // namespace

KORUnicodeString::KORUnicodeString(const char* iUtf8) {
  if (iUtf8) _length = Sanitize(iUtf8, std::strlen(iUtf8), _text);
}

KORUnicodeString::KORUnicodeString(const char* iUtf8, std::size_t iByteLength) {
  if (iUtf8) _length = Sanitize(iUtf8, iByteLength, _text);
}

KORUnicodeString::KORUnicodeString(KORUnicodeChar iChar) : _length(1) { EncodeUtf8(iChar, _text); }

std::size_t KORUnicodeString::FindIllFormed(std::string_view iBytes) noexcept {
  const auto* bytes = reinterpret_cast<const unsigned char*>(iBytes.data());
  std::size_t i = 0;
  while (i < iBytes.size()) {
    if (bytes[i] < 0x80) {
      ++i;
      continue;
    }
    std::size_t length = 0;
    const std::size_t matched = MatchSequence(bytes + i, iBytes.size() - i, length);
    if (length == 0 || matched != length) return i;
    i += length;
  }
  return std::string_view::npos;
}

KORUnicodeString KORUnicodeString::Adopt(std::string&& iValidUtf8, int iLength) noexcept {
  KORUnicodeString result;
  result._text = std::move(iValidUtf8);
  result._length = iLength;
  return result;
}

KORUnicodeString::KORUnicodeString(KORUnicodeString&& iOther) noexcept
    : _text(std::move(iOther._text)), _length(std::exchange(iOther._length, 0)) {
  iOther._text.clear();
}

KORUnicodeString& KORUnicodeString::operator=(KORUnicodeString&& iOther) noexcept {
  if (this != &iOther) {
    _text = std::move(iOther._text);
    _length = std::exchange(iOther._length, 0);
    iOther._text.clear();
  }
  return *this;
}

KORUnicodeString& KORUnicodeString::operator=(const char* iUtf8) {
  // iUtf8 may point into this string's own text (s = s.ConvertToChar() + n):
  // build the new text aside before giving up the old one.
  std::string text;
  const int length = iUtf8 ? Sanitize(iUtf8, std::strlen(iUtf8), text) : 0;
  _text.swap(text);
  _length = length;
  return *this;
}

KORUnicodeString KORUnicodeString::SubString(int iStart, int iLength) const {
  if (iStart < 0) iStart = 0;
  if (iLength <= 0 || iStart >= _length) return KORUnicodeString();
  if (iLength > _length - iStart) iLength = _length - iStart;
  if (static_cast<int>(_text.size()) == _length) {  // ASCII only
    return Adopt(_text.substr(static_cast<std::size_t>(iStart), static_cast<std::size_t>(iLength)),
                 iLength);
  }
  const std::size_t begin = ByteOffset(_text, iStart);
  const std::size_t end = begin + ByteOffset(std::string_view(_text).substr(begin), iLength);
  return Adopt(_text.substr(begin, end - begin), iLength);
}

int KORUnicodeString::FindLast(const KORUnicodeString& iSub) const {
  // A one-byte text (a separator such as "/") is looked for byte by byte:
  // the general search compares the whole text at each position, a call
  // into the C library each time.
  const std::size_t found =
      iSub._text.size() == 1 ? _text.rfind(iSub._text[0]) : _text.rfind(iSub._text);
  if (found == std::string::npos) return -1;
  // A match of valid UTF-8 in valid UTF-8 always starts on a code point.
  return CountCodePoints(std::string_view(_text).substr(0, found));
}

int KORUnicodeString::ReplaceSubString(const KORUnicodeString& iOld, const KORUnicodeString& iNew) {
  if (iOld._text.empty()) return 0;
  std::size_t found = FindFrom(_text, iOld._text, 0);
  if (found == std::string::npos) return 0;
  // The usual case, one occurrence (a field of a display template), is
  // replaced in place: no new buffer while the text fits in the old one.
  // (iOld and iNew may be this very string: their sizes are read first, and
  // the standard string's replace accepts its own text as the new one.)
  const std::size_t oldSize = iOld._text.size();
  if (FindFrom(_text, iOld._text, found + oldSize) == std::string::npos) {
    const int lengthChange = iNew._length - iOld._length;
    _text.replace(found, oldSize, iNew._text);
    _length += lengthChange;
    return 1;
  }
  std::string result;
  result.reserve(_text.size());
  std::size_t from = 0;
  int count = 0;
  while (found != std::string::npos) {
    result.append(_text, from, found - from);
    result.append(iNew._text);
    from = found + iOld._text.size();
    found = FindFrom(_text, iOld._text, from);
    ++count;
  }
  result.append(_text, from, std::string::npos);
  _text = std::move(result);
  _length += count * (iNew._length - iOld._length);
  return count;
}

int KORUnicodeString::BuildFromNum(int iValue, const char* iFormat) {
  char conversion = 0;
  Reset();
  if (!IsSingleConversionFormat(iFormat, false, conversion)) return 1;
  std::string text;
  const int status = (conversion == 'd' || conversion == 'i')
                         ? FormatNumber(iFormat, iValue, text)
                         : FormatNumber(iFormat, static_cast<unsigned int>(iValue), text);
  if (status != 0) return status;
  *this = KORUnicodeString(text.data(), text.size());
  return 0;
}

int KORUnicodeString::BuildFromNum(unsigned long iValue, const char* iFormat) {
  char conversion = 0;
  Reset();
  if (!IsSingleConversionFormat(iFormat, true, conversion)) return 1;
  std::string text;
  const int status = (conversion == 'd' || conversion == 'i')
                         ? FormatNumber(iFormat, static_cast<long>(iValue), text)
                         : FormatNumber(iFormat, iValue, text);
  if (status != 0) return status;
  *this = KORUnicodeString(text.data(), text.size());
  return 0;
}

KORUnicodeString KORUnicodeString::Strip(int iMode, const KORUnicodeChar& iChar) const {
  if (iMode != StripLeading && iMode != StripBoth && iMode != StripTrailing) return *this;
  std::string character;
  EncodeUtf8(iChar, character);
  const std::string_view text(_text);
  std::size_t begin = 0;
  std::size_t end = text.size();
  if (iMode == StripLeading || iMode == StripBoth) {
    while (end - begin >= character.size() &&
           text.compare(begin, character.size(), character) == 0) {
      begin += character.size();
    }
  }
  if (iMode == StripTrailing || iMode == StripBoth) {
    while (end - begin >= character.size() &&
           text.compare(end - character.size(), character.size(), character) == 0) {
      end -= character.size();
    }
  }
  if (begin == 0 && end == text.size()) return *this;
  const int removed = CountCodePoints(text.substr(0, begin)) + CountCodePoints(text.substr(end));
  return Adopt(std::string(text.substr(begin, end - begin)), _length - removed);
}

void KORUnicodeString::Reset() noexcept {
  _text.clear();
  _length = 0;
}

KORUnicodeString operator+(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) {
  KORUnicodeString result(iLeft);
  result.Append(iRight);
  return result;
}

std::ostream& operator<<(std::ostream& ioStream, const KORUnicodeString& iString) {
  return ioStream.write(iString.ConvertToChar(), iString.GetLengthInByte());
}
