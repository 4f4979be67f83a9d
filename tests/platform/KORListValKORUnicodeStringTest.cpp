#include "KORListValKORUnicodeString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "StringList.h"

namespace {

std::vector<std::string> Contents(const KORListValKORUnicodeString& iList) {
  std::vector<std::string> contents;
  for (int i = 1; i <= iList.Size(); ++i) contents.emplace_back(iList[i].ConvertToChar());
  return contents;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(KORListValKORUnicodeString, DefaultConstructedListIsEmpty) {
  const KORListValKORUnicodeString list;
  EXPECT_EQ(list.Size(), 0);
}

TEST(KORListValKORUnicodeString, AppendAddsAtTheEnd) {
  KORListValKORUnicodeString list;
  list.Append("Viewer3D");
  list.Append("Visionneuse2D");
  EXPECT_EQ(list.Size(), 2);
  EXPECT_EQ(Contents(list), (Texts{"Viewer3D", "Visionneuse2D"}));
}

TEST(KORListValKORUnicodeString, AppendStoresACopy) {
  KORListValKORUnicodeString list;
  KORUnicodeString value("été");
  list.Append(value);
  value.Append("!");
  EXPECT_STREQ(list[1].ConvertToChar(), "été");
}

TEST(KORListValKORUnicodeString, AppendOfOwnElementCopiesIt) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  list.Append(list[1]);
  EXPECT_EQ(Contents(list), (Texts{"a", "b", "a"}));
}

TEST(KORListValKORUnicodeString, InsertAtOnePlacesTheValueFirst) {
  KORListValKORUnicodeString list = StringList({"b", "c"});
  list.InsertAt(1, "a");
  EXPECT_EQ(Contents(list), (Texts{"a", "b", "c"}));
}

TEST(KORListValKORUnicodeString, InsertInTheMiddleMovesLaterElementsDown) {
  KORListValKORUnicodeString list = StringList({"a", "c"});
  list.InsertAt(2, "b");
  EXPECT_EQ(Contents(list), (Texts{"a", "b", "c"}));
}

TEST(KORListValKORUnicodeString, InsertAtSizePlusOneAppends) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  list.InsertAt(3, "c");
  EXPECT_EQ(Contents(list), (Texts{"a", "b", "c"}));
}

TEST(KORListValKORUnicodeString, InsertAtOneIntoAnEmptyList) {
  KORListValKORUnicodeString list;
  list.InsertAt(1, "é");
  EXPECT_EQ(Contents(list), (Texts{"é"}));
}

TEST(KORListValKORUnicodeString, MutableIndexGivesTheElementItself) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  KORUnicodeString& element = list[2];
  element.Append("é");
  EXPECT_STREQ(list[2].ConvertToChar(), "bé");
  EXPECT_EQ(&list[2], &element);
}

TEST(KORListValKORUnicodeString, MutableIndexIsAssignable) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  list[1] = "z";
  EXPECT_EQ(Contents(list), (Texts{"z", "b"}));
}

TEST(KORListValKORUnicodeString, ConstIndexGivesTheElementItself) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  const KORListValKORUnicodeString& constList = list;
  const KORUnicodeString& element = constList[1];
  EXPECT_EQ(&element, &list[1]);
  list[1] = "changed";
  EXPECT_STREQ(element.ConvertToChar(), "changed");
}

TEST(KORListValKORUnicodeString, LocateGivesThePositionOfTheFirstEqualElement) {
  const KORListValKORUnicodeString list = StringList({"a", "é", "b", "é"});
  EXPECT_EQ(list.Locate("é"), 2);
  EXPECT_EQ(list.Locate("a"), 1);
  EXPECT_EQ(list.Locate("b"), 3);
}

TEST(KORListValKORUnicodeString, LocateGivesZeroWhenAbsent) {
  const KORListValKORUnicodeString list = StringList({"a", "é"});
  EXPECT_EQ(list.Locate("e"), 0);
  EXPECT_EQ(list.Locate("e\xCC\x81"), 0);  // é decomposed
  EXPECT_EQ(KORListValKORUnicodeString().Locate("a"), 0);
}

TEST(KORListValKORUnicodeString, LocateFromAStartSkipsEarlierElements) {
  const KORListValKORUnicodeString list = StringList({"a", "é", "b", "é"});
  EXPECT_EQ(list.Locate("é", 2), 2);
  EXPECT_EQ(list.Locate("é", 3), 4);
  EXPECT_EQ(list.Locate("a", 2), 0);
}

TEST(KORListValKORUnicodeString, LocateFromBeyondTheSizeGivesZero) {
  const KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_EQ(list.Locate("b", 3), 0);
  EXPECT_EQ(list.Locate("b", 100), 0);
}

TEST(KORListValKORUnicodeString, LocateFromBeforeOneStartsAtOne) {
  const KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_EQ(list.Locate("a", 0), 1);
  EXPECT_EQ(list.Locate("a", -5), 1);
}

TEST(KORListValKORUnicodeString, RemoveValueRemovesEveryEqualElement) {
  KORListValKORUnicodeString list = StringList({"é", "a", "é", "b", "é"});
  EXPECT_EQ(list.RemoveValue("é"), 3);
  EXPECT_EQ(Contents(list), (Texts{"a", "b"}));
}

TEST(KORListValKORUnicodeString, RemoveValueOfAnAbsentValueRemovesNothing) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_EQ(list.RemoveValue("c"), 0);
  EXPECT_EQ(Contents(list), (Texts{"a", "b"}));
}

TEST(KORListValKORUnicodeString, RemoveValueOfOneOfItsOwnElementsRemovesEveryEqualElement) {
  KORListValKORUnicodeString list = StringList({"a", "b", "a", "c", "a"});
  EXPECT_EQ(list.RemoveValue(list[1]), 3);
  EXPECT_EQ(Contents(list), (Texts{"b", "c"}));
}

