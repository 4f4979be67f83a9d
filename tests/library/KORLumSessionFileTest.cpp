#include "KORLumSessionFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "SessionFileValues.h"
#include "TraceCapture.h"

// The first GetNoSessionFile call is checked here, which only the first test
// case of a process can see: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;

// Checks that iFile is a None value as the constructors leave it: no file, no
// viewer name, the no-viewer definition, default modes, and iOption kept.
void ExpectNormalisedNone(const KORLumSessionFile& iFile, unsigned long iOption) {
  EXPECT_EQ(iFile.GetType(), kNone);
  EXPECT_EQ(iFile.GetFile(), "");
  EXPECT_EQ(iFile.GetViewer(), "");
  EXPECT_EQ(iFile.GetViewerDef() == KORLumViewerDef::GetNoViewerDef(), 1);
  EXPECT_EQ(iFile.GetLoadMode(), kDynamic);
  EXPECT_EQ(iFile.GetInstanceMode(), kAll);
  EXPECT_EQ(iFile.GetOption(), iOption);
}

// A Graph session file opened with Viewer3D, Dynamic, Selected, options R and C.
KORLumSessionFile GraphFile() {
  return KORLumSessionFile(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kDynamic,
                           kSelected, 9UL);
}

// The seven bracketed lines with which operator= and operator== show
// GraphFile(), under the given label.
Lines GraphFileOperandLines(const std::string& iPrefix) {
  return {iPrefix + " Type          = [1]",        iPrefix + " File          = [/data/model.hub]",
          iPrefix + " Viewer        = [Viewer3D]", iPrefix + " ViewerDef     = []",
          iPrefix + " Load mode     = [1]",        iPrefix + " Instance mode = [2]",
          iPrefix + " Option        = [9]"};
}

}  // namespace

// Normalisation by the value constructors.

TEST(KORLumSessionFile, GraphWithModesZeroGetsTheDefaultModes) {
  KORLumSessionFile file(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kLoadNone,
                         kInstanceNone, 0UL);
  EXPECT_EQ(file.GetLoadMode(), kDynamic);
  EXPECT_EQ(file.GetInstanceMode(), kAll);
}

TEST(KORLumSessionFile, GraphKeepsLoadModeTwo) {
  KORLumSessionFile file(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kStatic,
                         kInstanceNone, 0UL);
  EXPECT_EQ(file.GetLoadMode(), kStatic);
  EXPECT_EQ(file.GetInstanceMode(), kAll);
}

TEST(KORLumSessionFile, NoneFromAViewerNameLosesFileAndViewerAndGetsDefaultModes) {
  KORLumSessionFile file(kNone, "/data/model.hub", KORUnicodeString("Viewer3D"), kStatic, kSelected,
                         5UL);
  ExpectNormalisedNone(file, 5UL);
}

TEST(KORLumSessionFile, NoneFromAViewerDefinitionLosesFileAndDefinitionAndGetsDefaultModes) {
  KORLumSessionFile file(kNone, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"), kStatic,
                         kSelected, 5UL);
  ExpectNormalisedNone(file, 5UL);
}

TEST(KORLumSessionFile, QueryKeepsViewerDefinitionModesAndOptions) {
  KORLumSessionFile file(kQuery, "/data/parts.qry", KORLumViewerDef("Part", "Viewer3D"), kStatic,
                         kSelected, 8UL);
  EXPECT_EQ(file.GetType(), kQuery);
  EXPECT_EQ(file.GetFile(), "/data/parts.qry");
  EXPECT_EQ(file.GetViewerDef() == KORLumViewerDef("Part", "Viewer3D"), 1);
  EXPECT_EQ(file.GetLoadMode(), kStatic);
  EXPECT_EQ(file.GetInstanceMode(), kSelected);
  EXPECT_EQ(file.GetOption(), 8UL);
}

TEST(KORLumSessionFile, QueryDiffersFromTheSameQueryWithAnotherLoadMode) {
  const KORLumViewerDef def("Part", "Viewer3D");
  KORLumSessionFile withStatic(kQuery, "/data/parts.qry", def, kStatic, kAll, 8UL);
  KORLumSessionFile withDynamic(kQuery, "/data/parts.qry", def, kDynamic, kAll, 8UL);
  EXPECT_EQ(withStatic == withDynamic, 0);
  EXPECT_EQ(withStatic != withDynamic, 1);
}

