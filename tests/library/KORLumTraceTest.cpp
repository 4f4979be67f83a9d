// The library's trace-line convention: every line is the scope's indentation
// plus 3 blanks, the label, one blank and the body, ended by a line end.
#include "KORLumTrace.h"

#include <gtest/gtest.h>

#include <ostream>

#include "AllocationCounter.h"
#include "KORLumSessionFileType.h"
#include "KORLumViewerDef.h"
#include "TraceCapture.h"

namespace {

// A piece that counts how often it is written into a line.
struct CountedPiece {
  mutable int written = 0;
};
std::ostream& operator<<(std::ostream& ioStream, const CountedPiece& iPiece) {
  ++iPiece.written;
  return ioStream << "counted";
}

}  // namespace

TEST(KORLumTrace, NamedValueLineIsIndentLabelBlankNameEqualsValue) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::GetType");
  trace.Value("_type", KORLumSessionFileType_Graph);
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetType _type = 1\n");
}

TEST(KORLumTrace, LinePiecesAreWrittenWithoutSeparators) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFileUtilities::GetViewers");
  trace.Line("Number of viewer(s) = [", 3, "]");
  EXPECT_EQ(capture.Text(),
            "   KORLumSessionFileUtilities::GetViewers Number of viewer(s) = [3]\n");
}

TEST(KORLumTrace, NestedScopeLineHasTwoMoreBlanks) {
  TraceCapture capture;
  KORLumTrace outer("Outer::Operation");
  {
    KORLumTrace inner("Inner::Operation");
    inner.Value("isEqual", 0);
  }
  outer.Value("isDifferent", 1);
  EXPECT_EQ(capture.Text(),
            "     Inner::Operation isEqual = 0\n"
            "   Outer::Operation isDifferent = 1\n");
}

TEST(KORLumTrace, LabelKeepsItsTrailingBlank) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::operator == ");
  trace.Value("isEqual", 1);
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::operator ==  isEqual = 1\n");
}

TEST(KORLumTrace, EmptyStringWritesNothingAfterTheEqualsSign) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::GetFile");
  trace.Value("_file", KORUnicodeString());
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetFile _file = \n");
}

TEST(KORLumTrace, EmptyStringWritesNothingBetweenTheBrackets) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::operator = ");
  trace.Line("File          = [", KORUnicodeString(), "]");
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::operator =  File          = []\n");
}

TEST(KORLumTrace, ViewerDefinitionIsWrittenAsItsViewerName) {
  TraceCapture capture;
  const KORLumViewerDef def("A", "V");
  KORLumTrace trace("KORLumSessionFile::GetViewerDef");
  trace.Value("_viewerDef", def);
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetViewerDef _viewerDef = V\n");
}

TEST(KORLumTrace, OptionSetIsWrittenAsUnsignedDecimal) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::GetOption");
  trace.Value("_option", KORLumSessionFileOption_Report | KORLumSessionFileOption_CSB);
  trace.Value("_option", 0xFFFFFFFFUL);
  EXPECT_EQ(capture.Text(),
            "   KORLumSessionFile::GetOption _option = 9\n"
            "   KORLumSessionFile::GetOption _option = 4294967295\n");
}

TEST(KORLumTrace, EnumerationValuesAreWrittenAsSignedDecimals) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::GetLoadMode");
  trace.Value("_loadMode", static_cast<_KORLumGraphSessionLoadMode>(-3));
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetLoadMode _loadMode = -3\n");
}

TEST(KORLumTrace, NonAsciiTextIsWrittenAsUtf8) {
  TraceCapture capture;
  KORLumTrace trace("KORLumSessionFile::GetFile");
  trace.Value("_file", KORUnicodeString("/données/modèle.hub"));
  EXPECT_EQ(capture.Text(), "   KORLumSessionFile::GetFile _file = /données/modèle.hub\n");
}

TEST(KORLumTrace, InactiveLevelWritesAndConvertsNothing) {
  KORHUBTrace::SetActive(0);
  std::ostringstream sink;
  KORHUBTrace::SetOutput(&sink);
  CountedPiece piece;
  {
    KORLumTrace trace("Unit::Operation");
    EXPECT_FALSE(trace.IsActive());
    trace.Line("piece = ", piece);
    trace.Value("piece", piece);
  }
  KORHUBTrace::SetOutput(nullptr);
  EXPECT_EQ(piece.written, 0);
  EXPECT_EQ(sink.str(), "");
}

TEST(KORLumTrace, InactiveLevelAllocatesNothing) {
  KORHUBTrace::SetActive(0);
  const KORUnicodeString file("/a/rather/long/path/that/would/need/the/heap.hub");
  AllocationCounter counter;
  {
    KORLumTrace trace("KORLumSessionFile::GetFile");
    trace.Value("_file", file);
    trace.Line("File          = [", file, "]");
  }
  EXPECT_EQ(counter.Count(), 0);
}

TEST(KORLumTrace, ActiveLevelWritesEachPieceOnce) {
  TraceCapture capture;
  CountedPiece piece;
  KORLumTrace trace("Unit::Operation");
  trace.Value("piece", piece);
  EXPECT_EQ(piece.written, 1);
  EXPECT_EQ(capture.Text(), "   Unit::Operation piece = counted\n");
}

TEST(KORLumTraceDeathTest, AssertionNamesConditionUnitAndLine) {
  EXPECT_DEATH(
      KORLUM_ASSERT(1 == 2, "KORLumSessionFileDef", 48),
      "VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileDef:48: .*Assertion `1 == 2' failed");
}
