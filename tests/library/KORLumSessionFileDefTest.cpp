#include "KORLumSessionFileDef.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

#include "KORHUBTrace.h"
#include "ListText.h"
#include "SessionFileValues.h"
#include "StringList.h"
#include "TraceCapture.h"
#include "TracePattern.h"

namespace {

using Lines = std::vector<std::string>;

// Bags for objects A, B, A: the second bag of A has other viewers.
KORListValKORLumViewerBag BagsWithARepeatedObject() {
  KORListValKORLumViewerBag bags;
  bags.Append(KORLumViewerBag("A", StringList({"V1", "V2"})));
  bags.Append(KORLumViewerBag("B", StringList({"V3"})));
  bags.Append(KORLumViewerBag("A", StringList({"V9"})));
  return bags;
}

// The three input lines of a Build, as written inside a constructor's scope.
Lines InputLines(const std::string& iBuildLabel, const std::string& iType, const std::string& iName,
                 const std::string& iSuffix) {
  const std::string label = "     KORLumSessionFileDef::Build " + iBuildLabel + " ";
  return {label + "iType = " + iType, label + "iName = " + iName, label + "iSuffix = " + iSuffix};
}

}  // namespace

// Building from bags.

TEST(KORLumSessionFileDef, BagsOfARepeatedObjectKeepTheFirstBagOfEachObjectInOrder) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", BagsWithARepeatedObject());
  const KORListValKORLumViewerBag& bags = def.GetViewerBags();
  ASSERT_EQ(bags.Size(), 2);
  EXPECT_EQ(bags[1].GetObject(), "A");
  EXPECT_EQ(ListText(bags[1].GetViewers()), "[V1] [V2]");
  EXPECT_EQ(bags[2].GetObject(), "B");
  EXPECT_EQ(ListText(bags[2].GetViewers()), "[V3]");
}

TEST(KORLumSessionFileDef, BagsWithAnEmptyObjectOrNoViewersAreKept) {
  KORListValKORLumViewerBag bags;
  bags.Append(KORLumViewerBag("", StringList({"V1"})));
  bags.Append(KORLumViewerBag("B", StringList({})));
  KORLumSessionFileDef def(kGraph, "Graph", "hub", bags);
  ASSERT_EQ(def.GetViewerBags().Size(), 2);
  EXPECT_EQ(def.GetViewerBag(1).GetObject(), "");
  EXPECT_EQ(def.GetViewerBag(2).GetNumberOfViewers(), 0);
}

TEST(KORLumSessionFileDef, BagsByPointerAreBuiltLikeBagsByReference) {
  const KORListValKORLumViewerBag bags = BagsWithARepeatedObject();
  KORLumSessionFileDef def(kGraph, "Graph", "hub", &bags);
  ASSERT_EQ(def.GetViewerBags().Size(), 2);
  EXPECT_EQ(def.GetViewerBag(1).GetObject(), "A");
  EXPECT_EQ(def.GetViewerBag(2).GetObject(), "B");
}

TEST(KORLumSessionFileDef, BuiltFromBagsHasNoViewerNames) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", BagsWithARepeatedObject());
  EXPECT_EQ(def.GetViewers().Size(), 0);
}

TEST(KORLumSessionFileDef, BuildingFromBagsLeavesTheCallersListUnchanged) {
  const KORListValKORLumViewerBag bags = BagsWithARepeatedObject();
  KORLumSessionFileDef def(kGraph, "Graph", "hub", bags);
  EXPECT_EQ(bags.Size(), 3);
}

// Building from viewer names.

TEST(KORLumSessionFileDef, ViewerNamesLoseEmptyAndRepeatedNamesAndKeepTheirOrder) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", StringList({"V1", "", "V2", "V1"}));
  EXPECT_EQ(ListText(def.GetViewers()), "[V1] [V2]");
}

TEST(KORLumSessionFileDef, EveryEmptyViewerNameIsRemoved) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", StringList({"", "V1", "", ""}));
  EXPECT_EQ(ListText(def.GetViewers()), "[V1]");
}