TEST(KORLumSessionFile, BuiltFromAViewerDefinitionHasNoViewerName) {
  KORLumSessionFile file(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"), kDynamic,
                         kAll, 0UL);
  EXPECT_EQ(file.GetViewer().GetLengthInChar(), 0);
  EXPECT_EQ(file.GetViewerDef().GetObject(), "Part");
  EXPECT_EQ(file.GetViewerDef().GetViewer(), "Viewer3D");
}

TEST(KORLumSessionFile, BuiltFromAViewerNameHasTheNoViewerDefinition) {
  KORLumSessionFile file = GraphFile();
  EXPECT_EQ(file.GetViewer(), "Viewer3D");
  EXPECT_EQ(file.GetViewerDef() == KORLumViewerDef::GetNoViewerDef(), 1);
}

TEST(KORLumSessionFile, ViewerDefinitionAndTheSameViewerNameGiveDifferentValues) {
  KORLumSessionFile fromDef(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"),
                            kDynamic, kAll, 0UL);
  KORLumSessionFile fromName(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kDynamic,
                             kAll, 0UL);
  EXPECT_EQ(fromDef == fromName, 0);
  EXPECT_EQ(fromDef != fromName, 1);
}

TEST(KORLumSessionFile, TypeThreeIsStoredAsGivenAndNotNormalised) {
  const auto three = static_cast<_KORLumSessionFileType>(3);
  KORLumSessionFile file(three, "/data/model.hub", KORUnicodeString("Viewer3D"), kStatic, kSelected,
                         2UL);
  EXPECT_EQ(file.GetType(), three);
  EXPECT_EQ(file.GetFile(), "/data/model.hub");
  EXPECT_EQ(file.GetViewer(), "Viewer3D");
  EXPECT_EQ(file.GetLoadMode(), kStatic);
}

TEST(KORLumSessionFile, OutOfRangeModesAreStoredAsGiven) {
  const auto loadMode = static_cast<_KORLumGraphSessionLoadMode>(7);
  const auto instanceMode = static_cast<_KORLumGraphSessionInstanceMode>(-1);
  KORLumSessionFile file(kGraph, "", KORUnicodeString(""), loadMode, instanceMode, 0UL);
  EXPECT_EQ(file.GetLoadMode(), loadMode);
  EXPECT_EQ(file.GetInstanceMode(), instanceMode);
}

TEST(KORLumSessionFile, EveryOptionBitIsKept) {
  KORLumSessionFile file(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kDynamic, kAll,
                         0xFFFFFFFFUL);
  EXPECT_EQ(file.GetOption(), 0xFFFFFFFFUL);
}

// Default value, copy and assignment.

TEST(KORLumSessionFile, DefaultValueIsNoneWithDefaultModesAndNoOption) {
  KORLumSessionFile file;
  EXPECT_EQ(file.GetType(), kNone);
  EXPECT_EQ(file.GetFile(), "");
  EXPECT_EQ(file.GetViewer(), "");
  EXPECT_EQ(file.GetViewerDef() == KORLumViewerDef::GetNoViewerDef(), 1);
  EXPECT_EQ(file.GetLoadMode(), kDynamic);
  EXPECT_EQ(file.GetInstanceMode(), kAll);
  EXPECT_EQ(file.GetOption(), 0UL);
}

TEST(KORLumSessionFile, CopyHasAllSevenMembers) {
  KORLumSessionFile original(kQuery, "/data/parts.qry", KORLumViewerDef("Part", "Viewer3D"),
                             kStatic, kSelected, 6UL);
  KORLumSessionFile copy(original);
  EXPECT_EQ(copy.GetType(), kQuery);
  EXPECT_EQ(copy.GetFile(), "/data/parts.qry");
  EXPECT_EQ(copy.GetViewerDef() == KORLumViewerDef("Part", "Viewer3D"), 1);
  EXPECT_EQ(copy.GetViewer(), "");
  EXPECT_EQ(copy.GetLoadMode(), kStatic);
  EXPECT_EQ(copy.GetInstanceMode(), kSelected);
  EXPECT_EQ(copy.GetOption(), 6UL);
  EXPECT_EQ(copy == original, 1);
}

TEST(KORLumSessionFile, AssignmentCopiesAllSevenMembers) {
  KORLumSessionFile target(kQuery, "/data/parts.qry", KORLumViewerDef("Part", "Viewer3D"), kStatic,
                           kSelected, 6UL);
  target = GraphFile();
  EXPECT_EQ(target.GetType(), kGraph);
  EXPECT_EQ(target.GetFile(), "/data/model.hub");
  EXPECT_EQ(target.GetViewer(), "Viewer3D");
  EXPECT_EQ(target.GetViewerDef() == KORLumViewerDef::GetNoViewerDef(), 1);
  EXPECT_EQ(target.GetLoadMode(), kDynamic);
  EXPECT_EQ(target.GetInstanceMode(), kSelected);
  EXPECT_EQ(target.GetOption(), 9UL);
}

