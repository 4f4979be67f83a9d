#include "KORString.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <unordered_set>
#include <utility>

TEST(KORString, DefaultConstructedStringIsEmpty) {
  const KORString string;
  EXPECT_EQ(string.GetLength(), 0);
  EXPECT_STREQ(string, "");
}

TEST(KORString, ConstructionCopiesTheText) {
  char buffer[] = "TypeGraph";
  const KORString string(buffer);
  buffer[0] = 'X';
  EXPECT_STREQ(string, "TypeGraph");
  EXPECT_EQ(string.GetLength(), 9);
}

TEST(KORString, ConstructionFromNullPointerGivesTheEmptyString) {
  const KORString string(static_cast<const char*>(nullptr));
  EXPECT_EQ(string.GetLength(), 0);
  EXPECT_STREQ(string, "");
}

TEST(KORString, ConstructionFromByteCountKeepsEmbeddedNul) {
  const KORString string("a\0b", 3);
  EXPECT_EQ(string.GetLength(), 3);
  EXPECT_EQ(string.View(), std::string_view("a\0b", 3));
}

TEST(KORString, LengthCountsBytes) { EXPECT_EQ(KORString("été").GetLength(), 5); }

TEST(KORString, ConversionGivesNulTerminatedText) {
  const KORString string("TypeGraph.Msg");
  const char* text = string;
  EXPECT_EQ(std::strlen(text), 13u);
  EXPECT_STREQ(text, "TypeGraph.Msg");
  EXPECT_STREQ(string.c_str(), "TypeGraph.Msg");
}

TEST(KORString, AppendAddsTheOtherStringsBytes) {
  KORString string("TypeGraph");
  string.Append(KORString(".Msg"));
  EXPECT_STREQ(string, "TypeGraph.Msg");
  EXPECT_EQ(string.GetLength(), 13);
}

TEST(KORString, AppendAddsText) {
  KORString string("é");
  string.Append("t").Append("é");
  EXPECT_STREQ(string, "été");
}

TEST(KORString, AppendOfNullPointerChangesNothing) {
  KORString string("key");
  string.Append(static_cast<const char*>(nullptr));
  EXPECT_STREQ(string, "key");
}

TEST(KORString, AppendReturnsTheStringItself) {
  KORString string("a");
  EXPECT_EQ(&string.Append("b"), &string);
}

TEST(KORString, PlusConcatenatesWithoutChangingTheOperands) {
  const KORString left("Type");
  const KORString right("Graph");
  const KORString sum = left + right;
  EXPECT_STREQ(sum, "TypeGraph");
  EXPECT_STREQ(left, "Type");
  EXPECT_STREQ(right, "Graph");
}

TEST(KORString, PlusAcceptsText) {
  const KORString key = KORString("TypeGraph") + ".Msg";
  EXPECT_STREQ(key, "TypeGraph.Msg");
}

TEST(KORString, EqualBytesCompareEqual) {
  EXPECT_TRUE(KORString("abc") == KORString("abc"));
  EXPECT_FALSE(KORString("abc") != KORString("abc"));
}

TEST(KORString, DifferentBytesCompareDifferent) {
  EXPECT_TRUE(KORString("abc") != KORString("abd"));
  EXPECT_TRUE(KORString("abc") != KORString("ab"));
  EXPECT_FALSE(KORString("abc") == KORString("ABC"));
}

TEST(KORString, EqualityDoesNotNormalise) {
  EXPECT_NE(KORString("\xC3\xA9"), KORString("e\xCC\x81"));
}

TEST(KORString, EqualityComparesEmbeddedNul) {
  EXPECT_NE(KORString("a\0b", 3), KORString("a\0c", 3));
  EXPECT_NE(KORString("a\0b", 3), KORString("a"));
}

TEST(KORString, ComparesWithText) {
  const KORString key("TypeGraph");
  EXPECT_TRUE(key == "TypeGraph");
  EXPECT_TRUE("TypeGraph" == key);
  EXPECT_FALSE(key != "TypeGraph");
  EXPECT_TRUE(key != "TypeGraph.Msg");
  EXPECT_TRUE("Type" != key);
}

TEST(KORString, ComparisonWithNullPointerMatchesOnlyTheEmptyString) {
  const char* none = nullptr;
  EXPECT_TRUE(KORString() == none);
  EXPECT_TRUE(KORString("a") != none);
}

