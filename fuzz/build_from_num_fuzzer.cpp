// Fuzz target: KORUnicodeString::BuildFromNum with arbitrary formats, for an
// int and for an unsigned long.
//
// Input: the number (8 bytes, big-endian; its low 32 bits make the int),
// then the format, up to its first NUL.
//
// Invariants: BuildFromNum returns 0 only for a format with exactly one
// conversion allowed for the argument's type ("d i o u x X" for an int,
// "lu lo lx lX ld li" for an unsigned long; flags "-+ #0", a width and a
// precision allowed; "%%" anywhere), and then the string is what snprintf
// writes for that format and number. For every other format ("%s", "%n",
// "%*d", "%1$d", a length modifier that does not match, two conversions or
// none) it returns non-zero and leaves the string empty; it never crashes.
//
// A format that would be allowed but has a width or precision above
// kLargestField (4096) is refused like the others: a larger field would only
// make the rendering as large as asked (a billion bytes for "%1000000000d").
#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "FuzzInvariants.h"
#include "KORUnicodeString.h"

namespace {

constexpr long long kLargestField = 4096;

struct Conversion {
  bool allowed = false;        // exactly one conversion, allowed for the type
  char letter = 0;             // its conversion letter
  long long largestField = 0;  // the largest width or precision written
};

long long ReadField(std::string_view iFormat, std::size_t& ioPosition) {
  long long value = 0;
  while (ioPosition < iFormat.size() && iFormat[ioPosition] >= '0' && iFormat[ioPosition] <= '9') {
    if (value <= LLONG_MAX / 100) value = value * 10 + (iFormat[ioPosition] - '0');
    ++ioPosition;
  }
  return value;
}

// What the format holds, read the way the contract describes it.
Conversion Classify(std::string_view iFormat, bool iLong) {
  Conversion result;
  int conversions = 0;
  bool allowed = true;
  std::size_t i = 0;
  while (i < iFormat.size()) {
    if (iFormat[i++] != '%') continue;
    if (i < iFormat.size() && iFormat[i] == '%') {
      ++i;
      continue;
    }
    ++conversions;
    while (i < iFormat.size() &&
           std::string_view("-+ #0").find(iFormat[i]) != std::string_view::npos) {
      ++i;
    }
    long long field = ReadField(iFormat, i);
    if (i < iFormat.size() && iFormat[i] == '.') {
      ++i;
      field = std::max(field, ReadField(iFormat, i));
    }
    result.largestField = std::max(result.largestField, field);
    const bool hasLong = i < iFormat.size() && iFormat[i] == 'l';
    if (hasLong) ++i;
    const char letter = i < iFormat.size() ? iFormat[i] : '\0';
    if (letter != '\0') ++i;
    if (hasLong != iLong || letter == '\0' ||
        std::string_view("diouxX").find(letter) == std::string_view::npos) {
      allowed = false;
    }
    result.letter = letter;
  }
  result.allowed = allowed && conversions == 1;
  return result;
}

template <typename Number>
bool Render(const char* iFormat, Number iNumber, std::string& oText) {
  const int size = std::snprintf(nullptr, 0, iFormat, iNumber);
  if (size < 0) return false;
  oText.assign(static_cast<std::size_t>(size) + 1, '\0');
  // Writes the length measured above, into room made for it.
  (void)std::snprintf(oText.data(), oText.size(), iFormat, iNumber);
  oText.resize(static_cast<std::size_t>(size));
  return true;
}

void Check(const std::string& iFormat, bool iLong, std::uint64_t iNumber) {
  Conversion conversion = Classify(iFormat, iLong);
  if (conversion.largestField > kLargestField) conversion.allowed = false;

  KORUnicodeString built("previous content");
  const int status = iLong
                         ? built.BuildFromNum(static_cast<unsigned long>(iNumber), iFormat.c_str())
                         : built.BuildFromNum(static_cast<int>(static_cast<std::uint32_t>(iNumber)),
                                              iFormat.c_str());
  FUZZ_REQUIRE(fuzz::IsValidUtf8(built.View()), "the result is not valid UTF-8");
  const std::string what = std::string(iLong ? "unsigned long" : "int") + " format \"" + iFormat +
                           "\" returned " + std::to_string(status) + " and \"" +
                           std::string(built.View()) + "\"";
  if (!conversion.allowed) {
    FUZZ_REQUIRE(status != 0 && built.GetLengthInChar() == 0,
                 what + ": a refused format must give non-zero and an empty string");
    return;
  }
  std::string expected;
  const bool signedLetter = conversion.letter == 'd' || conversion.letter == 'i';
  bool rendered = false;
  if (iLong) {
    rendered = signedLetter
                   ? Render(iFormat.c_str(), static_cast<long>(iNumber), expected)
                   : Render(iFormat.c_str(), static_cast<unsigned long>(iNumber), expected);
  } else {
    const auto low = static_cast<std::uint32_t>(iNumber);
    rendered = signedLetter ? Render(iFormat.c_str(), static_cast<int>(low), expected)
                            : Render(iFormat.c_str(), static_cast<unsigned int>(low), expected);
  }
  if (!rendered) {  // snprintf itself fails (a width beyond INT_MAX)
    FUZZ_REQUIRE(status != 0 && built.GetLengthInChar() == 0,
                 what + ": a format snprintf cannot render must give non-zero and empty");
    return;
  }
  FUZZ_REQUIRE(status == 0, what + ": an allowed format must give 0");
  FUZZ_REQUIRE(built == KORUnicodeString(expected.data(), expected.size()),
               what + ", snprintf gives \"" + expected + "\"");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  fuzz::InputReader input(iData, iSize);
  const auto number = input.Take<std::uint64_t>();
  const std::string format(input.TakeUntil('\0'));
  Check(format, false, number);
  Check(format, true, number);
  return 0;
}