TEST(KORLumSessionFile, SelfAssignmentKeepsTheValue) {
  KORLumSessionFile file = GraphFile();
  const KORLumSessionFile& alias = file;
  file = alias;
  EXPECT_EQ(file == GraphFile(), 1);
}

// Equality.

TEST(KORLumSessionFile, EqualMembersGiveEqualValues) {
  EXPECT_EQ(GraphFile() == GraphFile(), 1);
  EXPECT_EQ(GraphFile() != GraphFile(), 0);
}

TEST(KORLumSessionFile, EachMemberTakesPartInEquality) {
  const KORLumSessionFile reference = GraphFile();
  const KORLumSessionFile others[] = {
      KORLumSessionFile(kQuery, "/data/model.hub", KORUnicodeString("Viewer3D"), kDynamic,
                        kSelected, 9UL),
      KORLumSessionFile(kGraph, "/data/other.hub", KORUnicodeString("Viewer3D"), kDynamic,
                        kSelected, 9UL),
      KORLumSessionFile(kGraph, "/data/model.hub", KORUnicodeString("Viewer2D"), kDynamic,
                        kSelected, 9UL),
      KORLumSessionFile(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kStatic, kSelected,
                        9UL),
      KORLumSessionFile(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kDynamic, kAll,
                        9UL),
      KORLumSessionFile(kGraph, "/data/model.hub", KORUnicodeString("Viewer3D"), kDynamic,
                        kSelected, 8UL)};
  for (const auto& other : others) EXPECT_EQ(reference == other, 0);
}

TEST(KORLumSessionFile, ViewerDefinitionsTakePartInEquality) {
  KORLumSessionFile left(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"), kDynamic,
                         kAll, 0UL);
  KORLumSessionFile right(kGraph, "/data/model.hub", KORLumViewerDef("Product", "Viewer3D"),
                          kDynamic, kAll, 0UL);
  EXPECT_EQ(left == right, 0);
}

TEST(KORLumSessionFile, NoneValuesDifferingOnlyInOptionsAreDifferent) {
  KORLumSessionFile left(kNone, "", KORUnicodeString(""), kDynamic, kAll, 0UL);
  KORLumSessionFile right(kNone, "", KORUnicodeString(""), kDynamic, kAll, 1UL);
  EXPECT_EQ(left == right, 0);
}

TEST(KORLumSessionFile, InequalityIsTheNegationOfEquality) {
  const KORLumSessionFile files[] = {
      GraphFile(), KORLumSessionFile(),
      KORLumSessionFile(kQuery, "/data/parts.qry", KORLumViewerDef("Part", "Viewer3D"), kStatic,
                        kAll, 0UL),
      KORLumSessionFile(kQuery, "/data/parts.qry", KORLumViewerDef("Part", "Viewer3D"), kDynamic,
                        kAll, 0UL)};
  for (const auto& left : files) {
    for (const auto& right : files) EXPECT_EQ(left != right, (left == right) ? 0 : 1);
  }
}

// The no-session-file value.

TEST(KORLumSessionFile, GetNoSessionFileReturnsTheSameInstance) {
  EXPECT_EQ(&KORLumSessionFile::GetNoSessionFile(), &KORLumSessionFile::GetNoSessionFile());
}

TEST(KORLumSessionFile, NoSessionFileIsNoneWithDefaultModesAndNoOption) {
  ExpectNormalisedNone(KORLumSessionFile::GetNoSessionFile(), 0UL);
}

TEST(KORLumSessionFile, NoSessionFileEqualsANoneValueBuiltFromAnyViewerDefinition) {
  KORLumSessionFile none(kNone, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"), kStatic,
                         kSelected, 0UL);
  EXPECT_EQ(KORLumSessionFile::GetNoSessionFile() == none, 1);
}

TEST(KORLumSessionFile, NoSessionFileEqualsANoneValueBuiltFromAnyViewerName) {
  KORLumSessionFile none(kNone, "/data/model.hub", KORUnicodeString("Viewer3D"), kStatic, kSelected,
                         0UL);
  EXPECT_EQ(KORLumSessionFile::GetNoSessionFile() == none, 1);
}

