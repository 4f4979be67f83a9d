// Showing a Graph session file to the user, from end to end: the client
// builds the session file, asks for its display line, and the library
// translates its kind, modes and options, shortens its path and finds its
// viewer's label through the viewer catalogue of the "KORBRIX" declarations.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORHUBTrace.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileUtilities.h"
#include "KORLumViewerDef.h"
#include "ListText.h"
#include "MethodListFile.h"
#include "SessionFileConfiguration.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;

std::string Text(const KORUnicodeString& iText) { return iText.ConvertToChar(); }

// A path of 47 characters whose base name has 9.
constexpr const char* kSessionPath = "/home/user/projects/engine/assemblies/model.hub";

// The viewer catalogue of the product: a 3D viewer and a drafting tool, and a
// printing method that is no tool of the structure navigator.
void WriteViewerCatalogue(const SessionFileConfiguration& iConfiguration) {
  iConfiguration.WriteMethodList(MethodListFile()
                                     .Entry("HUB", "Tools", "Viewer3D", "Viewer3D", "Part")
                                     .Entry("Both", "Viewer", "Print", "Print", "Part")
                                     .Entry("Both", "Tools", "Drafting", "Drafting", "Drawing"));
}

// The French catalogues: every text of the display line, with a comma as the
// separator of the options.
void WriteFrenchCatalogues(const SessionFileConfiguration& iConfiguration) {
  iConfiguration.SetLanguage("fr_FR.UTF-8");
  iConfiguration.WriteCatalogue("fr", "KORLumSessionFile",
                                "TypeNone.Msg = Aucun\n"
                                "TypeGraph.Msg = Graphe\n"
                                "TypeQuery.Msg = Requête\n"
                                "LoadModeDynamic.Msg = Dynamique\n"
                                "LoadModeStatic.Msg = Statique\n"
                                "InstanceModeAll.Msg = Toutes\n"
                                "InstanceModeSelected.Msg = Sélection\n"
                                "OptionSeparator.Msg = \", \"\n"
                                "OptionReport.Msg = Rapport\n"
                                "OptionModification.Msg = Modification\n"
                                "OptionQuery.Msg = Requête\n"
                                "OptionCSB.Msg = CSB\n"
                                "Part.Synonym = Pièce\n"
                                "Drawing.Synonym = Plan\n");
  iConfiguration.WriteCatalogue(
      "fr", "LumSessionFile", "FileNone.Msg = Aucun fichier\nViewerNone.Msg = Aucun visualiseur\n");
  iConfiguration.WriteCatalogue("fr", "KORDMToolsManager",
                                "Viewer3D.Label = Visualiseur 3D\nDrafting.Label = Mise en plan\n");
}

// The client's request: a Graph session file of kSessionPath opened with
// Viewer3D, load mode 0 (so Dynamic), Selected instances, options Report and
// CSB; traced while it is built and displayed.
Lines DisplayTypicalRequest(std::string& oDisplayLine) {
  TraceCapture capture;
  const KORLumSessionFile file(KORLumSessionFileType_Graph, kSessionPath,
                               KORUnicodeString("Viewer3D"), KORLumGraphSessionLoadMode_None,
                               KORLumGraphSessionInstanceMode_Selected,
                               KORLumSessionFileOption_Report | KORLumSessionFileOption_CSB);
  oDisplayLine = Text(file.GetNLS());
  return capture.Lines();
}

const Lines kConstructorLines = {
    "   KORLumSessionFile::KORLumSessionFile 2 iType = 1",
    std::string("   KORLumSessionFile::KORLumSessionFile 2 iFile = ") + kSessionPath,
    "   KORLumSessionFile::KORLumSessionFile 2 iViewer = Viewer3D",
    "   KORLumSessionFile::KORLumSessionFile 2 iLoadMode = 0",
    "   KORLumSessionFile::KORLumSessionFile 2 iInstanceMode = 2",
    "   KORLumSessionFile::KORLumSessionFile 2 iOption = 9"};

// The viewer catalogue is read once, on the display line's first viewer
// lookup: GetNLS, its GetNLSViewer, the utilities' GetNLSViewer, GetViewers.
const std::string kCatalogueReadLine =
    "         KORLumSessionFileUtilities::GetViewers [1] - Viewer     = [Viewer3D]";

bool Contains(const Lines& iLines, const std::string& iLine) {
  return std::find(iLines.begin(), iLines.end(), iLine) != iLines.end();
}

}  // namespace

TEST(KORLumTypicalRequest, GraphSessionFileWithoutCatalogueShowsTheEnglishTexts) {
  SessionFileConfiguration configuration;
  WriteViewerCatalogue(configuration);
  std::string line;
  const Lines trace = DisplayTypicalRequest(line);

  const std::string expected =
      "Graph : /home/user/projects/eng.../model.hub [Viewer3D] [Dynamic] [Selected] [R+C]";
  EXPECT_EQ(line, expected);
  ASSERT_GT(trace.size(), kConstructorLines.size());
  EXPECT_EQ(Lines(trace.begin(), trace.begin() + 6), kConstructorLines);
  EXPECT_TRUE(Contains(trace, kCatalogueReadLine));
  EXPECT_EQ(trace.back(), "   KORLumSessionFile::GetNLS formattedString = " + expected);
}

