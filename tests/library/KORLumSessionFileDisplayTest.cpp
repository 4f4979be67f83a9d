// The display line of a session file (translated, with a shortened path) and
// its untranslated string form. Unless a test says otherwise there is no
// catalogue and no viewer catalogue: the English texts stand in.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileUtilities.h"
#include "KORLumViewerDef.h"
#include "MethodListFile.h"
#include "SessionFileConfiguration.h"
#include "SessionFileValues.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;

std::string Text(const KORUnicodeString& iText) { return iText.ConvertToChar(); }

// A session file of the given type on iFile, opened with the viewer V,
// Dynamic, All and the given options.
KORLumSessionFile FileOfType(_KORLumSessionFileType iType, const char* iFile,
                             unsigned long iOption = 0UL) {
  return KORLumSessionFile(iType, iFile, KORUnicodeString("V"), kDynamic, kAll, iOption);
}

// A Graph session file of iFile, to look at its displayed path.
KORUnicodeString DisplayedPath(const char* iFile) { return FileOfType(kGraph, iFile).GetNLSFile(); }

}  // namespace

// Display line: the templates.

TEST(KORLumSessionFileDisplay, NoSessionFileShowsTheNoneTypeText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(KORLumSessionFile::GetNoSessionFile().GetNLS()), "None");
}

TEST(KORLumSessionFileDisplay, QueryShowsTypeAndPath) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile query(kQuery, "/data/queries/parts.qry", KORUnicodeString("V"), kStatic,
                                kSelected, 15UL);
  EXPECT_EQ(Text(query.GetNLS()), "Query : /data/queries/parts.qry");
}

TEST(KORLumSessionFileDisplay, GraphShowsViewerNameAndModesWithoutOptions) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORUnicodeString("V"), kDynamic,
                                kSelected, 0UL);
  EXPECT_EQ(Text(graph.GetNLS()), "Graph : /data/model.hub [V] [Dynamic] [Selected]");
}

TEST(KORLumSessionFileDisplay, GraphWithOptionsFiveEndsWithTheOptionText) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORUnicodeString("V"), kDynamic,
                                kSelected, 5UL);
  EXPECT_EQ(Text(graph.GetNLS()), "Graph : /data/model.hub [V] [Dynamic] [Selected] [R+Q]");
}

TEST(KORLumSessionFileDisplay, OptionsWithOnlyUnknownBitsAddNoOptionField) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/model.hub", 16UL).GetNLS()),
            "Graph : /data/model.hub [V] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, TranslatedSeparatorJoinsTheOptionTexts) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "OptionSeparator.Msg = \", \"\n");
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/model.hub", 15UL).GetNLS()),
            "Graph : /data/model.hub [V] [Dynamic] [All] [R, M, Q, C]");
}

TEST(KORLumSessionFileDisplay, GraphFromAViewerDefinitionShowsTheNoViewerText) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"),
                                kDynamic, kAll, 0UL);
  EXPECT_EQ(Text(graph.GetNLS()), "Graph : /data/model.hub [None] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, GraphFromAViewerDefinitionShowsTheTranslatedNoViewerText) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "ViewerNone.Msg = No viewer\n");
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"),
                                kDynamic, kAll, 0UL);
  EXPECT_EQ(Text(graph.GetNLS()), "Graph : /data/model.hub [No viewer] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, OutOfRangeTypeTakesTheGraphFormWithTheNoneText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(static_cast<_KORLumSessionFileType>(3), "/data/model.hub").GetNLS()),
            "None : /data/model.hub [V] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, NegativeTypeTakesTheGraphFormWithTheNoneText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(static_cast<_KORLumSessionFileType>(-1), "/data/model.hub").GetNLS()),
            "None : /data/model.hub [V] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, GraphShowsTheViewersLabel) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "V", "VTag", "Part"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "VTag.Label = Viewer of parts\n");
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/model.hub").GetNLS()),
            "Graph : /data/model.hub [Viewer of parts] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, LongPathIsShortenedInTheLine) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kQuery, "/data/sessions/parts/assembly.qry").GetNLS()),
            "Query : /data/sessions/parts.../assembly.qry");
}

// Display line: inserted texts are not escaped.

TEST(KORLumSessionFileDisplay, PlaceholderInTheFileIsReplacedByALaterText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/%l.hub").GetNLS()),
            "Graph : /data/Dynamic.hub [V] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, PlaceholderReplacedBeforeTheFileStaysInIt) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/%t.hub").GetNLS()),
            "Graph : /data/%t.hub [V] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, PlaceholderInTheViewerIsReplacedByALaterText) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORUnicodeString("%i"), kStatic,
                                kSelected, 0UL);
  EXPECT_EQ(Text(graph.GetNLS()), "Graph : /data/model.hub [Selected] [Static] [Selected]");
}