TEST(KORLumSessionFileDef, ViewerNamesByPointerAreBuiltLikeNamesByReference) {
  const KORListValKORUnicodeString names = StringList({"V1", "", "V2", "V1"});
  KORLumSessionFileDef def(kGraph, "Graph", "hub", &names);
  EXPECT_EQ(ListText(def.GetViewers()), "[V1] [V2]");
}

TEST(KORLumSessionFileDef, BuiltFromViewerNamesHasNoBags) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", StringList({"V1"}));
  EXPECT_EQ(def.GetViewerBags().Size(), 0);
}

// Building without a list.

TEST(KORLumSessionFileDef, ConstructorWithoutAListAcceptsAnEmptyName) {
  KORLumSessionFileDef def(kQuery, "", "qry");
  EXPECT_EQ(def.GetType(), kQuery);
  EXPECT_EQ(def.GetName(), "");
  EXPECT_EQ(def.GetSuffix(), "qry");
  EXPECT_EQ(def.GetViewerBags().Size(), 0);
  EXPECT_EQ(def.GetViewers().Size(), 0);
}

TEST(KORLumSessionFileDef, NullBagPointerWithAnEmptyNameIsAccepted) {
  KORLumSessionFileDef def(kGraph, "", "hub",
                           static_cast<const KORListValKORLumViewerBag*>(nullptr));
  EXPECT_EQ(def.GetName(), "");
  EXPECT_EQ(def.GetViewerBags().Size(), 0);
  EXPECT_EQ(def.GetViewers().Size(), 0);
}

TEST(KORLumSessionFileDef, NullViewerNamePointerWithAnEmptyNameIsAccepted) {
  KORLumSessionFileDef def(kGraph, "", "hub",
                           static_cast<const KORListValKORUnicodeString*>(nullptr));
  EXPECT_EQ(def.GetName(), "");
  EXPECT_EQ(def.GetViewerBags().Size(), 0);
  EXPECT_EQ(def.GetViewers().Size(), 0);
}

TEST(KORLumSessionFileDef, EmptyBagListGivesEmptyLists) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", KORListValKORLumViewerBag());
  EXPECT_EQ(def.GetViewerBags().Size(), 0);
  EXPECT_EQ(def.GetViewers().Size(), 0);
}

TEST(KORLumSessionFileDef, EmptyViewerNameListGivesEmptyLists) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", KORListValKORUnicodeString());
  EXPECT_EQ(def.GetViewerBags().Size(), 0);
  EXPECT_EQ(def.GetViewers().Size(), 0);
}

TEST(KORLumSessionFileDef, SuffixIsReturnedAsGivenEvenWhenItDoesNotMatchTheType) {
  KORLumSessionFileDef def(kGraph, "Graph", "qry");
  EXPECT_EQ(def.GetSuffix(), "qry");
}

TEST(KORLumSessionFileDef, OutOfRangeTypeIsStoredAsGiven) {
  KORLumSessionFileDef def(static_cast<_KORLumSessionFileType>(7), "Other", "oth");
  EXPECT_EQ(def.GetType(), static_cast<_KORLumSessionFileType>(7));
}

TEST(KORLumSessionFileDef, GettersReturnTheMembersThemselves) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", BagsWithARepeatedObject());
  EXPECT_EQ(&def.GetName(), &def.GetName());
  EXPECT_EQ(&def.GetSuffix(), &def.GetSuffix());
  EXPECT_EQ(&def.GetViewerBags(), &def.GetViewerBags());
  EXPECT_EQ(&def.GetViewers(), &def.GetViewers());
  EXPECT_EQ(&def.GetViewerBag(2), &def.GetViewerBags()[2]);
}

// Equality.

TEST(KORLumSessionFileDef, DefinitionsOfOneTypeWithOtherNamesAreEqual) {
  KORLumSessionFileDef left(kGraph, "Graph", "hub", StringList({"V1"}));
  KORLumSessionFileDef right(kGraph, "Other", "oth", BagsWithARepeatedObject());
  EXPECT_EQ(left == right, 1);
  EXPECT_EQ(left != right, 0);
}

