// KORUnicodeString: the platform's Unicode text, and KORUnicodeChar.
//
// A character is a Unicode code point: lengths, positions and substrings count
// code points and never split one. Narrow text given to or taken from a
// KORUnicodeString is UTF-8; bytes that are not valid UTF-8 are replaced by
// U+FFFD when the string is built (never a crash, never rejected).
//
//   KORUnicodeString path("/data/été/model.hub");
//   path.GetLengthInChar();             // 19 (code points, not bytes)
//   path.FindLast("/");                 // 9
//   path.SubString(10, 5);              // "model"
//   path.ReplaceSubString("é", "e");    // "/data/ete/model.hub", every occurrence
//
// Positions given to and returned by SubString and FindLast are 0-based. The
// string owns its text; ConvertToChar() gives NUL-terminated UTF-8 that stays
// valid until the string changes or dies.
#ifndef KORUnicodeString_h
#define KORUnicodeString_h

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "KORPlatformExport.h"

// One Unicode code point.
using KORUnicodeChar = char32_t;

class KORPLATFORM_API KORUnicodeString {
 public:
  // Strip modes: which ends lose the character.
  enum StripMode { StripLeading = 0, StripBoth = 1, StripTrailing = 2 };

  // The empty string.
  KORUnicodeString() noexcept = default;
  // From NUL-terminated UTF-8; a null pointer gives the empty string.
  // Implicit on purpose: callers pass literals where a string is expected.
  // cppcheck-suppress noExplicitConstructor
  KORUnicodeString(const char* iUtf8);  // NOLINT(google-explicit-constructor): platform string
  // From iByteLength bytes of UTF-8 (which may hold NUL bytes).
  KORUnicodeString(const char* iUtf8, std::size_t iByteLength);
  // From one code point (an invalid code point gives U+FFFD).
  explicit KORUnicodeString(KORUnicodeChar iChar);

  KORUnicodeString(const KORUnicodeString&) = default;
  KORUnicodeString(KORUnicodeString&&) noexcept;
  KORUnicodeString& operator=(const KORUnicodeString&) = default;
  KORUnicodeString& operator=(KORUnicodeString&&) noexcept;
  KORUnicodeString& operator=(const char* iUtf8);
  ~KORUnicodeString() = default;

  // Number of code points; constant time.
  [[nodiscard]] int GetLengthInChar() const noexcept { return _length; }
  // Number of bytes of the UTF-8 form.
  [[nodiscard]] int GetLengthInByte() const noexcept { return static_cast<int>(_text.size()); }

  // NUL-terminated UTF-8, valid until the string changes or dies.
  [[nodiscard]] const char* ConvertToChar() const noexcept { return _text.c_str(); }
  // The UTF-8 bytes, without copy.
  [[nodiscard]] std::string_view View() const noexcept { return _text; }

  // Exact code-point equality: no case folding, no normalisation.
  friend bool operator==(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return iLeft._text == iRight._text;
  }
  friend bool operator!=(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return iLeft._text != iRight._text;
  }
  // Code-point order (for sorting).
  friend bool operator<(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return iLeft._text < iRight._text;
  }

  // Appends the other text; returns this string. (Inline: a line built of
  // many pieces appends each without a call into the platform.)
  KORUnicodeString& Append(const KORUnicodeString& iOther) {
    _text.append(iOther._text);
    _length += iOther._length;
    return *this;
  }

  // Makes room for iByteLength bytes of UTF-8, so that appending up to that
  // size allocates nothing more; the text does not change. A length at or
  // below the present size does nothing.
  void Reserve(int iByteLength) {
    if (iByteLength > 0) _text.reserve(static_cast<std::size_t>(iByteLength));
  }

  // iLength code points from position iStart (0-based), clamped to the string:
  // a start before 0 counts from 0, a start or length past the end stops at
  // the end, and a negative length gives the empty string.
  [[nodiscard]] KORUnicodeString SubString(int iStart, int iLength) const;

  // Position (0-based) of the last occurrence of iSub, or -1 when it does not
  // occur. An empty iSub is found at the end: the result is GetLengthInChar().
  [[nodiscard]] int FindLast(const KORUnicodeString& iSub) const;

  // Replaces every occurrence of iOld by iNew, scanning the original text from
  // left to right: text that a replacement inserts is not scanned again.
  // Returns the number of replacements (0 for an empty iOld).
  int ReplaceSubString(const KORUnicodeString& iOld, const KORUnicodeString& iNew);

  // Sets the string to the printf rendering of iValue and returns 0. The
  // format must hold exactly one conversion, with literal text and "%%"
  // allowed around it and flags, width and precision allowed in it: one of
  // d i o u x X (no length modifier) for an int, one of lu lo lx lX ld li for
  // an unsigned long. Any other format ("%s", "%n", "%ld" for an int, two
  // conversions, none, "*" widths, a null format, a width or a precision
  // above 4096) is refused: the string becomes empty and a non-zero value is
  // returned.
  int BuildFromNum(int iValue, const char* iFormat);
  int BuildFromNum(unsigned long iValue, const char* iFormat);

  // Copy without iChar at the start (StripLeading, 0), at both ends
  // (StripBoth, 1) or at the end (StripTrailing, 2): every repetition of the
  // character is removed there. Any other mode gives an unchanged copy.
  [[nodiscard]] KORUnicodeString Strip(int iMode, const KORUnicodeChar& iChar) const;

  // Makes the string empty.
  void Reset() noexcept;

  // The byte offset of the first ill-formed UTF-8 sequence of iBytes, or
  // std::string_view::npos when all of it is well-formed UTF-8 (the bytes
  // that a string made from iBytes would replace by U+FFFD start there).
  [[nodiscard]] static std::size_t FindIllFormed(std::string_view iBytes) noexcept;

 private:
  // Takes over text known to be valid UTF-8 of iLength code points. A named
  // function rather than a constructor, so that it does not compete with the
  // public (text, byte length) constructor in overload resolution.
  static KORUnicodeString Adopt(std::string&& iValidUtf8, int iLength) noexcept;

  std::string _text;  // always valid UTF-8
  int _length = 0;    // code points in _text
};

KORPLATFORM_API KORUnicodeString operator+(const KORUnicodeString& iLeft,
                                           const KORUnicodeString& iRight);

// Writes the UTF-8 text (nothing for an empty string).
KORPLATFORM_API std::ostream& operator<<(std::ostream& ioStream, const KORUnicodeString& iString);

namespace std {
template <>
struct hash<KORUnicodeString> {
  std::size_t operator()(const KORUnicodeString& iString) const noexcept {
    return std::hash<std::string_view>()(iString.View());
  }
};
}  // namespace std

#endif
