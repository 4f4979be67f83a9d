// KORString: the platform's narrow string.
//
// A KORString holds bytes, normally UTF-8 text: catalogue names, message keys
// and the text of trace lines. It owns its bytes; the pointer given by the
// conversion to `const char*` stays valid until the string changes or dies.
//
//   KORString key("TypeGraph");
//   key.Append(".Msg");           // "TypeGraph.Msg"
//   puts(key);                     // implicit conversion to const char*
#ifndef KORString_h
#define KORString_h

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "KORPlatformExport.h"

class KORPLATFORM_API KORString {
 public:
  // Empty string.
  KORString() = default;
  // Copies the NUL-terminated text; a null pointer gives the empty string.
  // Implicit on purpose: callers pass literals where a string is expected.
  // cppcheck-suppress noExplicitConstructor
  KORString(const char* iText);  // NOLINT(google-explicit-constructor): platform string
  // Copies iLength bytes (which may include NUL bytes).
  KORString(const char* iText, std::size_t iLength);
  explicit KORString(std::string iText) : _text(std::move(iText)) {}

  KORString(const KORString&) = default;
  KORString(KORString&&) noexcept = default;
  KORString& operator=(const KORString&) = default;
  KORString& operator=(KORString&&) noexcept = default;
  ~KORString() = default;

  // Appends the other string's bytes; returns this string.
  KORString& Append(const KORString& iOther);
  KORString& Append(const char* iText);

  // Number of bytes.
  [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(_text.size()); }

  // NUL-terminated bytes, valid until the string changes or dies.
  operator const char*() const noexcept { return _text.c_str(); }  // NOLINT
  [[nodiscard]] const char* c_str() const noexcept { return _text.c_str(); }
  [[nodiscard]] std::string_view View() const noexcept { return _text; }

  friend bool operator==(const KORString& iLeft, const KORString& iRight) noexcept {
    return iLeft._text == iRight._text;
  }
  friend bool operator!=(const KORString& iLeft, const KORString& iRight) noexcept {
    return iLeft._text != iRight._text;
  }
  // Comparisons with NUL-terminated text (a null pointer is the empty text).
  // Without them `key == "TypeGraph"` would be ambiguous between these
  // operators and the built-in pointer comparison through operator const char*.
  friend bool operator==(const KORString& iLeft, const char* iRight) noexcept {
    return iLeft._text == std::string_view(iRight ? iRight : "");
  }
  friend bool operator==(const char* iLeft, const KORString& iRight) noexcept {
    return iRight == iLeft;
  }
  friend bool operator!=(const KORString& iLeft, const char* iRight) noexcept {
    return !(iLeft == iRight);
  }
  friend bool operator!=(const char* iLeft, const KORString& iRight) noexcept {
    return !(iRight == iLeft);
  }

 private:
  std::string _text;
};

KORPLATFORM_API KORString operator+(const KORString& iLeft, const KORString& iRight);

namespace std {
template <>
struct hash<KORString> {
  std::size_t operator()(const KORString& iString) const noexcept {
    return std::hash<std::string_view>()(iString.View());
  }
};
}  // namespace std

#endif
