#include "KORLumViewerBag.h"

#include <gtest/gtest.h>

#include "StringList.h"
#include "TraceCapture.h"

TEST(KORLumViewerBag, ConstructorKeepsObjectAndViewersInOrder) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D", "Viewer2D"}));
  EXPECT_EQ(bag.GetObject(), "Part");
  ASSERT_EQ(bag.GetNumberOfViewers(), 2);
  EXPECT_EQ(bag.GetViewer(1), "Viewer3D");
  EXPECT_EQ(bag.GetViewer(2), "Viewer2D");
}

TEST(KORLumViewerBag, ConstructorKeepsEmptyAndRepeatedNames) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D", "", "Viewer3D"}));
  EXPECT_EQ(bag.GetNumberOfViewers(), 3);
  EXPECT_EQ(bag.GetViewer(2), "");
  EXPECT_EQ(bag.GetViewer(3), "Viewer3D");
}

TEST(KORLumViewerBag, AddOfAnEmptyNameReturnsMinusOneAndChangesNothing) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  EXPECT_EQ(bag.Add(""), -1);
  EXPECT_EQ(bag.GetNumberOfViewers(), 1);
}

TEST(KORLumViewerBag, AddOfANameGivenAtConstructionReturnsOneAndChangesNothing) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D", "Viewer2D"}));
  EXPECT_EQ(bag.Add("Viewer2D"), 1);
  EXPECT_EQ(bag.GetNumberOfViewers(), 2);
}

TEST(KORLumViewerBag, AddOfANameAddedBeforeReturnsOne) {
  KORLumViewerBag bag;
  ASSERT_EQ(bag.Add("Viewer3D"), 0);
  EXPECT_EQ(bag.Add("Viewer3D"), 1);
  EXPECT_EQ(bag.GetNumberOfViewers(), 1);
}

TEST(KORLumViewerBag, AddOfANewNameReturnsZeroAndAppendsIt) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  EXPECT_EQ(bag.Add("Viewer2D"), 0);
  ASSERT_EQ(bag.GetNumberOfViewers(), 2);
  EXPECT_EQ(bag.GetViewer(bag.GetNumberOfViewers()), "Viewer2D");
}

TEST(KORLumViewerBag, AddComparesNamesExactly) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  EXPECT_EQ(bag.Add("viewer3d"), 0);
  EXPECT_EQ(bag.Add("Viewer3D "), 0);
  EXPECT_EQ(bag.GetNumberOfViewers(), 3);
}

TEST(KORLumViewerBag, DefaultBagHasAnEmptyObjectAndNoViewers) {
  KORLumViewerBag bag;
  EXPECT_EQ(bag.GetObject().GetLengthInChar(), 0);
  EXPECT_EQ(bag.GetNumberOfViewers(), 0);
  EXPECT_EQ(bag.GetViewers().Size(), 0);
}

TEST(KORLumViewerBag, SameObjectWithOtherViewersIsEqual) {
  KORLumViewerBag left("Part", StringList({"Viewer3D"}));
  KORLumViewerBag right("Part", StringList({"Viewer2D", "Viewer1D"}));
  EXPECT_EQ(left == right, 1);
  EXPECT_EQ(left != right, 0);
}

TEST(KORLumViewerBag, OtherObjectsWithTheSameViewersAreDifferent) {
  KORLumViewerBag left("Part", StringList({"Viewer3D"}));
  KORLumViewerBag right("Product", StringList({"Viewer3D"}));
  EXPECT_EQ(left == right, 0);
  EXPECT_EQ(left != right, 1);
}

TEST(KORLumViewerBag, InequalityIsTheNegationOfEquality) {
  const KORLumViewerBag bags[] = {
      KORLumViewerBag("Part", StringList({"Viewer3D"})), KORLumViewerBag("Part", StringList({})),
      KORLumViewerBag("Product", StringList({"Viewer3D"})), KORLumViewerBag()};
  for (const auto& left : bags) {
    for (const auto& right : bags) EXPECT_EQ(left != right, (left == right) ? 0 : 1);
  }
}

TEST(KORLumViewerBag, CopyHasObjectAndViewers) {
  KORLumViewerBag original("Part", StringList({"Viewer3D", "Viewer2D"}));
  KORLumViewerBag copy(original);
  EXPECT_EQ(copy.GetObject(), "Part");
  EXPECT_EQ(copy.GetViewers() == original.GetViewers(), true);
}

TEST(KORLumViewerBag, AssignmentReplacesObjectAndViewers) {
  KORLumViewerBag target("Part", StringList({"Viewer3D"}));
  target = KORLumViewerBag("Product", StringList({"Viewer2D", "Viewer1D"}));
  EXPECT_EQ(target.GetObject(), "Product");
  ASSERT_EQ(target.GetNumberOfViewers(), 2);
  EXPECT_EQ(target.GetViewer(1), "Viewer2D");
  EXPECT_EQ(target.GetViewer(2), "Viewer1D");
}

TEST(KORLumViewerBag, AssigningABagWithNoViewersLeavesTheTargetWithNone) {
  KORLumViewerBag target("Part", StringList({"Viewer3D", "Viewer2D"}));
  target = KORLumViewerBag("Product", StringList({}));
  EXPECT_EQ(target.GetObject(), "Product");
  EXPECT_EQ(target.GetNumberOfViewers(), 0);
}

TEST(KORLumViewerBag, SelfAssignmentKeepsTheValue) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  const KORLumViewerBag& alias = bag;
  bag = alias;
  EXPECT_EQ(bag.GetObject(), "Part");
  ASSERT_EQ(bag.GetNumberOfViewers(), 1);
  EXPECT_EQ(bag.GetViewer(1), "Viewer3D");
}

TEST(KORLumViewerBag, GettersReturnTheMembersThemselves) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  EXPECT_EQ(&bag.GetObject(), &bag.GetObject());
  EXPECT_EQ(&bag.GetViewers(), &bag.GetViewers());
  EXPECT_EQ(&bag.GetViewer(1), &bag.GetViewers()[1]);
}

TEST(KORLumViewerBag, OperationsWriteNoTraceLines) {
  TraceCapture capture;
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  KORLumViewerBag copy(bag);
  KORLumViewerBag empty;
  copy = empty;
  (void)(bag == copy);
  (void)(bag != copy);
  (void)bag.GetObject();
  (void)bag.GetNumberOfViewers();
  (void)bag.GetViewer(1);
  (void)bag.GetViewers();
  (void)bag.Add("Viewer2D");
  (void)bag.Add("");
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumViewerBagDeathTest, GetViewerBeyondTheLastStopsInTheStringList) {
  KORLumViewerBag bag("Part", StringList({"Viewer3D"}));
  EXPECT_DEATH((void)bag.GetViewer(2), "Assertion");
}