TEST(KORLumSessionFileDef, DefinitionsOfOtherTypesWithTheSameNameAreDifferent) {
  KORLumSessionFileDef left(kGraph, "Session", "hub");
  KORLumSessionFileDef right(kQuery, "Session", "hub");
  EXPECT_EQ(left == right, 0);
  EXPECT_EQ(left != right, 1);
}

TEST(KORLumSessionFileDef, InequalityIsTheNegationOfEquality) {
  const KORLumSessionFileDef defs[] = {
      KORLumSessionFileDef(kGraph, "Graph", "hub"), KORLumSessionFileDef(kGraph, "Other", "hub"),
      KORLumSessionFileDef(kQuery, "Query", "qry"), KORLumSessionFileDef(kNone, "", "")};
  for (const auto& left : defs) {
    for (const auto& right : defs) EXPECT_EQ(left != right, (left == right) ? 0 : 1);
  }
}

// Copy and assignment.

TEST(KORLumSessionFileDef, CopyIsAFullCopy) {
  KORLumSessionFileDef original(kGraph, "Graph", "hub", BagsWithARepeatedObject());
  KORLumSessionFileDef copy(original);
  EXPECT_EQ(copy.GetType(), kGraph);
  EXPECT_EQ(copy.GetName(), "Graph");
  EXPECT_EQ(copy.GetSuffix(), "hub");
  ASSERT_EQ(copy.GetViewerBags().Size(), 2);
  EXPECT_EQ(ListText(copy.GetViewerBag(1).GetViewers()), "[V1] [V2]");
}

TEST(KORLumSessionFileDef, AssigningADefinitionWithoutBagsKeepsTheTargetsBags) {
  KORLumSessionFileDef target(kGraph, "Graph", "hub", BagsWithARepeatedObject());
  target = KORLumSessionFileDef(kQuery, "Query", "qry");
  EXPECT_EQ(target.GetType(), kQuery);
  EXPECT_EQ(target.GetName(), "Query");
  EXPECT_EQ(target.GetSuffix(), "qry");
  ASSERT_EQ(target.GetViewerBags().Size(), 2);
  EXPECT_EQ(target.GetViewerBag(1).GetObject(), "A");
}

TEST(KORLumSessionFileDef, AssigningADefinitionWithoutNamesKeepsTheTargetsNames) {
  KORLumSessionFileDef target(kGraph, "Graph", "hub", StringList({"V1", "V2"}));
  target = KORLumSessionFileDef(kQuery, "Query", "qry", BagsWithARepeatedObject());
  EXPECT_EQ(ListText(target.GetViewers()), "[V1] [V2]");
  EXPECT_EQ(target.GetViewerBags().Size(), 2);
}

TEST(KORLumSessionFileDef, AssigningADefinitionWithListsReplacesTheTargetsLists) {
  KORLumSessionFileDef target(kGraph, "Graph", "hub", StringList({"V1", "V2"}));
  target = KORLumSessionFileDef(kGraph, "Graph", "hub", StringList({"V3"}));
  EXPECT_EQ(ListText(target.GetViewers()), "[V3]");
}

TEST(KORLumSessionFileDef, SelfAssignmentKeepsTheValue) {
  KORLumSessionFileDef def(kGraph, "Graph", "hub", StringList({"V1", "V2"}));
  const KORLumSessionFileDef& alias = def;
  def = alias;
  EXPECT_EQ(def.GetName(), "Graph");
  EXPECT_EQ(ListText(def.GetViewers()), "[V1] [V2]");
}

// Trace lines.

