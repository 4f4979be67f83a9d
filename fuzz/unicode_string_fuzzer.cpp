// Fuzz target: KORUnicodeString built from arbitrary bytes, and its
// operations that count, cut, search and replace code points.
//
// Input: a start and a length (4 bytes each, big-endian), the byte lengths
// of a search text and of a replacement text (1 byte each), those two texts,
// then the string's own bytes.
//
// Invariants: the text is always valid UTF-8 and the same bytes when the
// input was valid UTF-8; GetLengthInChar counts its code points;
// ConvertToChar is the text, NUL-terminated, and building a string from it
// again gives the text up to its first U+0000; SubString, FindLast,
// ReplaceSubString, Strip and Append agree with the same operations done on
// the decoded code points.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzInvariants.h"
#include "KORUnicodeString.h"

namespace {

using CodePoints = std::vector<char32_t>;

// Checks the string's own invariants and returns its code points.
CodePoints CheckString(const KORUnicodeString& iString, const char* iWhat) {
  CodePoints codePoints;
  FUZZ_REQUIRE(fuzz::DecodeUtf8(iString.View(), &codePoints),
               std::string(iWhat) + " is not valid UTF-8");
  FUZZ_REQUIRE(static_cast<std::size_t>(iString.GetLengthInChar()) == codePoints.size(),
               std::string(iWhat) + ": GetLengthInChar " +
                   std::to_string(iString.GetLengthInChar()) + " but " +
                   std::to_string(codePoints.size()) + " code points");
  const char* text = iString.ConvertToChar();
  FUZZ_REQUIRE(text != nullptr && text[iString.GetLengthInByte()] == '\0',
               std::string(iWhat) + ": ConvertToChar is not NUL-terminated");
  FUZZ_REQUIRE(std::string_view(text, iString.GetLengthInByte()) == iString.View(),
               std::string(iWhat) + ": ConvertToChar is not the text");
  return codePoints;
}

KORUnicodeString Make(const CodePoints& iCodePoints) {
  const std::string text = fuzz::EncodeUtf8(iCodePoints);
  return KORUnicodeString(text.data(), text.size());
}

CodePoints Slice(const CodePoints& iCodePoints, long long iStart, long long iLength) {
  const long long size = static_cast<long long>(iCodePoints.size());
  if (iStart < 0) iStart = 0;
  if (iLength <= 0 || iStart >= size) return {};
  const long long end = std::min(size, iStart + iLength);
  return CodePoints(iCodePoints.begin() + iStart, iCodePoints.begin() + end);
}

// Position of the last occurrence of iNeedle, -1 when absent; the length
// for an empty needle (it occurs at the very end).
int FindLastOf(const CodePoints& iHaystack, const CodePoints& iNeedle) {
  if (iNeedle.size() > iHaystack.size()) return -1;
  for (std::size_t start = iHaystack.size() - iNeedle.size() + 1; start-- > 0;) {
    if (std::equal(iNeedle.begin(), iNeedle.end(),
                   iHaystack.begin() + static_cast<std::ptrdiff_t>(start))) {
      return static_cast<int>(start);
    }
  }
  return -1;
}

// Every non-overlapping occurrence, from left to right, replaced.
CodePoints ReplaceEvery(const CodePoints& iText, const CodePoints& iOld, const CodePoints& iNew,
                        int& oCount) {
  oCount = 0;
  if (iOld.empty()) return iText;
  CodePoints result;
  std::size_t position = 0;
  while (position < iText.size()) {
    if (position + iOld.size() <= iText.size() &&
        std::equal(iOld.begin(), iOld.end(),
                   iText.begin() + static_cast<std::ptrdiff_t>(position))) {
      result.insert(result.end(), iNew.begin(), iNew.end());
      position += iOld.size();
      ++oCount;
    } else {
      result.push_back(iText[position++]);
    }
  }
  return result;
}

CodePoints StripOf(const CodePoints& iText, int iMode, char32_t iChar) {
  if ((iChar >= 0xD800 && iChar <= 0xDFFF) || iChar > 0x10FFFF) iChar = 0xFFFD;
  auto begin = iText.begin();
  auto end = iText.end();
  if (iMode == 0 || iMode == 1) {
    while (begin != end && *begin == iChar) ++begin;
  }
  if (iMode == 2 || iMode == 1) {
    while (end != begin && *(end - 1) == iChar) --end;
  }
  return CodePoints(begin, end);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  fuzz::InputReader input(iData, iSize);
  const auto start = static_cast<int>(input.Take<std::uint32_t>());
  const auto length = static_cast<int>(input.Take<std::uint32_t>());
  const std::size_t oldSize = input.Take<std::uint8_t>();
  const std::size_t newSize = input.Take<std::uint8_t>();
  std::string_view rest = input.Rest();
  const std::string_view oldBytes = rest.substr(0, oldSize);
  rest.remove_prefix(oldBytes.size());
  const std::string_view newBytes = rest.substr(0, newSize);
  rest.remove_prefix(newBytes.size());
  const std::string_view bytes = rest;

  // From bytes, and back.
  const KORUnicodeString string(bytes.data(), bytes.size());
  const CodePoints codePoints = CheckString(string, "the string");
  if (fuzz::IsValidUtf8(bytes)) {
    FUZZ_REQUIRE(string.View() == bytes, "valid UTF-8 was changed");
  } else {
    FUZZ_REQUIRE(std::find(codePoints.begin(), codePoints.end(), U'\uFFFD') != codePoints.end(),
                 "invalid UTF-8 left no U+FFFD");
  }
  FUZZ_REQUIRE(codePoints.size() <= bytes.size(), "more code points than bytes");
  FUZZ_REQUIRE(KORUnicodeString(string.ConvertToChar(), string.GetLengthInByte()) == string,
               "building again from the text changed it");
  const std::size_t firstNul =
      std::find(codePoints.begin(), codePoints.end(), U'\0') - codePoints.begin();
  const KORUnicodeString fromCString(string.ConvertToChar());
  CheckString(fromCString, "the string from ConvertToChar");
  FUZZ_REQUIRE(fromCString == string.SubString(0, static_cast<int>(firstNul)),
               "the string from ConvertToChar is not the text up to its first NUL");
  const std::string cString(bytes.substr(0, bytes.find('\0')));
  FUZZ_REQUIRE(
      KORUnicodeString(cString.c_str()) == KORUnicodeString(cString.data(), cString.size()),
      "the two constructors disagree");
  KORUnicodeString assigned("previous");
  assigned = cString.c_str();
  FUZZ_REQUIRE(assigned == KORUnicodeString(cString.c_str()), "assignment from text differs");

  // SubString.
  const KORUnicodeString sub = string.SubString(start, length);
  FUZZ_REQUIRE(
      CheckString(sub, "SubString") == Slice(codePoints, start, length),
      "SubString(" + std::to_string(start) + ", " + std::to_string(length) + ") is not the slice");

  // FindLast.
  const KORUnicodeString needle(oldBytes.data(), oldBytes.size());
  const CodePoints needlePoints = CheckString(needle, "the search text");
  const int expectedLast = needlePoints.empty() ? static_cast<int>(codePoints.size())
                                                : FindLastOf(codePoints, needlePoints);
  FUZZ_REQUIRE(string.FindLast(needle) == expectedLast,
               "FindLast gave " + std::to_string(string.FindLast(needle)) + ", expected " +
                   std::to_string(expectedLast));

  // ReplaceSubString.
  const KORUnicodeString replacement(newBytes.data(), newBytes.size());
  const CodePoints replacementPoints = CheckString(replacement, "the replacement");
  int expectedCount = 0;
  const CodePoints expectedText =
      ReplaceEvery(codePoints, needlePoints, replacementPoints, expectedCount);
  KORUnicodeString replaced = string;
  const int count = replaced.ReplaceSubString(needle, replacement);
  FUZZ_REQUIRE(count == expectedCount, "ReplaceSubString counted " + std::to_string(count) +
                                           ", expected " + std::to_string(expectedCount));
  FUZZ_REQUIRE(CheckString(replaced, "the replaced string") == expectedText,
               "ReplaceSubString gave another text");

  // Strip, with every mode and one that is not.
  const char32_t stripped = needlePoints.empty() ? static_cast<char32_t>(start) : needlePoints[0];
  for (const int mode : {0, 1, 2, length}) {
    const KORUnicodeString result = string.Strip(mode, stripped);
    const CodePoints expected =
        (mode == 0 || mode == 1 || mode == 2) ? StripOf(codePoints, mode, stripped) : codePoints;
    FUZZ_REQUIRE(CheckString(result, "Strip") == expected,
                 "Strip(" + std::to_string(mode) + ") gave another text");
  }

  // Append and operator+, equality and hashing.
  const KORUnicodeString joined = string + replacement;
  CodePoints expectedJoined = codePoints;
  expectedJoined.insert(expectedJoined.end(), replacementPoints.begin(), replacementPoints.end());
  FUZZ_REQUIRE(CheckString(joined, "operator+") == expectedJoined, "operator+ gave another text");
  FUZZ_REQUIRE(Make(codePoints) == string, "equal code points compare unequal");
  FUZZ_REQUIRE(
      std::hash<KORUnicodeString>()(Make(codePoints)) == std::hash<KORUnicodeString>()(string),
      "equal strings hash differently");
  return 0;
}
