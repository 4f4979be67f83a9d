#include "KORUnicodeString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

// U+FFFD, the replacement character, in UTF-8.
const std::string kReplacement = "\xEF\xBF\xBD";

// Sample text with characters of every UTF-8 length: a (1 byte), é (2),
// € (3), 😀 (4), b (1).
const char kMixed[] = "aé€😀b";

std::string Text(const KORUnicodeString& iString) { return iString.ConvertToChar(); }

std::string Replacements(int iCount) {
  std::string result;
  for (int i = 0; i < iCount; ++i) result += kReplacement;
  return result;
}

KORUnicodeString FromBytes(const std::string& iBytes) {
  return KORUnicodeString(iBytes.data(), iBytes.size());
}

// Independent strict UTF-8 decoder: returns the number of code points, or -1
// when iBytes is not well-formed UTF-8.
int DecodeStrictly(const std::string& iBytes) {
  int count = 0;
  std::size_t i = 0;
  while (i < iBytes.size()) {
    const auto lead = static_cast<unsigned char>(iBytes[i]);
    std::size_t length = 0;
    std::uint32_t code = 0;
    if (lead < 0x80) {
      length = 1;
      code = lead;
    } else if ((lead & 0xE0) == 0xC0) {
      length = 2;
      code = lead & 0x1Fu;
    } else if ((lead & 0xF0) == 0xE0) {
      length = 3;
      code = lead & 0x0Fu;
    } else if ((lead & 0xF8) == 0xF0) {
      length = 4;
      code = lead & 0x07u;
    } else {
      return -1;
    }
    if (i + length > iBytes.size()) return -1;
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(iBytes[i + k]);
      if ((next & 0xC0) != 0x80) return -1;
      code = (code << 6) | (next & 0x3Fu);
    }
    const std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length]) return -1;  // overlong
    if (code >= 0xD800 && code <= 0xDFFF) return -1;
    if (code > 0x10FFFF) return -1;
    i += length;
    ++count;
  }
  return count;
}

// Sets oString to the rendering of iValue and returns BuildFromNum's result.
template <typename Number>
int Build(Number iValue, const char* iFormat, std::string& oText) {
  KORUnicodeString string("previous text");
  const int status = string.BuildFromNum(iValue, iFormat);
  oText = Text(string);
  return status;
}

template <typename Number>
void ExpectBuilt(Number iValue, const char* iFormat, const std::string& iExpected) {
  SCOPED_TRACE(std::string("format \"") + iFormat + "\"");
  std::string text;
  EXPECT_EQ(Build(iValue, iFormat, text), 0);
  EXPECT_EQ(text, iExpected);
}

template <typename Number>
void ExpectRefused(Number iValue, const char* iFormat) {
  SCOPED_TRACE(std::string("format \"") + (iFormat ? iFormat : "(null)") + "\"");
  KORUnicodeString string("previous text");
  EXPECT_NE(string.BuildFromNum(iValue, iFormat), 0);
  EXPECT_STREQ(string.ConvertToChar(), "");
  EXPECT_EQ(string.GetLengthInChar(), 0);
}

}  // namespace

// ---------------------------------------------------------------------------
// Construction and length

TEST(KORUnicodeString, DefaultConstructedStringIsEmpty) {
  const KORUnicodeString string;
  EXPECT_EQ(string.GetLengthInChar(), 0);
  EXPECT_STREQ(string.ConvertToChar(), "");
}

TEST(KORUnicodeString, GetLengthInCharCountsCodePointsNotBytes) {
  const KORUnicodeString string(kMixed);
  EXPECT_EQ(string.GetLengthInChar(), 5);
  EXPECT_EQ(string.GetLengthInByte(), 11);
}

TEST(KORUnicodeString, ConvertToCharGivesTheUtf8Text) {
  const KORUnicodeString string(kMixed);
  EXPECT_STREQ(string.ConvertToChar(), kMixed);
}

TEST(KORUnicodeString, ConstructionFromNullPointerGivesTheEmptyString) {
  const KORUnicodeString string(static_cast<const char*>(nullptr));
  EXPECT_EQ(string.GetLengthInChar(), 0);
  EXPECT_STREQ(string.ConvertToChar(), "");
  EXPECT_EQ(string, KORUnicodeString());
}

TEST(KORUnicodeString, AssignmentFromNullPointerGivesTheEmptyString) {
  KORUnicodeString string(kMixed);
  string = static_cast<const char*>(nullptr);
  EXPECT_EQ(string.GetLengthInChar(), 0);
  EXPECT_STREQ(string.ConvertToChar(), "");
}

TEST(KORUnicodeString, ConstructionFromByteCountKeepsEmbeddedNul) {
  const KORUnicodeString string("a\0é", 4);
  EXPECT_EQ(string.GetLengthInChar(), 3);
  EXPECT_EQ(string.View(), std::string_view("a\0é", 4));
}

TEST(KORUnicodeString, ConstructionFromCodePointEncodesItInUtf8) {
  EXPECT_EQ(Text(KORUnicodeString(U'A')), "A");
  EXPECT_EQ(Text(KORUnicodeString(U'é')), "é");
  EXPECT_EQ(Text(KORUnicodeString(U'€')), "€");
  EXPECT_EQ(Text(KORUnicodeString(U'😀')), "😀");
  EXPECT_EQ(Text(KORUnicodeString(KORUnicodeChar(0x10FFFF))), "\xF4\x8F\xBF\xBF");
}