TEST(KORLumSessionFile, NoSessionFileDiffersFromANoneValueWithOptionOne) {
  KORLumSessionFile none(kNone, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"), kStatic,
                         kSelected, 1UL);
  EXPECT_EQ(KORLumSessionFile::GetNoSessionFile() == none, 0);
  EXPECT_EQ(KORLumSessionFile::GetNoSessionFile() != none, 1);
}

TEST(KORLumSessionFile, GettersOfClassMembersReturnTheMembersThemselves) {
  const KORLumSessionFile file = GraphFile();
  EXPECT_EQ(&file.GetFile(), &file.GetFile());
  EXPECT_EQ(&file.GetViewer(), &file.GetViewer());
  EXPECT_EQ(&file.GetViewerDef(), &file.GetViewerDef());
}

// Trace lines.

TEST(KORLumSessionFileTrace, GetTypeOfAGraphFileWritesExactlyOneLine) {
  const KORLumSessionFile file = GraphFile();
  TraceCapture capture;
  (void)file.GetType();
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetType _type = 1\n");
}

TEST(KORLumSessionFileTrace, EachGetterWritesTheMemberItReturns) {
  const KORLumSessionFile file(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"),
                               kStatic, kSelected, 9UL);
  TraceCapture capture;
  (void)file.GetFile();
  (void)file.GetViewerDef();
  (void)file.GetViewer();
  (void)file.GetLoadMode();
  (void)file.GetInstanceMode();
  (void)file.GetOption();
  EXPECT_EQ(capture.Lines(), (Lines{"   KORLumSessionFile::GetFile _file = /data/model.hub",
                                    "   KORLumSessionFile::GetViewerDef _viewerDef = Viewer3D",
                                    "   KORLumSessionFile::GetViewer _viewer = ",
                                    "   KORLumSessionFile::GetLoadMode _loadMode = 2",
                                    "   KORLumSessionFile::GetInstanceMode _instanceMode = 2",
                                    "   KORLumSessionFile::GetOption _option = 9"}));
}

TEST(KORLumSessionFileTrace, AnEmptyStringWritesNothingAfterTheEqualsSign) {
  const KORLumSessionFile none;
  TraceCapture capture;
  (void)none.GetFile();
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetFile _file = \n");
}

TEST(KORLumSessionFileTrace, OptionBitsAreWrittenAsAnUnsignedDecimal) {
  const KORLumSessionFile file(kGraph, "/f", KORUnicodeString("V"), kDynamic, kAll, 0xFFFFFFFFUL);
  TraceCapture capture;
  (void)file.GetOption();
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetOption _option = 4294967295\n");
}

TEST(KORLumSessionFileTrace, ConstructorFromAViewerNameWritesItsArgumentsAsPassed) {
  TraceCapture capture;
  KORLumSessionFile file(kNone, "/data/model.hub", KORUnicodeString("Viewer3D"), kLoadNone,
                         kSelected, 5UL);
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFile::KORLumSessionFile 2 iType = 0",
                   "   KORLumSessionFile::KORLumSessionFile 2 iFile = /data/model.hub",
                   "   KORLumSessionFile::KORLumSessionFile 2 iViewer = Viewer3D",
                   "   KORLumSessionFile::KORLumSessionFile 2 iLoadMode = 0",
                   "   KORLumSessionFile::KORLumSessionFile 2 iInstanceMode = 2",
                   "   KORLumSessionFile::KORLumSessionFile 2 iOption = 5"}));
}

TEST(KORLumSessionFileTrace, ConstructorFromAViewerDefinitionWritesTheDefinitionsViewer) {
  const KORLumViewerDef def("Part", "Viewer3D");
  TraceCapture capture;
  KORLumSessionFile file(kQuery, "/data/parts.qry", def, kStatic, kInstanceNone, 8UL);
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFile::KORLumSessionFile 2 iType = 2",
                   "   KORLumSessionFile::KORLumSessionFile 2 iFile = /data/parts.qry",
                   "   KORLumSessionFile::KORLumSessionFile 2 iViewer = Viewer3D",
                   "   KORLumSessionFile::KORLumSessionFile 2 iLoadMode = 2",
                   "   KORLumSessionFile::KORLumSessionFile 2 iInstanceMode = 0",
                   "   KORLumSessionFile::KORLumSessionFile 2 iOption = 8"}));
}

