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
  KORString() noexcept = default;
  // Copies the NUL-terminated text; a null pointer gives the empty string.
  // Implicit on purpose: callers pass literals where a string is expected.
  // cppcheck-suppress noExplicitConstructor
  KORString(const char* iText);  // NOLINT(google-explicit-constructor): platform string
  // Copies iLength bytes (which may include NUL bytes).
  KORString(const char* iText, std::size_t iLength);
  explicit KORString(const std::string& iText) : KORString(iText.data(), iText.size()) {}

  KORString(const KORString& iOther);
  KORString(KORString&& iOther) noexcept;
  KORString& operator=(const KORString& iOther);
  KORString& operator=(KORString&& iOther) noexcept;
  ~KORString();

  // Appends the other string's bytes; returns this string.
  KORString& Append(const KORString& iOther);
  KORString& Append(const char* iText);

  // Number of bytes.
  [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(_size); }

  // NUL-terminated bytes, valid until the string changes or dies.
  operator const char*() const noexcept { return data(); }  // NOLINT
  [[nodiscard]] const char* c_str() const noexcept { return data(); }
  [[nodiscard]] std::string_view View() const noexcept { return {data(), _size}; }

  friend bool operator==(const KORString& iLeft, const KORString& iRight) noexcept {
    return iLeft.View() == iRight.View();
  }
  friend bool operator!=(const KORString& iLeft, const KORString& iRight) noexcept {
    return iLeft.View() != iRight.View();
  }
  // Comparisons with NUL-terminated text (a null pointer is the empty text).
  // Without them `key == "TypeGraph"` would be ambiguous between these
  // operators and the built-in pointer comparison through operator const char*.
  friend bool operator==(const KORString& iLeft, const char* iRight) noexcept {
    return iLeft.View() == std::string_view(iRight ? iRight : "");
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
  // Texts of up to kInline bytes, which is most catalogue names, message keys
  // and declaration keys ("KORBRIX.METHOD_LIST(12).COMMAND"), are kept in the
  // object itself: making, copying and dropping them allocates nothing. A
  // longer text is on the heap, in a buffer of _capacity bytes plus its NUL.
  static constexpr std::size_t kInline = 39;

  // The text's buffer, inline or on the heap.
  [[nodiscard]] const char* data() const noexcept {
    if (_heap) return _heap;
    return _inline;
  }
  [[nodiscard]] char* buffer() noexcept {
    if (_heap) return _heap;
    return _inline;
  }
  void Assign(const char* iText, std::size_t iLength);
  void AppendBytes(const char* iText, std::size_t iLength);

  char* _heap = nullptr;  // the text when it does not fit inline, else null
  std::size_t _size = 0;
  std::size_t _capacity = kInline;
  char _inline[kInline + 1] = {};
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
