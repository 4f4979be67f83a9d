#include "KORLumViewerDef.h"

#include <gtest/gtest.h>

#include <sstream>

#include "TraceCapture.h"

TEST(KORLumViewerDef, CompletePairKeepsBothNames) {
  KORLumViewerDef def("Part", "Viewer3D");
  EXPECT_EQ(def.GetObject(), "Part");
  EXPECT_EQ(def.GetViewer(), "Viewer3D");
}

TEST(KORLumViewerDef, EmptyViewerGivesTheNoViewerDefinition) {
  KORLumViewerDef def("Part", "");
  EXPECT_EQ(def == KORLumViewerDef::GetNoViewerDef(), 1);
  EXPECT_EQ(def.GetObject().GetLengthInChar(), 0);
  EXPECT_EQ(def.GetViewer().GetLengthInChar(), 0);
}

TEST(KORLumViewerDef, EmptyObjectGivesTheNoViewerDefinition) {
  KORLumViewerDef def("", "Viewer3D");
  EXPECT_EQ(def == KORLumViewerDef::GetNoViewerDef(), 1);
  EXPECT_EQ(def.GetObject().GetLengthInChar(), 0);
  EXPECT_EQ(def.GetViewer().GetLengthInChar(), 0);
}

TEST(KORLumViewerDef, NoViewerDefinitionHasEmptyNames) {
  const KORLumViewerDef& none = KORLumViewerDef::GetNoViewerDef();
  EXPECT_EQ(none.GetObject(), KORUnicodeString());
  EXPECT_EQ(none.GetViewer(), KORUnicodeString());
}

TEST(KORLumViewerDef, ConvertToStringJoinsObjectAndViewerWithAPoint) {
  EXPECT_EQ(KORLumViewerDef("Part", "Viewer3D").ConvertToString(), "Part.Viewer3D");
}

TEST(KORLumViewerDef, ConvertToStringKeepsPointsInsideNames) {
  EXPECT_EQ(KORLumViewerDef("Doc.A", "V").ConvertToString(), "Doc.A.V");
}

TEST(KORLumViewerDef, NoViewerDefinitionConvertsToTheEmptyString) {
  EXPECT_EQ(KORLumViewerDef::GetNoViewerDef().ConvertToString(), "");
}

TEST(KORLumViewerDef, ConversionOperatorGivesTheStringForm) {
  const KORLumViewerDef complete("Part", "Viewer3D");
  EXPECT_EQ(static_cast<KORUnicodeString>(complete), complete.ConvertToString());
  const KORLumViewerDef& none = KORLumViewerDef::GetNoViewerDef();
  EXPECT_EQ(static_cast<KORUnicodeString>(none), none.ConvertToString());
}

TEST(KORLumViewerDef, StreamWritesTheViewerNameOnly) {
  std::ostringstream stream;
  stream << KORLumViewerDef("Part", "Viewer3D");
  EXPECT_EQ(stream.str(), "Viewer3D");
}

TEST(KORLumViewerDef, StreamOfTheNoViewerDefinitionWritesNothing) {
  std::ostringstream stream;
  stream << KORLumViewerDef::GetNoViewerDef();
  EXPECT_EQ(stream.str(), "");
}

TEST(KORLumViewerDef, SameViewerWithOtherObjectsIsDifferent) {
  KORLumViewerDef left("Part", "Viewer3D");
  KORLumViewerDef right("Product", "Viewer3D");
  EXPECT_EQ(left == right, 0);
  EXPECT_EQ(left != right, 1);
}

TEST(KORLumViewerDef, EqualFieldsAreEqual) {
  KORLumViewerDef left("Part", "Viewer3D");
  KORLumViewerDef right("Part", "Viewer3D");
  EXPECT_EQ(left == right, 1);
  EXPECT_EQ(left != right, 0);
}

TEST(KORLumViewerDef, InequalityIsTheNegationOfEquality) {
  const KORLumViewerDef defs[] = {
      KORLumViewerDef("Part", "Viewer3D"), KORLumViewerDef("Part", "Viewer2D"),
      KORLumViewerDef("Product", "Viewer3D"), KORLumViewerDef::GetNoViewerDef()};
  for (const auto& left : defs) {
    for (const auto& right : defs) {
      EXPECT_EQ(left != right, (left == right) ? 0 : 1);
    }
  }
}

TEST(KORLumViewerDef, CopyHasBothFields) {
  KORLumViewerDef original("Part", "Viewer3D");
  KORLumViewerDef copy(original);
  EXPECT_EQ(copy.GetObject(), "Part");
  EXPECT_EQ(copy.GetViewer(), "Viewer3D");
}

TEST(KORLumViewerDef, AssignmentReplacesBothFields) {
  KORLumViewerDef target("Part", "Viewer3D");
  target = KORLumViewerDef("Product", "Viewer2D");
  EXPECT_EQ(target.GetObject(), "Product");
  EXPECT_EQ(target.GetViewer(), "Viewer2D");
}

TEST(KORLumViewerDef, SelfAssignmentKeepsTheValue) {
  KORLumViewerDef def("Part", "Viewer3D");
  const KORLumViewerDef& alias = def;
  def = alias;
  EXPECT_EQ(def.ConvertToString(), "Part.Viewer3D");
}

TEST(KORLumViewerDef, GetNoViewerDefReturnsTheSameInstance) {
  EXPECT_EQ(&KORLumViewerDef::GetNoViewerDef(), &KORLumViewerDef::GetNoViewerDef());
}

TEST(KORLumViewerDef, GettersReturnTheMembersThemselves) {
  KORLumViewerDef def("Part", "Viewer3D");
  EXPECT_EQ(&def.GetObject(), &def.GetObject());
  EXPECT_EQ(&def.GetViewer(), &def.GetViewer());
}

TEST(KORLumViewerDef, OperationsWriteNoTraceLines) {
  TraceCapture capture;
  KORLumViewerDef def("Part", "Viewer3D");
  KORLumViewerDef copy(def);
  copy = KORLumViewerDef("", "");
  (void)(def == copy);
  (void)(def != copy);
  (void)def.GetObject();
  (void)def.GetViewer();
  (void)def.ConvertToString();
  (void)static_cast<KORUnicodeString>(def);
  (void)KORLumViewerDef::GetNoViewerDef();
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumViewerDefDeathTest, DefaultConstructorStopsAtLine14) {
  EXPECT_DEATH({ KORLumViewerDef forbidden; },
               "VirtualServices/VX0SESS0\\.m/src/KORLumViewerDef:14: .*Assertion `0' failed");
}