TEST(KORUnicodeString, ConstructionFromCodePointGivesOneCharacter) {
  EXPECT_EQ(KORUnicodeString(U'😀').GetLengthInChar(), 1);
  EXPECT_EQ(KORUnicodeString(U'é').GetLengthInChar(), 1);
}

TEST(KORUnicodeString, ConstructionFromSurrogateCodePointGivesReplacementCharacter) {
  const KORUnicodeString string(KORUnicodeChar(0xD800));
  EXPECT_EQ(Text(string), kReplacement);
  EXPECT_EQ(string.GetLengthInChar(), 1);
}

TEST(KORUnicodeString, ConstructionFromCodePointAboveMaximumGivesReplacementCharacter) {
  const KORUnicodeString string(KORUnicodeChar(0x110000));
  EXPECT_EQ(Text(string), kReplacement);
  EXPECT_EQ(string.GetLengthInChar(), 1);
}

// ---------------------------------------------------------------------------
// Invalid UTF-8

TEST(KORUnicodeString, LoneContinuationBytesBecomeOneReplacementCharacterEach) {
  const KORUnicodeString string(
      "a\x80\xBF"
      "b");
  EXPECT_EQ(Text(string), "a" + Replacements(2) + "b");
  EXPECT_EQ(string.GetLengthInChar(), 4);
}

TEST(KORUnicodeString, TruncatedSequenceBecomesOneReplacementCharacter) {
  // Three-byte sequence cut after two bytes, followed by ASCII.
  EXPECT_EQ(Text(KORUnicodeString("\xE2\x82"
                                  "a")),
            kReplacement + "a");
  // Four-byte sequence cut at the end of the text.
  EXPECT_EQ(Text(KORUnicodeString("x\xF0\x9F\x98")), "x" + kReplacement);
  // Two-byte lead at the end of the text.
  EXPECT_EQ(Text(KORUnicodeString("x\xC3")), "x" + kReplacement);
  // Four-byte sequence cut by a valid character.
  EXPECT_EQ(Text(KORUnicodeString("\xF0\x9F\x98"
                                  "é")),
            kReplacement + "é");
}

TEST(KORUnicodeString, OverlongFormsBecomeOneReplacementCharacterPerByte) {
  EXPECT_EQ(Text(KORUnicodeString("\xC0\xAF")), Replacements(2));
  EXPECT_EQ(Text(KORUnicodeString("\xC1\xBF")), Replacements(2));
  EXPECT_EQ(Text(KORUnicodeString("\xE0\x80\xAF")), Replacements(3));
  EXPECT_EQ(Text(KORUnicodeString("\xE0\x9F\xBF")), Replacements(3));
  EXPECT_EQ(Text(KORUnicodeString("\xF0\x80\x80\xAF")), Replacements(4));
  EXPECT_EQ(Text(KORUnicodeString("\xF0\x8F\xBF\xBF")), Replacements(4));
}

TEST(KORUnicodeString, EncodedSurrogatesBecomeReplacementCharacters) {
  EXPECT_EQ(Text(KORUnicodeString("\xED\xA0\x80")), Replacements(3));
  EXPECT_EQ(Text(KORUnicodeString("\xED\xBF\xBF")), Replacements(3));
  // The code points just below the surrogates are valid.
  EXPECT_EQ(KORUnicodeString("\xED\x9F\xBF").GetLengthInChar(), 1);
  EXPECT_EQ(Text(KORUnicodeString("\xED\x9F\xBF")), "\xED\x9F\xBF");
}

TEST(KORUnicodeString, BytesF5ToFFBecomeReplacementCharacters) {
  for (int byte = 0xF5; byte <= 0xFF; ++byte) {
    SCOPED_TRACE(byte);
    const std::string bytes{static_cast<char>(byte), '\x80', 'z'};
    const KORUnicodeString string = FromBytes(bytes);
    EXPECT_EQ(Text(string), Replacements(2) + "z");
    EXPECT_EQ(string.GetLengthInChar(), 3);
  }
}

TEST(KORUnicodeString, CodePointsAboveMaximumBecomeReplacementCharacters) {
  EXPECT_EQ(Text(KORUnicodeString("\xF4\x90\x80\x80")), Replacements(4));
  // U+10FFFF itself is valid.
  EXPECT_EQ(KORUnicodeString("\xF4\x8F\xBF\xBF").GetLengthInChar(), 1);
}

TEST(KORUnicodeString, EachMaximalIllFormedSubsequenceBecomesOneReplacementCharacter) {
  // a, F1 80 80 (truncated), E1 80 (truncated), C2 (truncated), b, 80, c, 80,
  // BF, d.
  const KORUnicodeString string("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64");
  EXPECT_EQ(Text(string),
            "a" + Replacements(3) + "b" + Replacements(1) + "c" + Replacements(2) + "d");
  EXPECT_EQ(string.GetLengthInChar(), 10);
}

TEST(KORUnicodeString, ReplacementCharacterInTheInputIsKept) {
  const KORUnicodeString string(kReplacement.c_str());
  EXPECT_EQ(Text(string), kReplacement);
  EXPECT_EQ(string.GetLengthInChar(), 1);
}

TEST(KORUnicodeString, AssignmentFromInvalidUtf8ReplacesTheBadBytes) {
  KORUnicodeString string;
  string =
      "\xFF"
      "a";
  EXPECT_EQ(Text(string), kReplacement + "a");
  EXPECT_EQ(string.GetLengthInChar(), 2);
}