TEST(KORListValKORUnicodeString, RemovePositionMovesLaterElementsUp) {
  KORListValKORUnicodeString list = StringList({"a", "b", "c"});
  list.RemovePosition(2);
  EXPECT_EQ(Contents(list), (Texts{"a", "c"}));
  list.RemovePosition(2);
  EXPECT_EQ(Contents(list), (Texts{"a"}));
  list.RemovePosition(1);
  EXPECT_EQ(list.Size(), 0);
}

TEST(KORListValKORUnicodeString, RemoveAllEmptiesTheList) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  list.RemoveAll();
  EXPECT_EQ(list.Size(), 0);
  list.Append("c");
  EXPECT_EQ(Contents(list), (Texts{"c"}));
}

TEST(KORListValKORUnicodeString, RemoveDuplicatesKeepsFirstOccurrencesInOrder) {
  KORListValKORUnicodeString list = StringList({"b", "é", "b", "a", "é", "b", "c"});
  EXPECT_EQ(list.RemoveDuplicates(), 3);
  EXPECT_EQ(Contents(list), (Texts{"b", "é", "a", "c"}));
}

TEST(KORListValKORUnicodeString, RemoveDuplicatesWithoutDuplicatesRemovesNothing) {
  KORListValKORUnicodeString list = StringList({"a", "é", "e\xCC\x81"});
  EXPECT_EQ(list.RemoveDuplicates(), 0);
  EXPECT_EQ(Contents(list), (Texts{"a", "é", "e\xCC\x81"}));
}

TEST(KORListValKORUnicodeString, RemoveDuplicatesOfAnEmptyListRemovesNothing) {
  KORListValKORUnicodeString list;
  EXPECT_EQ(list.RemoveDuplicates(), 0);
  EXPECT_EQ(list.Size(), 0);
}

TEST(KORListValKORUnicodeString, RemoveDuplicatesTreatsEmptyStringsAsValues) {
  KORListValKORUnicodeString list = StringList({"", "a", "", ""});
  EXPECT_EQ(list.RemoveDuplicates(), 2);
  EXPECT_EQ(Contents(list), (Texts{"", "a"}));
}

TEST(KORListValKORUnicodeString, ListsWithEqualElementsInOrderAreEqual) {
  EXPECT_TRUE(StringList({"a", "é"}) == StringList({"a", "é"}));
  EXPECT_FALSE(StringList({"a", "é"}) != StringList({"a", "é"}));
  EXPECT_TRUE(KORListValKORUnicodeString() == KORListValKORUnicodeString());
}

TEST(KORListValKORUnicodeString, ListsDifferingInOrderSizeOrElementAreDifferent) {
  EXPECT_TRUE(StringList({"a", "é"}) != StringList({"é", "a"}));
  EXPECT_TRUE(StringList({"a", "é"}) != StringList({"a"}));
  EXPECT_TRUE(StringList({"a", "é"}) != StringList({"a", "e\xCC\x81"}));
}

TEST(KORListValKORUnicodeString, CopyIsEqualAndIndependent) {
  KORListValKORUnicodeString original = StringList({"a", "b"});
  KORListValKORUnicodeString copy(original);
  EXPECT_EQ(copy, original);
  copy[1] = "z";
  copy.Append("c");
  EXPECT_EQ(Contents(original), (Texts{"a", "b"}));
}

TEST(KORListValKORUnicodeString, AssignmentIsEqualAndIndependent) {
  KORListValKORUnicodeString original = StringList({"a", "b"});
  KORListValKORUnicodeString copy = StringList({"x"});
  copy = original;
  EXPECT_EQ(copy, original);
  original.RemoveAll();
  EXPECT_EQ(Contents(copy), (Texts{"a", "b"}));
}

// ---------------------------------------------------------------------------
// Positions out of range stop the process.

namespace {
const char kIndexCheck[] =
    "Platform/src/KORListValKORUnicodeString.cpp:[0-9]+: .*Assertion `iIndex >= 1 && iIndex <= "
    "Size\\(\\)' failed";
const char kInsertCheck[] =
    "Platform/src/KORListValKORUnicodeString.cpp:[0-9]+: .*Assertion `iIndex >= 1 && iIndex <= "
    "Size\\(\\) \\+ 1' failed";
}  // namespace

TEST(KORListValKORUnicodeStringDeathTest, MutableIndexZeroStopsTheProcess) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH(list[0].Reset(), kIndexCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, MutableIndexPastTheSizeStopsTheProcess) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH(list[3].Reset(), kIndexCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, ConstIndexZeroStopsTheProcess) {
  const KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH((void)list[0].GetLengthInChar(), kIndexCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, ConstIndexPastTheSizeStopsTheProcess) {
  const KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH((void)list[3].GetLengthInChar(), kIndexCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, IndexIntoAnEmptyListStopsTheProcess) {
  const KORListValKORUnicodeString list;
  EXPECT_DEATH((void)list[1].GetLengthInChar(), kIndexCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, InsertAtZeroStopsTheProcess) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH(list.InsertAt(0, "x"), kInsertCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, InsertPastSizePlusOneStopsTheProcess) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH(list.InsertAt(4, "x"), kInsertCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, RemovePositionZeroStopsTheProcess) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH(list.RemovePosition(0), kIndexCheck);
}

TEST(KORListValKORUnicodeStringDeathTest, RemovePositionPastTheSizeStopsTheProcess) {
  KORListValKORUnicodeString list = StringList({"a", "b"});
  EXPECT_DEATH(list.RemovePosition(3), kIndexCheck);
}