TEST(KORLumTypicalRequest, GraphSessionFileWithFrenchCataloguesShowsTheFrenchTexts) {
  SessionFileConfiguration configuration;
  WriteViewerCatalogue(configuration);
  WriteFrenchCatalogues(configuration);
  std::string line;
  const Lines trace = DisplayTypicalRequest(line);

  const std::string expected =
      "Graphe : /home/user/projects/eng.../model.hub [Visualiseur 3D] [Dynamique] [Sélection] "
      "[Rapport, CSB]";
  EXPECT_EQ(line, expected);
  ASSERT_GT(trace.size(), kConstructorLines.size());
  EXPECT_EQ(Lines(trace.begin(), trace.begin() + 6), kConstructorLines);
  EXPECT_TRUE(Contains(trace, kCatalogueReadLine));
  EXPECT_EQ(trace.back(), "   KORLumSessionFile::GetNLS formattedString = " + expected);
}

// Tracing only shows what the operations do: the translated texts, the
// viewer catalogue and the display lines are the same with tracing off.

namespace {

// A representative use of the translated texts and the display line under
// the French configuration; each result is recorded as "what=result".
std::vector<std::string> RunTranslatedScenario() {
  std::vector<std::string> results;
  const auto record = [&results](const char* iWhat, const KORUnicodeString& iResult) {
    results.push_back(std::string(iWhat) + "=" + Text(iResult));
  };
  using Utilities = KORLumSessionFileUtilities;
  const KORLumSessionFile graph(KORLumSessionFileType_Graph, kSessionPath,
                                KORUnicodeString("Viewer3D"), KORLumGraphSessionLoadMode_None,
                                KORLumGraphSessionInstanceMode_Selected, 9UL);
  const KORLumSessionFile fromDef(
      KORLumSessionFileType_Graph, "/data/plan.hub", KORLumViewerDef("Drawing", "Drafting"),
      KORLumGraphSessionLoadMode_Static, KORLumGraphSessionInstanceMode_All, 16UL);
  const KORLumSessionFile query(KORLumSessionFileType_Query, "/data/sessions/parts/assembly.qry",
                                KORUnicodeString(), KORLumGraphSessionLoadMode_None,
                                KORLumGraphSessionInstanceMode_None, 0UL);
  record("graph", graph.GetNLS());
  record("fromDef", fromDef.GetNLS());
  record("fromDef.viewerDef", fromDef.GetNLSViewerDef());
  record("query", query.GetNLS());
  record("none", KORLumSessionFile::GetNoSessionFile().GetNLS());
  record("graph.string", graph.ConvertToString());
  record("fromDef.string", fromDef);
  record("options", Utilities::GetNLSOption(15UL));
  record("noFile", Utilities::GetNLSNoFile());
  record("noViewer", Utilities::GetNLSNoViewer());
  record("unknownObject", Utilities::GetNLSObject("Assembly"));
  record("missing", Utilities::GetNLSMessage("KORLumSessionFile", "Missing.Msg", "Default"));
  results.push_back("viewers=" + ListText(Utilities::GetViewers()));
  results.push_back("labels=" + ListText(Utilities::GetNLSViewers()));
  results.push_back("synonyms=" + ListText(Utilities::GetNLSObjects()));
  results.push_back("partViewers=" + ListText(Utilities::GetViewers("Part")));
  return results;
}

const std::vector<std::string> kTranslatedResults = {
    // The first text is split over two lines (no comma is missing).
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma)
    "graph=Graphe : /home/user/projects/eng.../model.hub [Visualiseur 3D] [Dynamique] "
    "[Sélection] [Rapport, CSB]",
    "fromDef=Graphe : /data/plan.hub [Aucun visualiseur] [Statique] [Toutes]",
    "fromDef.viewerDef=Plan.Mise en plan",
    "query=Requête : /data/sessions/parts.../assembly.qry",
    "none=Aucun",
    "graph.string=1 : /home/user/projects/engine/assemblies/model.hub [Viewer3D] [1] [2] [9]",
    "fromDef.string=1 : /data/plan.hub [Drawing.Drafting] [2] [1] [16]",
    "options=Rapport, Modification, Requête, CSB",
    "noFile=Aucun fichier",
    "noViewer=Aucun visualiseur",
    "unknownObject=Assembly",
    "missing=Default",
    "viewers=[Viewer3D] [Drafting]",
    "labels=[Visualiseur 3D] [Mise en plan]",
    "synonyms=[Pièce] [Plan]",
    "partViewers=[Viewer3D]"};

class KORLumTranslatedTracingOnOff : public ::testing::TestWithParam<bool> {};

}  // namespace

TEST_P(KORLumTranslatedTracingOnOff, ResultsAreTheSameWhetherTracingIsOnOrOff) {
  SessionFileConfiguration configuration;
  WriteViewerCatalogue(configuration);
  WriteFrenchCatalogues(configuration);
  TraceCapture capture;
  KORHUBTrace::SetActive(GetParam() ? 1 : 0);
  EXPECT_EQ(RunTranslatedScenario(), kTranslatedResults);
  // The scenario did run under the intended setting.
  EXPECT_EQ(capture.Text().empty(), !GetParam());
}

INSTANTIATE_TEST_SUITE_P(Tracing, KORLumTranslatedTracingOnOff, ::testing::Values(false, true),
                         [](const ::testing::TestParamInfo<bool>& iInfo) {
                           return std::string(iInfo.param ? "On" : "Off");
                         });