TEST(KORLumSessionFileDisplay, PlaceholderInATranslatedTextIsReplacedByALaterText) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "LoadModeDynamic.Msg = Dynamic %o\n");
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/model.hub", 1UL).GetNLS()),
            "Graph : /data/model.hub [V] [Dynamic R] [All] [R]");
}

TEST(KORLumSessionFileDisplay, PlaceholderOfAnAbsentOptionFieldIsReplacedInAText) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "InstanceModeAll.Msg = All%o\n");
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/model.hub").GetNLS()),
            "Graph : /data/model.hub [V] [Dynamic] [All]");
}

TEST(KORLumSessionFileDisplay, PercentThatIsNoPlaceholderStaysInTheLine) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/100%.hub", 4UL).GetNLS()),
            "Graph : /data/100%.hub [V] [Dynamic] [All] [Q]");
}

// Display line: the shortened path.

TEST(KORLumSessionFileDisplayedPath, ThirtyTwoCharactersAreShownWhole) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(DisplayedPath("/data/projects/engine/model1.hub")),
            "/data/projects/engine/model1.hub");
}

TEST(KORLumSessionFileDisplayedPath, ThirtyThreeCharactersKeepTheHeadUpToTheLastSlash) {
  SessionFileConfiguration configuration;
  // Last "/" at 20: a base name of 12 characters after a head of 20.
  EXPECT_EQ(Text(DisplayedPath("/data/sessions/parts/assembly.hub")),
            "/data/sessions/parts.../assembly.hub");
}

TEST(KORLumSessionFileDisplayedPath, FortyCharactersWithABaseNameOfSixKeepTwentySix) {
  SessionFileConfiguration configuration;
  // Last "/" at 33.
  const KORUnicodeString shown = DisplayedPath("/data/sessions/engine/blocks/cyl1/a1.hub");
  EXPECT_EQ(Text(shown), "/data/sessions/engine/bloc.../a1.hub");
  EXPECT_EQ(shown.GetLengthInChar(), 36);
}

TEST(KORLumSessionFileDisplayedPath, FiftyCharactersWithALongBaseNameKeepOnlyTheBaseName) {
  SessionFileConfiguration configuration;
  // Last "/" at 10: a base name of 39 characters.
  const KORUnicodeString shown =
      DisplayedPath("/data/proj/engine_block_assembly_with_cylinder.hub");
  EXPECT_EQ(Text(shown), ".../engine_block_assembly_with_cylinder.hub");
  EXPECT_EQ(shown.GetLengthInChar(), 43);
}

TEST(KORLumSessionFileDisplayedPath, BaseNameOfThirtyTwoKeepsOnlyTheBaseName) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(DisplayedPath("/abcdef/engine_block_assembly_versio.hub")),
            ".../engine_block_assembly_versio.hub");
}

TEST(KORLumSessionFileDisplayedPath, BaseNameOfThirtyOneKeepsOneCharacterOfTheHead) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(DisplayedPath("/abcdefg/engine_block_assembly_versi.hub")),
            "/.../engine_block_assembly_versi.hub");
}

TEST(KORLumSessionFileDisplayedPath, LongNameWithoutSlashIsShownWhole) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(DisplayedPath("engine_block_assembly_with_cylinders.hub")),
            "engine_block_assembly_with_cylinders.hub");
}

TEST(KORLumSessionFileDisplayedPath, LongNameWithItsOnlySlashFirstIsShownWhole) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(DisplayedPath("/engine_block_assembly_with_cylinder.hub")),
            "/engine_block_assembly_with_cylinder.hub");
}

TEST(KORLumSessionFileDisplayedPath, LengthIsCountedInCharactersNotBytes) {
  SessionFileConfiguration configuration;
  // 32 characters in 34 bytes: shown whole.
  EXPECT_EQ(Text(DisplayedPath("/données/sessions/modèles/ab.hub")),
            "/données/sessions/modèles/ab.hub");
  // 37 characters: the head is cut after 21 characters, not 21 bytes.
  EXPECT_EQ(Text(DisplayedPath("/données/sessions/modèles/culasse.hub")),
            "/données/sessions/mod.../culasse.hub");
}

// The viewer texts.