TEST(KORString, CopyIsEqualAndIndependent) {
  const KORString original("key");
  KORString copy(original);
  EXPECT_EQ(copy, original);
  copy.Append(".Msg");
  EXPECT_STREQ(original, "key");
}

TEST(KORString, EqualStringsHashEqually) {
  const std::hash<KORString> hash;
  EXPECT_EQ(hash(KORString("Type") + KORString("Graph")), hash(KORString("TypeGraph")));
}

TEST(KORString, StringsAreUsableAsUnorderedSetKeys) {
  std::unordered_set<KORString> set;
  EXPECT_TRUE(set.insert(KORString("TypeGraph")).second);
  EXPECT_TRUE(set.insert(KORString("TypeDoc")).second);
  EXPECT_FALSE(set.insert(KORString("Type") + KORString("Graph")).second);
  EXPECT_EQ(set.size(), 2u);
  EXPECT_EQ(set.count(KORString("TypeDoc")), 1u);
  EXPECT_EQ(set.count(KORString("Type")), 0u);
}

// Short texts are kept in the string object and longer ones on the heap; the
// tests below cross that boundary in every direction, with lengths around it.
class KORStringOfLength : public ::testing::TestWithParam<std::size_t> {
 protected:
  static std::string Text(std::size_t iLength, char iFirst = 'a') {
    std::string text;
    for (std::size_t i = 0; i < iLength; ++i) text.push_back(static_cast<char>(iFirst + i % 26));
    return text;
  }
};

TEST_P(KORStringOfLength, KeepsItsTextWhole) {
  const std::string text = Text(GetParam());
  const KORString string(text.c_str());
  EXPECT_EQ(string.GetLength(), static_cast<int>(text.size()));
  EXPECT_EQ(std::string(string.c_str()), text);
}

TEST_P(KORStringOfLength, CopyAndMoveKeepTheTextAndMoveLeavesTheSourceEmpty) {
  const std::string text = Text(GetParam());
  KORString source(text.c_str());
  const KORString copy(source);
  KORString moved(std::move(source));
  EXPECT_EQ(std::string(copy.c_str()), text);
  EXPECT_EQ(std::string(moved.c_str()), text);
  EXPECT_EQ(source.GetLength(), 0);  // NOLINT(bugprone-use-after-move): moved-from state
  EXPECT_STREQ(source.c_str(), "");
  source = KORString("again");
  EXPECT_STREQ(source.c_str(), "again");
}

TEST_P(KORStringOfLength, AssignmentsReplaceLongerAndShorterTexts) {
  const std::string text = Text(GetParam());
  for (const std::size_t other :
       {std::size_t{0}, std::size_t{5}, std::size_t{39}, std::size_t{40}, std::size_t{200}}) {
    KORString copied(Text(other, 'A').c_str());
    copied = KORString(text.c_str());
    EXPECT_EQ(std::string(copied.c_str()), text) << "over a text of " << other;
    KORString movedInto(Text(other, 'A').c_str());
    KORString source(text.c_str());
    movedInto = std::move(source);
    EXPECT_EQ(std::string(movedInto.c_str()), text) << "over a text of " << other;
  }
}

TEST_P(KORStringOfLength, AppendingItselfDoublesTheText) {
  const std::string text = Text(GetParam());
  KORString string(text.c_str());
  string.Append(string);
  EXPECT_EQ(std::string(string.c_str()), text + text);
  string.Append(string.c_str() + 1);
  EXPECT_EQ(std::string(string.c_str()), text + text + (text + text).substr(text.empty() ? 0 : 1));
}

TEST_P(KORStringOfLength, SelfAssignmentKeepsTheText) {
  const std::string text = Text(GetParam());
  KORString string(text.c_str());
  const KORString& same = string;
  string = same;
  EXPECT_EQ(std::string(string.c_str()), text);
  string = std::move(string);  // NOLINT(performance-move-const-arg,clang-diagnostic-self-move)
  EXPECT_EQ(std::string(string.c_str()), text);
}

TEST_P(KORStringOfLength, AppendingPieceByPieceGivesTheWholeText) {
  const std::string text = Text(GetParam());
  KORString string;
  for (const char byte : text) string.Append(KORString(&byte, 1));
  EXPECT_EQ(std::string(string.c_str()), text);
  EXPECT_EQ(string, KORString(text.c_str()));
}

INSTANTIATE_TEST_SUITE_P(AroundTheInlineSize, KORStringOfLength,
                         ::testing::Values(0, 1, 15, 16, 38, 39, 40, 41, 79, 80, 81, 1000));