TEST(KORUnicodeString, ConvertToCharIsAlwaysValidUtf8) {
  // Deterministic pseudo-random byte strings biased towards the bytes that
  // matter for UTF-8 (leads, continuations and the invalid ones).
  const unsigned char interesting[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                       0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xED,
                                       0xEF, 0xF0, 0xF1, 0xF4, 0xF5, 0xF8, 0xFE, 0xFF};
  std::uint32_t seed = 12345;
  auto next = [&seed] {
    seed = seed * 1664525u + 1013904223u;
    return seed >> 8;
  };
  for (int round = 0; round < 20000; ++round) {
    std::string bytes;
    const std::size_t size = next() % 9;
    for (std::size_t i = 0; i < size; ++i) {
      const std::uint32_t pick = next();
      bytes.push_back(
          static_cast<char>(pick % 4 == 0 ? pick % 256 : interesting[pick % sizeof interesting]));
    }
    const KORUnicodeString string = FromBytes(bytes);
    const std::string text(string.View());
    const int decoded = DecodeStrictly(text);
    ASSERT_GE(decoded, 0) << "round " << round;
    ASSERT_EQ(decoded, string.GetLengthInChar()) << "round " << round;
    ASSERT_EQ(string.ConvertToChar()[text.size()], '\0') << "round " << round;
    // Valid input comes out unchanged.
    if (DecodeStrictly(bytes) >= 0) {
      ASSERT_EQ(text, bytes) << "round " << round;
    }
  }
}

// ---------------------------------------------------------------------------
// Copy, move, assignment

TEST(KORUnicodeString, CopyIsEqualAndIndependent) {
  KORUnicodeString original(kMixed);
  KORUnicodeString copy(original);
  EXPECT_EQ(copy, original);
  copy.Append("z");
  EXPECT_STREQ(original.ConvertToChar(), kMixed);
  EXPECT_EQ(original.GetLengthInChar(), 5);
  EXPECT_EQ(copy.GetLengthInChar(), 6);
}

TEST(KORUnicodeString, CopyAssignmentIsEqualAndIndependent) {
  const KORUnicodeString original(kMixed);
  KORUnicodeString copy("x");
  copy = original;
  EXPECT_EQ(copy, original);
  copy.Reset();
  EXPECT_STREQ(original.ConvertToChar(), kMixed);
}

TEST(KORUnicodeString, MoveConstructionLeavesTheSourceEmptyAndUsable) {
  KORUnicodeString source(kMixed);
  KORUnicodeString target(std::move(source));
  EXPECT_STREQ(target.ConvertToChar(), kMixed);
  EXPECT_EQ(target.GetLengthInChar(), 5);
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.Move): the moved-from state is what is tested
  EXPECT_EQ(source.GetLengthInChar(), 0);  // NOLINT(bugprone-use-after-move): tested on purpose
  EXPECT_STREQ(source.ConvertToChar(), "");
  source.Append("é");
  EXPECT_EQ(source.GetLengthInChar(), 1);
  EXPECT_STREQ(source.ConvertToChar(), "é");
}

TEST(KORUnicodeString, MoveAssignmentLeavesTheSourceEmptyAndUsable) {
  KORUnicodeString source(kMixed);
  KORUnicodeString target("old");
  target = std::move(source);
  EXPECT_STREQ(target.ConvertToChar(), kMixed);
  EXPECT_EQ(target.GetLengthInChar(), 5);
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.Move): the moved-from state is what is tested
  EXPECT_EQ(source.GetLengthInChar(), 0);  // NOLINT(bugprone-use-after-move): tested on purpose
  EXPECT_STREQ(source.ConvertToChar(), "");
}

TEST(KORUnicodeString, SelfMoveAssignmentKeepsTheText) {
  KORUnicodeString string(kMixed);
  KORUnicodeString& alias = string;
  string = std::move(alias);
  EXPECT_STREQ(string.ConvertToChar(), kMixed);
  EXPECT_EQ(string.GetLengthInChar(), 5);
}

TEST(KORUnicodeString, AssignmentFromTextReplacesTheContent) {
  KORUnicodeString string("old text");
  string = "é€";
  EXPECT_STREQ(string.ConvertToChar(), "é€");
  EXPECT_EQ(string.GetLengthInChar(), 2);
}

TEST(KORUnicodeString, AssignmentFromItsOwnTextKeepsTheText) {
  KORUnicodeString string(kMixed);
  string = string.ConvertToChar();
  EXPECT_STREQ(string.ConvertToChar(), kMixed);
  EXPECT_EQ(string.GetLengthInChar(), 5);
}

TEST(KORUnicodeString, AssignmentFromATailOfItsOwnTextKeepsThatTail) {
  KORUnicodeString string("/data/été");
  string = string.ConvertToChar() + 6;
  EXPECT_STREQ(string.ConvertToChar(), "été");
  EXPECT_EQ(string.GetLengthInChar(), 3);
}

TEST(KORUnicodeString, ResetEmptiesTheString) {
  KORUnicodeString string(kMixed);
  string.Reset();
  EXPECT_EQ(string.GetLengthInChar(), 0);
  EXPECT_STREQ(string.ConvertToChar(), "");
}

// ---------------------------------------------------------------------------
// Append and concatenation

TEST(KORUnicodeString, AppendAddsTextAndCodePoints) {
  KORUnicodeString string("aé");
  string.Append("€😀");
  EXPECT_STREQ(string.ConvertToChar(), "aé€😀");
  EXPECT_EQ(string.GetLengthInChar(), 4);
}

TEST(KORUnicodeString, AppendReturnsTheStringItself) {
  KORUnicodeString string("a");
  EXPECT_EQ(&string.Append("b"), &string);
}