TEST(KORLumSessionFileDisplayViewer, ViewerDefinitionTextIsObjectDotViewer) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/f", KORLumViewerDef("Part", "Viewer3D"), kDynamic, kAll,
                                0UL);
  EXPECT_EQ(Text(graph.GetNLSViewerDef()), "Part.Viewer3D");
}

TEST(KORLumSessionFileDisplayViewer, ViewerDefinitionTextIsTranslatedObjectDotViewerLabel) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "Viewer3D", "T3D", "Part"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T3D.Label = 3D viewer\n");
  configuration.WriteCatalogue("", "KORLumSessionFile", "Part.Synonym = Component\n");
  const KORLumSessionFile graph(kGraph, "/f", KORLumViewerDef("Part", "Viewer3D"), kDynamic, kAll,
                                0UL);
  EXPECT_EQ(Text(graph.GetNLSViewerDef()), "Component.3D viewer");
}

TEST(KORLumSessionFileDisplayViewer, WithoutViewerDefinitionTheTextIsTheNoViewerText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/f").GetNLSViewerDef()), "None");
}

TEST(KORLumSessionFileDisplayViewer, WithoutViewerNameTheViewerTextIsTheNoViewerText) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "ViewerNone.Msg = No viewer\n");
  const KORLumSessionFile graph(kGraph, "/f", KORLumViewerDef("Part", "Viewer3D"), kDynamic, kAll,
                                0UL);
  EXPECT_EQ(Text(graph.GetNLSViewer()), "No viewer");
}

// The string form.

TEST(KORLumSessionFileString, NoSessionFileIsZero) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(KORLumSessionFile::GetNoSessionFile().ConvertToString()), "0");
}

TEST(KORLumSessionFileString, QueryIsTwoAndThePath) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kQuery, "/data/queries/parts.qry", 5UL).ConvertToString()),
            "2 : /data/queries/parts.qry");
}

TEST(KORLumSessionFileString, GraphShowsViewerNameAndTheNumbers) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORUnicodeString("V"), kDynamic,
                                kSelected, 0UL);
  EXPECT_EQ(Text(graph.ConvertToString()), "1 : /data/model.hub [V] [1] [2] [0]");
}

TEST(KORLumSessionFileString, GraphWithOptionsFiveEndsWithFive) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORUnicodeString("V"), kDynamic,
                                kSelected, 5UL);
  EXPECT_EQ(Text(graph.ConvertToString()), "1 : /data/model.hub [V] [1] [2] [5]");
}

TEST(KORLumSessionFileString, GraphFromAViewerDefinitionShowsTheDefinition) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"),
                                kStatic, kAll, 0UL);
  EXPECT_EQ(Text(graph.ConvertToString()), "1 : /data/model.hub [Part.Viewer3D] [2] [1] [0]");
}

TEST(KORLumSessionFileString, OptionsWithOnlyUnknownBitsAreWrittenAsTheirNumber) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/data/model.hub", 16UL).ConvertToString()),
            "1 : /data/model.hub [V] [1] [1] [16]");
}

TEST(KORLumSessionFileString, OptionsAreWrittenUnsigned) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kGraph, "/f", 0xFFFFFFFFUL).ConvertToString()),
            "1 : /f [V] [1] [1] [4294967295]");
}

TEST(KORLumSessionFileString, OutOfRangeTypeIsWrittenAsItsNumberInTheGraphForm) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(static_cast<_KORLumSessionFileType>(3), "/f").ConvertToString()),
            "3 : /f [V] [1] [1] [0]");
}

TEST(KORLumSessionFileString, LongPathIsWrittenInFull) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(FileOfType(kQuery, "/data/sessions/parts/assembly.qry").ConvertToString()),
            "2 : /data/sessions/parts/assembly.qry");
}

TEST(KORLumSessionFileString, ConversionToAStringIsTheStringForm) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph(kGraph, "/data/model.hub", KORLumViewerDef("Part", "Viewer3D"),
                                kStatic, kSelected, 9UL);
  const KORUnicodeString converted = graph;
  EXPECT_EQ(Text(converted), "1 : /data/model.hub [Part.Viewer3D] [2] [2] [9]");
}

// Trace lines.