TEST(KORLumSessionFileDefTrace, BuildFromBagsWritesInputsCountAndTheKeptBags) {
  const KORListValKORLumViewerBag bags = BagsWithARepeatedObject();
  TraceCapture capture;
  KORLumSessionFileDef def(kGraph, "Graph", "hub", bags);
  const std::string label = "     KORLumSessionFileDef::Build (KORListLumViewerBag) ";
  Lines expected = InputLines("(KORListLumViewerBag)", "1", "Graph", "hub");
  for (const char* line : {"nbViewerBag = 2", "Viewer bag [1]: Object = [A]",
                           "Viewer bag [1]: Viewer [1] = [V1]", "Viewer bag [1]: Viewer [2] = [V2]",
                           "Viewer bag [2]: Object = [B]", "Viewer bag [2]: Viewer [1] = [V3]"}) {
    expected.push_back(label + line);
  }
  EXPECT_EQ(capture.Lines(), expected);
}

TEST(KORLumSessionFileDefTrace, BuildFromViewerNamesWritesInputsCountAndTheKeptNames) {
  const KORListValKORUnicodeString names = StringList({"V1", "", "V2", "V1"});
  TraceCapture capture;
  KORLumSessionFileDef def(kQuery, "Query", "qry", &names);
  const std::string label = "     KORLumSessionFileDef::Build (KORListOfKORUnicodeString) ";
  Lines expected = InputLines("(KORListOfKORUnicodeString)", "2", "Query", "qry");
  for (const char* line : {"nbViewer = 2", "Viewer [1] = [V1]", "Viewer [2] = [V2]"}) {
    expected.push_back(label + line);
  }
  EXPECT_EQ(capture.Lines(), expected);
}

TEST(KORLumSessionFileDefTrace, EmptyBagListWritesOnlyTheInputLines) {
  const KORListValKORLumViewerBag bags;
  TraceCapture capture;
  KORLumSessionFileDef def(kGraph, "Graph", "hub", bags);
  EXPECT_EQ(capture.Lines(), InputLines("(KORListLumViewerBag)", "1", "Graph", "hub"));
}

TEST(KORLumSessionFileDefTrace, EmptyViewerNameListWritesOnlyTheInputLines) {
  const KORListValKORUnicodeString names;
  TraceCapture capture;
  KORLumSessionFileDef def(kGraph, "Graph", "", names);
  EXPECT_EQ(capture.Lines(), InputLines("(KORListOfKORUnicodeString)", "1", "Graph", ""));
}

TEST(KORLumSessionFileDefTrace, ConstructorsWithoutAListWriteNoLine) {
  TraceCapture capture;
  KORLumSessionFileDef plain(kGraph, "Graph", "hub");
  KORLumSessionFileDef nullBags(kGraph, "Graph", "hub",
                                static_cast<const KORListValKORLumViewerBag*>(nullptr));
  KORLumSessionFileDef nullNames(kGraph, "Graph", "hub",
                                 static_cast<const KORListValKORUnicodeString*>(nullptr));
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumSessionFileDefTrace, CopyAssignmentAndGetViewersWriteNoLine) {
  const KORLumSessionFileDef original(kGraph, "Graph", "hub");
  TraceCapture capture;
  KORLumSessionFileDef copy(original);
  copy = original;
  (void)copy.GetViewers();
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumSessionFileDefTrace, GettersWriteTheMembersTheyReturn) {
  const KORLumSessionFileDef def(kGraph, "Graph", "", BagsWithARepeatedObject());
  TraceCapture capture;
  (void)def.GetType();
  (void)def.GetName();
  (void)def.GetSuffix();
  (void)def.GetViewerBag(2);
  (void)def.GetViewerBags();
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileDef::GetType _type = 1",
                   "   KORLumSessionFileDef::GetName _name = Graph",
                   "   KORLumSessionFileDef::GetSuffix _suffix = ",
                   "   KORLumSessionFileDef::GetViewerBag Object [2] = [B]",
                   "   KORLumSessionFileDef::GetViewerBags Number of viewer bag(s) = [2]"}));
}