TEST(KORUnicodeString, AppendOfItselfDoublesTheText) {
  KORUnicodeString string("é€");
  string.Append(string);
  EXPECT_STREQ(string.ConvertToChar(), "é€é€");
  EXPECT_EQ(string.GetLengthInChar(), 4);
}

TEST(KORUnicodeString, ReserveKeepsTheText) {
  KORUnicodeString string("aé");
  string.Reserve(200);
  EXPECT_STREQ(string.ConvertToChar(), "aé");
  EXPECT_EQ(string.GetLengthInChar(), 2);
}

TEST(KORUnicodeString, AppendAfterReserveAddsTextAndCodePoints) {
  KORUnicodeString string("a");
  string.Reserve(64);
  string.Append("é€").Append("😀");
  EXPECT_STREQ(string.ConvertToChar(), "aé€😀");
  EXPECT_EQ(string.GetLengthInChar(), 4);
}

TEST(KORUnicodeString, ReserveBelowTheSizeOrNegativeKeepsTheText) {
  KORUnicodeString string("abcdef");
  string.Reserve(2);
  string.Reserve(-5);
  EXPECT_STREQ(string.ConvertToChar(), "abcdef");
  EXPECT_EQ(string.GetLengthInChar(), 6);
}

TEST(KORUnicodeString, PlusConcatenatesWithoutChangingTheOperands) {
  const KORUnicodeString left("aé");
  const KORUnicodeString right("😀");
  const KORUnicodeString sum = left + right;
  EXPECT_STREQ(sum.ConvertToChar(), "aé😀");
  EXPECT_EQ(sum.GetLengthInChar(), 3);
  EXPECT_STREQ(left.ConvertToChar(), "aé");
  EXPECT_STREQ(right.ConvertToChar(), "😀");
}

// ---------------------------------------------------------------------------
// SubString

TEST(KORUnicodeString, SubStringCountsCodePointsNotBytes) {
  const KORUnicodeString string(kMixed);
  const KORUnicodeString sub = string.SubString(1, 3);
  EXPECT_STREQ(sub.ConvertToChar(), "é€😀");
  EXPECT_EQ(sub.GetLengthInChar(), 3);
}

TEST(KORUnicodeString, SubStringOfAsciiTextCountsFromZero) {
  const KORUnicodeString string("model.hub");
  EXPECT_STREQ(string.SubString(6, 3).ConvertToChar(), "hub");
}

TEST(KORUnicodeString, SubStringWithNegativeStartCountsFromTheBeginning) {
  const KORUnicodeString string(kMixed);
  const KORUnicodeString sub = string.SubString(-2, 2);
  EXPECT_STREQ(sub.ConvertToChar(), "aé");
  EXPECT_EQ(sub.GetLengthInChar(), 2);
  EXPECT_STREQ(string.SubString(INT_MIN, 1).ConvertToChar(), "a");
}

TEST(KORUnicodeString, SubStringWithLengthPastTheEndStopsAtTheEnd) {
  const KORUnicodeString string(kMixed);
  const KORUnicodeString sub = string.SubString(3, 100);
  EXPECT_STREQ(sub.ConvertToChar(), "😀b");
  EXPECT_EQ(sub.GetLengthInChar(), 2);
  EXPECT_EQ(string.SubString(0, INT_MAX), string);
  EXPECT_STREQ(string.SubString(4, INT_MAX).ConvertToChar(), "b");
}

TEST(KORUnicodeString, SubStringStartingAtOrPastTheEndIsEmpty) {
  const KORUnicodeString string(kMixed);
  EXPECT_EQ(string.SubString(5, 1).GetLengthInChar(), 0);
  EXPECT_STREQ(string.SubString(5, 1).ConvertToChar(), "");
  EXPECT_STREQ(string.SubString(50, 3).ConvertToChar(), "");
  EXPECT_STREQ(string.SubString(INT_MAX, INT_MAX).ConvertToChar(), "");
}

TEST(KORUnicodeString, SubStringWithNegativeOrZeroLengthIsEmpty) {
  const KORUnicodeString string(kMixed);
  EXPECT_STREQ(string.SubString(1, -1).ConvertToChar(), "");
  EXPECT_EQ(string.SubString(1, -1).GetLengthInChar(), 0);
  EXPECT_STREQ(string.SubString(1, 0).ConvertToChar(), "");
  EXPECT_STREQ(string.SubString(-1, -1).ConvertToChar(), "");
}

TEST(KORUnicodeString, SubStringOfTheEmptyStringIsEmpty) {
  EXPECT_STREQ(KORUnicodeString().SubString(0, 5).ConvertToChar(), "");
}

// ---------------------------------------------------------------------------
// FindLast

TEST(KORUnicodeString, FindLastGivesTheCodePointPositionOfTheLastOccurrence) {
  const KORUnicodeString string("é€aé€b");
  EXPECT_EQ(string.FindLast("é€"), 3);
  EXPECT_EQ(string.FindLast("b"), 5);
  EXPECT_EQ(string.FindLast("é"), 3);
}

TEST(KORUnicodeString, FindLastFindsFourByteCharacters) {
  const KORUnicodeString string("😀x😀y");
  EXPECT_EQ(string.FindLast("😀"), 2);
  EXPECT_EQ(string.FindLast("x😀"), 1);
}

TEST(KORUnicodeString, FindLastFindsOccurrenceAtTheStart) {
  EXPECT_EQ(KORUnicodeString("€abc").FindLast("€a"), 0);
}