TEST(KORLumSessionFileDisplayTrace, NoSessionFileShowsTheNestedTypeTextThenTheLine) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile& none = KORLumSessionFile::GetNoSessionFile();
  const std::string diagnostic = CatalogueErrorDiagnostic("KORLumSessionFile", "TypeNone.Msg");
  TraceCapture capture;
  (void)none.GetNLS();
  // GetNLS, then its own GetNLSType, then the utilities' GetNLSType and
  // GetNLSMessage, each one level deeper.
  const std::string type = "       KORLumSessionFileUtilities::GetNLSType ";
  const std::string lookup = "         KORLumSessionFileUtilities::GetNLSMessage ";
  EXPECT_EQ(capture.Lines(),
            (Lines{type + "iType = 0", lookup + "iNLSDictionnary = KORLumSessionFile",
                   lookup + "iNLSMessageKey = TypeNone.Msg",
                   lookup + "iDefaultNLSMessage = ", lookup + "Error : " + diagnostic,
                   lookup + "NLSMessage = ", type + "NLSType = None",
                   "   KORLumSessionFile::GetNLS formattedString = None"}));
}

TEST(KORLumSessionFileDisplayTrace, DisplayLineEndsWithTheFormattedString) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph = FileOfType(kGraph, "/data/model.hub", 5UL);
  TraceCapture capture;
  (void)graph.GetNLS();
  ASSERT_FALSE(capture.Lines().empty());
  EXPECT_EQ(capture.Lines().back(),
            "   KORLumSessionFile::GetNLS formattedString = Graph : /data/model.hub [V] [Dynamic] "
            "[All] [R+Q]");
}

TEST(KORLumSessionFileDisplayTrace, DisplayedPathWritesNoLine) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph = FileOfType(kGraph, "/data/sessions/parts/assembly.hub");
  TraceCapture capture;
  (void)graph.GetNLSFile();
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumSessionFileDisplayTrace, ViewerTextShowsOnlyTheNestedTranslation) {
  SessionFileConfiguration configuration;
  (void)KORLumSessionFileUtilities::GetViewers();
  const KORLumSessionFile graph = FileOfType(kGraph, "/f");
  TraceCapture capture;
  (void)graph.GetNLSViewer();
  EXPECT_EQ(capture.Lines(),
            (Lines{"     KORLumSessionFileUtilities::GetNLSViewer iViewer = V",
                   "     KORLumSessionFileUtilities::GetNLSViewer NLSViewer = V"}));
}

TEST(KORLumSessionFileDisplayTrace, ModeAndOptionTextsShowTheNestedUtilitiesLines) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile",
                               "LoadModeStatic.Msg = Static\nInstanceModeSelected.Msg = Selected\n"
                               "OptionSeparator.Msg = +\nOptionQuery.Msg = Q\n");
  const KORLumSessionFile graph(kGraph, "/f", KORUnicodeString("V"), kStatic, kSelected, 4UL);
  TraceCapture capture;
  (void)graph.GetNLSLoadMode();
  (void)graph.GetNLSInstanceMode();
  (void)graph.GetNLSOption();
  std::vector<std::string> ownLines;
  for (const std::string& line : capture.Lines()) {
    // The lookups, one level deeper, are tested with the utilities.
    if (line.find("::GetNLSMessage ") == std::string::npos) ownLines.push_back(line);
  }
  EXPECT_EQ(ownLines,
            (Lines{"     KORLumSessionFileUtilities::GetNLSLoadMode iLoadMode = 2",
                   "     KORLumSessionFileUtilities::GetNLSLoadMode NLSLoadMode = Static",
                   "     KORLumSessionFileUtilities::GetNLSInstanceMode iInstanceMode = 2",
                   "     KORLumSessionFileUtilities::GetNLSInstanceMode NLSInstanceMode = Selected",
                   "     KORLumSessionFileUtilities::GetNLSOption iOption = 4",
                   "     KORLumSessionFileUtilities::GetNLSOption NLSOption = Q"}));
}

TEST(KORLumSessionFileDisplayTrace, StringFormWritesTheFormattedString) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph = FileOfType(kGraph, "/data/model.hub", 9UL);
  TraceCapture capture;
  (void)graph.ConvertToString();
  EXPECT_EQ(
      capture.Lines(),
      (Lines{"   KORLumSessionFile::ConvertToString formattedString = 1 : /data/model.hub [V] "
             "[1] [1] [9]"}));
}

TEST(KORLumSessionFileDisplayTrace, ConversionShowsTheNestedStringFormLineOnly) {
  SessionFileConfiguration configuration;
  const KORLumSessionFile graph = FileOfType(kNone, "/data/model.hub");
  TraceCapture capture;
  const KORUnicodeString converted = graph;
  EXPECT_EQ(capture.Lines(),
            (Lines{"     KORLumSessionFile::ConvertToString formattedString = 0"}));
  EXPECT_EQ(Text(converted), "0");
}