TEST(KORLumSessionFileTrace, BothValueConstructorsTraceUnderTheSameLabel) {
  TraceCapture capture;
  KORLumSessionFile fromName(kGraph, "/f", KORUnicodeString("V"), kDynamic, kAll, 0UL);
  const Lines fromNameLines = capture.Lines();
  capture.Clear();
  KORLumSessionFile fromDef(kGraph, "/f", KORLumViewerDef("Part", "V"), kDynamic, kAll, 0UL);
  // Same arguments as shown in a trace, so the same lines word for word.
  EXPECT_EQ(capture.Lines(), fromNameLines);
  ASSERT_EQ(fromNameLines.size(), 6U);
  for (const std::string& line : fromNameLines) {
    EXPECT_EQ(line.rfind("   KORLumSessionFile::KORLumSessionFile 2 ", 0), 0U) << line;
  }
}

TEST(KORLumSessionFileTrace, DefaultConstructorAndDestructorWriteNoLines) {
  TraceCapture capture;
  { KORLumSessionFile file; }
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumSessionFileTrace, CopyConstructorWritesTheSevenMembersOfTheCopy) {
  const KORLumSessionFile original = GraphFile();
  TraceCapture capture;
  KORLumSessionFile copy(original);
  const std::string label = "   KORLumSessionFile::KORLumSessionFile (KORLumSessionFile) ";
  EXPECT_EQ(capture.Lines(),
            (Lines{label + "_type = 1", label + "_file = /data/model.hub",
                   label + "_viewer = Viewer3D", label + "_viewerDef = ", label + "_loadMode = 1",
                   label + "_instanceMode = 2", label + "_option = 9"}));
}

TEST(KORLumSessionFileTrace, AssignmentWritesTheSourceInSevenBracketedLines) {
  const KORLumSessionFile source = GraphFile();
  KORLumSessionFile target;
  TraceCapture capture;
  target = source;
  EXPECT_EQ(capture.Lines(), GraphFileOperandLines("   KORLumSessionFile::operator = "));
}

TEST(KORLumSessionFileTrace, SelfAssignmentWritesTheSevenBracketedLines) {
  KORLumSessionFile file = GraphFile();
  const KORLumSessionFile& alias = file;
  TraceCapture capture;
  file = alias;
  EXPECT_EQ(capture.Lines(), GraphFileOperandLines("   KORLumSessionFile::operator = "));
}

TEST(KORLumSessionFileTrace, EqualityWritesTheOtherOperandThenTheResult) {
  const KORLumSessionFile left;
  const KORLumSessionFile right = GraphFile();
  TraceCapture capture;
  (void)(left == right);
  const std::string label = "   KORLumSessionFile::operator == ";
  EXPECT_EQ(capture.Lines(),
            Concatenated({GraphFileOperandLines(label), {label + " isEqual = 0"}}));
}

TEST(KORLumSessionFileTrace, EqualityOfEqualValuesWritesIsEqualOne) {
  const KORLumSessionFile left = GraphFile();
  const KORLumSessionFile right = GraphFile();
  TraceCapture capture;
  (void)(left == right);
  ASSERT_EQ(capture.Lines().size(), 8U);
  EXPECT_EQ(capture.Lines().back(), "   KORLumSessionFile::operator ==  isEqual = 1");
}

TEST(KORLumSessionFileTrace, InequalityShowsTheNestedEqualityScopeThenTheResult) {
  const KORLumSessionFile left;
  const KORLumSessionFile right = GraphFile();
  TraceCapture capture;
  (void)(left != right);
  const std::string nested = "     KORLumSessionFile::operator == ";
  EXPECT_EQ(capture.Lines(), Concatenated({GraphFileOperandLines(nested),
                                           {nested + " isEqual = 0",
                                            "   KORLumSessionFile::operator != isDifferent = 1"}}));
}

TEST(KORLumSessionFileTrace, FirstGetNoSessionFileShowsTheNestedConstructor) {
  TraceCapture capture;
  (void)KORLumSessionFile::GetNoSessionFile();
  const std::string label = "     KORLumSessionFile::KORLumSessionFile 2 ";
  EXPECT_EQ(capture.Lines(),
            (Lines{label + "iType = 0", label + "iFile = ", label + "iViewer = ",
                   label + "iLoadMode = 1", label + "iInstanceMode = 1", label + "iOption = 0"}));
}

TEST(KORLumSessionFileTrace, LaterGetNoSessionFileWritesNoLine) {
  (void)KORLumSessionFile::GetNoSessionFile();
  TraceCapture capture;
  (void)KORLumSessionFile::GetNoSessionFile();
  EXPECT_EQ(capture.Text(), "");
}