TEST(KORUnicodeString, FindLastReturnsMinusOneWhenAbsent) {
  const KORUnicodeString string("aé€");
  EXPECT_EQ(string.FindLast("e"), -1);
  EXPECT_EQ(string.FindLast("€a"), -1);
  EXPECT_EQ(string.FindLast("aé€😀"), -1);
  EXPECT_EQ(KORUnicodeString().FindLast("a"), -1);
}

TEST(KORUnicodeString, FindLastOfTheEmptyStringIsTheLength) {
  EXPECT_EQ(KORUnicodeString("aé€").FindLast(""), 3);
  EXPECT_EQ(KORUnicodeString().FindLast(""), 0);
}

// ---------------------------------------------------------------------------
// ReplaceSubString

TEST(KORUnicodeString, ReplaceSubStringReplacesEveryOccurrence) {
  KORUnicodeString string("a-b-c-");
  EXPECT_EQ(string.ReplaceSubString("-", "+"), 3);
  EXPECT_STREQ(string.ConvertToChar(), "a+b+c+");
}

TEST(KORUnicodeString, ReplaceSubStringDoesNotRescanInsertedText) {
  KORUnicodeString string("aXa");
  EXPECT_EQ(string.ReplaceSubString("a", "aa"), 2);
  EXPECT_STREQ(string.ConvertToChar(), "aaXaa");
  EXPECT_EQ(string.GetLengthInChar(), 5);
}

TEST(KORUnicodeString, ReplaceSubStringLeavesANeedleInTheReplacementAlone) {
  KORUnicodeString string("%t and %t");
  EXPECT_EQ(string.ReplaceSubString("%t", "[%t]"), 2);
  EXPECT_STREQ(string.ConvertToChar(), "[%t] and [%t]");
}

TEST(KORUnicodeString, ReplaceSubStringScansLeftToRightWithoutOverlap) {
  KORUnicodeString string("aaa");
  EXPECT_EQ(string.ReplaceSubString("aa", "b"), 1);
  EXPECT_STREQ(string.ConvertToChar(), "ba");
}

TEST(KORUnicodeString, ReplaceSubStringFindsANeedleAfterPartialMatches) {
  KORUnicodeString string("aaab aab");
  EXPECT_EQ(string.ReplaceSubString("aab", "X"), 2);
  EXPECT_STREQ(string.ConvertToChar(), "aX X");
}

TEST(KORUnicodeString, ReplaceSubStringFindsANeedleThatEndsTheText) {
  KORUnicodeString string("[%l] [%o]");
  EXPECT_EQ(string.ReplaceSubString("%o]", "R+C]"), 1);
  EXPECT_STREQ(string.ConvertToChar(), "[%l] [R+C]");
}

TEST(KORUnicodeString, ReplaceSubStringOfANeedleLongerThanTheTextChangesNothing) {
  KORUnicodeString string("%t");
  EXPECT_EQ(string.ReplaceSubString("%t : %f", "x"), 0);
  EXPECT_STREQ(string.ConvertToChar(), "%t");
  EXPECT_EQ(string.ReplaceSubString("%", "x"), 1);
  EXPECT_STREQ(string.ConvertToChar(), "xt");
}

TEST(KORUnicodeString, ReplaceSubStringWithEmptyNeedleChangesNothing) {
  KORUnicodeString string("aé€");
  EXPECT_EQ(string.ReplaceSubString("", "x"), 0);
  EXPECT_STREQ(string.ConvertToChar(), "aé€");
  EXPECT_EQ(string.GetLengthInChar(), 3);
}

TEST(KORUnicodeString, ReplaceSubStringOfAnAbsentNeedleChangesNothing) {
  KORUnicodeString string("aé€");
  EXPECT_EQ(string.ReplaceSubString("e", "x"), 0);
  EXPECT_STREQ(string.ConvertToChar(), "aé€");
}

TEST(KORUnicodeString, ReplaceSubStringOfNonAsciiTextKeepsTheLengthRight) {
  KORUnicodeString string("é€é");
  EXPECT_EQ(string.ReplaceSubString("é", "😀😀"), 2);
  EXPECT_STREQ(string.ConvertToChar(), "😀😀€😀😀");
  EXPECT_EQ(string.GetLengthInChar(), 5);
  EXPECT_EQ(string.ReplaceSubString("😀€😀", "a"), 1);
  EXPECT_STREQ(string.ConvertToChar(), "😀a😀");
  EXPECT_EQ(string.GetLengthInChar(), 3);
}

TEST(KORUnicodeString, ReplaceSubStringOfOneOccurrenceGrowsTheTextPastItsBuffer) {
  KORUnicodeString string("%t : %f");
  const KORUnicodeString path("/home/user/projects/engine/assemblies/model-é.hub");
  EXPECT_EQ(string.ReplaceSubString("%f", path), 1);
  EXPECT_STREQ(string.ConvertToChar(), "%t : /home/user/projects/engine/assemblies/model-é.hub");
  EXPECT_EQ(string.GetLengthInChar(), 5 + path.GetLengthInChar());
}

TEST(KORUnicodeString, ReplaceSubStringByTheStringItselfUsesItsTextBeforeTheChange) {
  KORUnicodeString once("é%s");
  EXPECT_EQ(once.ReplaceSubString("%s", once), 1);
  EXPECT_STREQ(once.ConvertToChar(), "éé%s");
  EXPECT_EQ(once.GetLengthInChar(), 4);
  KORUnicodeString twice("%s%s");
  EXPECT_EQ(twice.ReplaceSubString("%s", twice), 2);
  EXPECT_STREQ(twice.ConvertToChar(), "%s%s%s%s");
  EXPECT_EQ(twice.GetLengthInChar(), 8);
}