TEST(KORLumSessionFileDefTrace, EqualityWritesIsEqualUnderItsLabelWithATrailingBlank) {
  const KORLumSessionFileDef left(kGraph, "Graph", "hub");
  const KORLumSessionFileDef right(kGraph, "Other", "hub");
  TraceCapture capture;
  (void)(left == right);
  EXPECT_EQ(capture.Text(), "   KORLumSessionFileDef::operator ==  isEqual = 1\n");
}

TEST(KORLumSessionFileDefTrace, InequalityShowsTheNestedEqualityThenIsDifferent) {
  const KORLumSessionFileDef left(kGraph, "Session", "hub");
  const KORLumSessionFileDef right(kQuery, "Session", "hub");
  TraceCapture capture;
  (void)(left != right);
  EXPECT_EQ(capture.Lines(), (Lines{"     KORLumSessionFileDef::operator ==  isEqual = 0",
                                    "   KORLumSessionFileDef::operator != isDifferent = 1"}));
}

// Assertions.

TEST(KORLumSessionFileDefDeathTest, EmptyNameWithBagsByPointerStopsAtLine48AfterTheInputLines) {
  const KORListValKORLumViewerBag bags = BagsWithARepeatedObject();
  EXPECT_DEATH(
      {
        KORHUBTrace::SetOutput(&std::cerr);
        KORHUBTrace::SetActive(1);
        KORLumSessionFileDef def(kGraph, "", "hub", &bags);
      },
      TraceLinesPattern(InputLines("(KORListLumViewerBag)", "1", "", "hub")) +
          ".*VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileDef:48: .*"
          "Assertion `iName\\.GetLengthInChar\\(\\)' failed");
}

TEST(KORLumSessionFileDefDeathTest, EmptyNameWithAnEmptyBagListStopsAtLine48AfterTheInputLines) {
  const KORListValKORLumViewerBag bags;
  EXPECT_DEATH(
      {
        KORHUBTrace::SetOutput(&std::cerr);
        KORHUBTrace::SetActive(1);
        KORLumSessionFileDef def(kQuery, "", "qry", bags);
      },
      TraceLinesPattern(InputLines("(KORListLumViewerBag)", "2", "", "qry")) +
          ".*VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileDef:48: .*"
          "Assertion `iName\\.GetLengthInChar\\(\\)' failed");
}

TEST(KORLumSessionFileDefDeathTest,
     EmptyNameWithViewerNamesByPointerStopsAtLine112AfterTheInputLines) {
  const KORListValKORUnicodeString names = StringList({"V1"});
  EXPECT_DEATH(
      {
        KORHUBTrace::SetOutput(&std::cerr);
        KORHUBTrace::SetActive(1);
        KORLumSessionFileDef def(kGraph, "", "hub", &names);
      },
      TraceLinesPattern(InputLines("(KORListOfKORUnicodeString)", "1", "", "hub")) +
          ".*VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileDef:112: .*"
          "Assertion `iName\\.GetLengthInChar\\(\\)' failed");
}

TEST(KORLumSessionFileDefDeathTest,
     EmptyNameWithAnEmptyViewerNameListStopsAtLine112AfterTheInputLines) {
  const KORListValKORUnicodeString names;
  EXPECT_DEATH(
      {
        KORHUBTrace::SetOutput(&std::cerr);
        KORHUBTrace::SetActive(1);
        KORLumSessionFileDef def(kNone, "", "", names);
      },
      TraceLinesPattern(InputLines("(KORListOfKORUnicodeString)", "0", "", "")) +
          ".*VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileDef:112: .*"
          "Assertion `iName\\.GetLengthInChar\\(\\)' failed");
}

TEST(KORLumSessionFileDefDeathTest, DefaultConstructorStopsAtLine19) {
  EXPECT_DEATH({ KORLumSessionFileDef forbidden; },
               "VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileDef:19: .*Assertion `0' failed");
}

TEST(KORLumSessionFileDefDeathTest, GetViewerBagBeyondTheLastStopsInTheList) {
  const KORLumSessionFileDef def(kGraph, "Graph", "hub", BagsWithARepeatedObject());
  EXPECT_DEATH((void)def.GetViewerBag(3), "Assertion");
}