TEST(KORUnicodeString, ReplaceSubStringOfTheStringItselfReplacesItWhole) {
  KORUnicodeString string("é€");
  EXPECT_EQ(string.ReplaceSubString(string, "abc"), 1);
  EXPECT_STREQ(string.ConvertToChar(), "abc");
  EXPECT_EQ(string.GetLengthInChar(), 3);
}

TEST(KORUnicodeString, ReplaceSubStringByEmptyTextRemovesEveryOccurrence) {
  KORUnicodeString string("€a€b€");
  EXPECT_EQ(string.ReplaceSubString("€", ""), 3);
  EXPECT_STREQ(string.ConvertToChar(), "ab");
  EXPECT_EQ(string.GetLengthInChar(), 2);
}

TEST(KORUnicodeString, ReplaceSubStringOfTheWholeTextByItselfAsNeedle) {
  KORUnicodeString string("aé");
  EXPECT_EQ(string.ReplaceSubString(string, "€€€"), 1);
  EXPECT_STREQ(string.ConvertToChar(), "€€€");
  EXPECT_EQ(string.GetLengthInChar(), 3);
}

// ---------------------------------------------------------------------------
// Strip

TEST(KORUnicodeString, StripLeadingRemovesEveryLeadingRepetition) {
  const KORUnicodeString stripped =
      KORUnicodeString("xxaxbxx").Strip(KORUnicodeString::StripLeading, U'x');
  EXPECT_STREQ(stripped.ConvertToChar(), "axbxx");
  EXPECT_EQ(stripped.GetLengthInChar(), 5);
}

TEST(KORUnicodeString, StripBothRemovesEveryRepetitionAtBothEnds) {
  const KORUnicodeString stripped = KORUnicodeString("xxaxbxx").Strip(1, U'x');
  EXPECT_STREQ(stripped.ConvertToChar(), "axb");
  EXPECT_EQ(stripped.GetLengthInChar(), 3);
}

TEST(KORUnicodeString, StripTrailingRemovesEveryTrailingRepetition) {
  const KORUnicodeString stripped = KORUnicodeString("xxaxbxx").Strip(2, U'x');
  EXPECT_STREQ(stripped.ConvertToChar(), "xxaxb");
  EXPECT_EQ(stripped.GetLengthInChar(), 5);
}

TEST(KORUnicodeString, StripRemovesNonAsciiCharacters) {
  const KORUnicodeString accented("ééa€éé");
  EXPECT_STREQ(accented.Strip(1, U'é').ConvertToChar(), "a€");
  EXPECT_EQ(accented.Strip(1, U'é').GetLengthInChar(), 2);
  const KORUnicodeString emoji("😀😀a😀");
  EXPECT_STREQ(emoji.Strip(2, U'😀').ConvertToChar(), "😀😀a");
  EXPECT_EQ(emoji.Strip(0, U'😀').GetLengthInChar(), 2);
}

TEST(KORUnicodeString, StripComparesWholeCodePoints) {
  // "ê" shares its first UTF-8 byte with "é" but is another character.
  EXPECT_STREQ(KORUnicodeString("êaê").Strip(1, U'é').ConvertToChar(), "êaê");
}

TEST(KORUnicodeString, StripOfAStringMadeOnlyOfTheCharacterGivesEmpty) {
  const KORUnicodeString string("€€€");
  for (int mode = 0; mode <= 2; ++mode) {
    SCOPED_TRACE(mode);
    const KORUnicodeString stripped = string.Strip(mode, U'€');
    EXPECT_STREQ(stripped.ConvertToChar(), "");
    EXPECT_EQ(stripped.GetLengthInChar(), 0);
  }
}

TEST(KORUnicodeString, StripWithUnknownModeGivesAnUnchangedCopy) {
  const KORUnicodeString string("xaéx");
  EXPECT_EQ(string.Strip(3, U'x'), string);
  EXPECT_EQ(string.Strip(-1, U'x'), string);
  EXPECT_EQ(string.Strip(3, U'x').GetLengthInChar(), 4);
}

TEST(KORUnicodeString, StripLeavesTheOriginalUnchanged) {
  const KORUnicodeString string("  a  ");
  const KORUnicodeString stripped = string.Strip(1, U' ');
  EXPECT_STREQ(stripped.ConvertToChar(), "a");
  EXPECT_STREQ(string.ConvertToChar(), "  a  ");
}

TEST(KORUnicodeString, StripOfAnAbsentCharacterGivesAnEqualCopy) {
  const KORUnicodeString string("aéb");
  EXPECT_EQ(string.Strip(1, U'x'), string);
}

// ---------------------------------------------------------------------------
// BuildFromNum

TEST(KORUnicodeString, BuildFromNumFormatsAnIntWithEachConversion) {
  ExpectBuilt(-42, "%d", "-42");
  ExpectBuilt(-42, "%i", "-42");
  ExpectBuilt(8, "%o", "10");
  ExpectBuilt(42, "%u", "42");
  ExpectBuilt(255, "%x", "ff");
  ExpectBuilt(255, "%X", "FF");
}

TEST(KORUnicodeString, BuildFromNumRendersANegativeIntUnsignedForUnsignedConversions) {
  ExpectBuilt(-1, "%u", std::to_string(UINT_MAX));
  ExpectBuilt(-1, "%x", std::string(sizeof(unsigned int) * 2, 'f'));
}

TEST(KORUnicodeString, BuildFromNumFormatsTheIntExtremes) {
  ExpectBuilt(INT_MIN, "%d", std::to_string(INT_MIN));
  ExpectBuilt(INT_MAX, "%i", std::to_string(INT_MAX));
}

TEST(KORUnicodeString, BuildFromNumAcceptsFlagsWidthAndPrecisionForAnInt) {
  ExpectBuilt(42, "%05d", "00042");
  ExpectBuilt(42, "%-5d|", "42   |");
  ExpectBuilt(42, "%+d", "+42");
  ExpectBuilt(42, "% d", " 42");
  ExpectBuilt(255, "%#x", "0xff");
  ExpectBuilt(8, "%#o", "010");
  ExpectBuilt(7, "%.4d", "0007");
  ExpectBuilt(7, "%8.3d", "     007");
  ExpectBuilt(0, "%.0d", "");
}

TEST(KORUnicodeString, BuildFromNumAcceptsAWidthAndAPrecisionOf4096) {
  ExpectBuilt(7, "%4096d", std::string(4095, ' ') + "7");
  ExpectBuilt(7, "%.4096d", std::string(4095, '0') + "7");
  ExpectBuilt(7ul, "%-4096lu|", "7" + std::string(4095, ' ') + "|");
}

TEST(KORUnicodeString, BuildFromNumRefusesAWidthAbove4096) {
  ExpectRefused(7, "%4097d");
  ExpectRefused(7, "%2147483647d");
  ExpectRefused(7, "%99999999999999999999d");  // beyond any integer type
  ExpectRefused(7ul, "%04097lx");
}

TEST(KORUnicodeString, BuildFromNumRefusesAPrecisionAbove4096) {
  // Once rendered as 2 GB of zeros in 18 seconds.
  ExpectRefused(7, "%.2147483647d");
  ExpectRefused(7, "%.4097i");
  ExpectRefused(7ul, "%1.5000lu");
}

TEST(KORUnicodeString, BuildFromNumKeepsLiteralTextAndPercentAroundTheConversion) {
  ExpectBuilt(50, "Done: %d%%", "Done: 50%");
  ExpectBuilt(7, "%%%d%%", "%7%");
  ExpectBuilt(3, "été %d €", "été 3 €");
}

TEST(KORUnicodeString, BuildFromNumCountsTheCodePointsOfTheResult) {
  KORUnicodeString string;
  ASSERT_EQ(string.BuildFromNum(3, "été %d €"), 0);
  EXPECT_EQ(string.GetLengthInChar(), 7);
}

TEST(KORUnicodeString, BuildFromNumFormatsAnUnsignedLongWithEachConversion) {
  ExpectBuilt(42ul, "%lu", "42");
  ExpectBuilt(8ul, "%lo", "10");
  ExpectBuilt(255ul, "%lx", "ff");
  ExpectBuilt(255ul, "%lX", "FF");
  ExpectBuilt(42ul, "%ld", "42");
  ExpectBuilt(42ul, "%li", "42");
}

TEST(KORUnicodeString, BuildFromNumFormatsTheLargestUnsignedLong) {
  ExpectBuilt(ULONG_MAX, "%lu", std::to_string(ULONG_MAX));
  ExpectBuilt(ULONG_MAX, "%lx", std::string(sizeof(unsigned long) * 2, 'f'));
}

TEST(KORUnicodeString, BuildFromNumAcceptsFlagsWidthAndPrecisionForAnUnsignedLong) {
  ExpectBuilt(0xBEEFul, "%08lx", "0000beef");
  ExpectBuilt(42ul, "%-6lu|", "42    |");
  ExpectBuilt(255ul, "%#lX", "0XFF");
  ExpectBuilt(5ul, "%.3lu", "005");
  ExpectBuilt(5ul, "[%+4ld]", "[  +5]");
}

TEST(KORUnicodeString, BuildFromNumKeepsLiteralTextAroundAnUnsignedLongConversion) {
  ExpectBuilt(16ul, "options 0x%04lX (100%%)", "options 0x0010 (100%)");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnIntFormatWithAnotherConversion) {
  ExpectRefused(1, "%s");
  ExpectRefused(1, "%n");
  ExpectRefused(1, "%c");
  ExpectRefused(1, "%f");
  ExpectRefused(1, "%p");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnIntFormatWithALengthModifier) {
  ExpectRefused(1, "%ld");
  ExpectRefused(1, "%lu");
  ExpectRefused(1, "%hd");
  ExpectRefused(1, "%hhd");
  ExpectRefused(1, "%lld");
  ExpectRefused(1, "%jd");
  ExpectRefused(1, "%zd");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnIntFormatWithTwoConversions) {
  ExpectRefused(1, "%d %d");
  ExpectRefused(1, "%d%%%x");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnIntFormatWithoutConversion) {
  ExpectRefused(1, "");
  ExpectRefused(1, "no conversion");
  ExpectRefused(1, "100%%");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnIntFormatWithArgumentTakingWidthOrPrecision) {
  ExpectRefused(1, "%*d");
  ExpectRefused(1, "%.*d");
  ExpectRefused(1, "%1$d");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnIntFormatWithATrailingPercent) {
  ExpectRefused(1, "%");
  ExpectRefused(1, "value %");
  ExpectRefused(1, "%d%");
}

TEST(KORUnicodeString, BuildFromNumRefusesANullFormatForAnInt) { ExpectRefused(1, nullptr); }

TEST(KORUnicodeString, BuildFromNumRefusesAnUnsignedLongFormatWithoutLongModifier) {
  ExpectRefused(1ul, "%d");
  ExpectRefused(1ul, "%u");
  ExpectRefused(1ul, "%x");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnUnsignedLongFormatWithAnotherConversion) {
  ExpectRefused(1ul, "%s");
  ExpectRefused(1ul, "%ls");
  ExpectRefused(1ul, "%n");
  ExpectRefused(1ul, "%ln");
  ExpectRefused(1ul, "%lc");
  ExpectRefused(1ul, "%lf");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnUnsignedLongFormatWithAnotherLengthModifier) {
  ExpectRefused(1ul, "%lld");
  ExpectRefused(1ul, "%llu");
  ExpectRefused(1ul, "%hlu");
  ExpectRefused(1ul, "%zu");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnUnsignedLongFormatWithTwoConversionsOrNone) {
  ExpectRefused(1ul, "%lu %lu");
  ExpectRefused(1ul, "%lu%%%lx");
  ExpectRefused(1ul, "none");
  ExpectRefused(1ul, "%%");
}

TEST(KORUnicodeString, BuildFromNumRefusesAnUnsignedLongFormatWithStarOrTrailingPercent) {
  ExpectRefused(1ul, "%*lu");
  ExpectRefused(1ul, "%l");
  ExpectRefused(1ul, "%lu%");
}

TEST(KORUnicodeString, BuildFromNumRefusesANullFormatForAnUnsignedLong) {
  ExpectRefused(1ul, nullptr);
}

TEST(KORUnicodeString, BuildFromNumReplacesThePreviousText) {
  KORUnicodeString string("previous");
  ASSERT_EQ(string.BuildFromNum(12, "%d"), 0);
  EXPECT_STREQ(string.ConvertToChar(), "12");
  EXPECT_EQ(string.GetLengthInChar(), 2);
}

// ---------------------------------------------------------------------------
// Comparison, hashing, output

TEST(KORUnicodeString, EqualTextsCompareEqual) {
  EXPECT_TRUE(KORUnicodeString(kMixed) == KORUnicodeString(kMixed));
  EXPECT_FALSE(KORUnicodeString(kMixed) != KORUnicodeString(kMixed));
}

TEST(KORUnicodeString, EqualityDoesNotNormalise) {
  const KORUnicodeString precomposed("\xC3\xA9");  // U+00E9
  const KORUnicodeString decomposed("e\xCC\x81");  // U+0065 U+0301
  EXPECT_FALSE(precomposed == decomposed);
  EXPECT_TRUE(precomposed != decomposed);
}

TEST(KORUnicodeString, EqualityDoesNotFoldCase) {
  EXPECT_NE(KORUnicodeString("É"), KORUnicodeString("é"));
  EXPECT_NE(KORUnicodeString("a"), KORUnicodeString("A"));
}

TEST(KORUnicodeString, PrefixIsNotEqual) {
  EXPECT_NE(KORUnicodeString("aé"), KORUnicodeString("aé€"));
}

TEST(KORUnicodeString, InvalidBytesCompareEqualToTheReplacementCharacter) {
  EXPECT_EQ(KORUnicodeString("\xFF"), KORUnicodeString(kReplacement.c_str()));
}

TEST(KORUnicodeString, EqualStringsHashEqually) {
  const std::hash<KORUnicodeString> hash;
  KORUnicodeString built("a");
  built.Append("é€");
  EXPECT_EQ(hash(built), hash(KORUnicodeString("aé€")));
}

TEST(KORUnicodeString, StringsAreUsableAsUnorderedSetKeys) {
  std::unordered_set<KORUnicodeString> set;
  EXPECT_TRUE(set.insert(KORUnicodeString("\xC3\xA9")).second);
  EXPECT_TRUE(set.insert(KORUnicodeString("e\xCC\x81")).second);
  EXPECT_FALSE(set.insert(KORUnicodeString("é")).second);
  EXPECT_EQ(set.size(), 2u);
  EXPECT_EQ(set.count(KORUnicodeString("é")), 1u);
  EXPECT_EQ(set.count(KORUnicodeString("e")), 0u);
}

TEST(KORUnicodeString, LessThanOrdersByCodePoint) {
  EXPECT_TRUE(KORUnicodeString("a") < KORUnicodeString("b"));
  EXPECT_TRUE(KORUnicodeString("z") < KORUnicodeString("é"));             // U+007A < U+00E9
  EXPECT_TRUE(KORUnicodeString("é") < KORUnicodeString("€"));             // U+00E9 < U+20AC
  EXPECT_TRUE(KORUnicodeString("\xEF\xBF\xBF") < KORUnicodeString("😀"));  // U+FFFF < U+1F600
  EXPECT_TRUE(KORUnicodeString("ab") < KORUnicodeString("abc"));
  EXPECT_FALSE(KORUnicodeString("é") < KORUnicodeString("z"));
  EXPECT_FALSE(KORUnicodeString("a") < KORUnicodeString("a"));
}

TEST(KORUnicodeString, SortingUsesCodePointOrder) {
  std::vector<KORUnicodeString> strings{"😀", "é", "b", "€", "a", ""};
  std::sort(strings.begin(), strings.end());
  const std::vector<KORUnicodeString> expected{"", "a", "b", "é", "€", "😀"};
  EXPECT_EQ(strings, expected);
}

TEST(KORUnicodeString, StreamOutputWritesTheUtf8Text) {
  std::ostringstream stream;
  stream << "[" << KORUnicodeString(kMixed) << "]";
  EXPECT_EQ(stream.str(), std::string("[") + kMixed + "]");
}

TEST(KORUnicodeString, StreamOutputOfTheEmptyStringWritesNothing) {
  std::ostringstream stream;
  stream << KORUnicodeString();
  EXPECT_EQ(stream.str(), "");
}
