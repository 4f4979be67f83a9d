// Translated texts of the session-file values: the catalogue lookup with its
// default, the kind, mode and option texts from "KORLumSessionFile", and the
// "no file" and "no viewer" texts from "LumSessionFile".
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORLumSessionFileUtilities.h"
#include "KORMsgCatalog.h"
#include "SessionFileConfiguration.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;
using Utilities = KORLumSessionFileUtilities;

std::string Text(const KORUnicodeString& iText) { return iText.ConvertToChar(); }

// One value text: the operation applied to one value, and the text expected.
struct ValueTextCase {
  const char* name;
  std::function<KORUnicodeString()> text;
  // Both read through GetParam(), which cppcheck does not follow.
  // cppcheck-suppress unusedStructMember
  const char* untranslated;
  // cppcheck-suppress unusedStructMember
  const char* french;
};

// Every value of the three enumerations, with a value of each outside them.
const ValueTextCase kValueTexts[] = {
    {"TypeNone", [] { return Utilities::GetNLSType(KORLumSessionFileType_None); }, "None", "Aucun"},
    {"TypeGraph", [] { return Utilities::GetNLSType(KORLumSessionFileType_Graph); }, "Graph",
     "Graphe"},
    {"TypeQuery", [] { return Utilities::GetNLSType(KORLumSessionFileType_Query); }, "Query",
     "Requête"},
    {"TypeSeven", [] { return Utilities::GetNLSType(static_cast<_KORLumSessionFileType>(7)); },
     "None", "Aucun"},
    {"TypeMinusOne", [] { return Utilities::GetNLSType(static_cast<_KORLumSessionFileType>(-1)); },
     "None", "Aucun"},
    {"LoadModeNone", [] { return Utilities::GetNLSLoadMode(KORLumGraphSessionLoadMode_None); },
     "None", "Aucun chargement"},
    {"LoadModeDynamic",
     [] { return Utilities::GetNLSLoadMode(KORLumGraphSessionLoadMode_Dynamic); }, "Dynamic",
     "Dynamique"},
    {"LoadModeStatic", [] { return Utilities::GetNLSLoadMode(KORLumGraphSessionLoadMode_Static); },
     "Static", "Statique"},
    {"LoadModeThree",
     [] { return Utilities::GetNLSLoadMode(static_cast<_KORLumGraphSessionLoadMode>(3)); }, "None",
     "Aucun chargement"},
    {"InstanceModeNone",
     [] { return Utilities::GetNLSInstanceMode(KORLumGraphSessionInstanceMode_None); }, "None",
     "Aucune instance"},
    {"InstanceModeAll",
     [] { return Utilities::GetNLSInstanceMode(KORLumGraphSessionInstanceMode_All); }, "All",
     "Toutes"},
    {"InstanceModeSelected",
     [] { return Utilities::GetNLSInstanceMode(KORLumGraphSessionInstanceMode_Selected); },
     "Selected", "Sélectionnées"},
    {"InstanceModeThree",
     [] { return Utilities::GetNLSInstanceMode(static_cast<_KORLumGraphSessionInstanceMode>(3)); },
     "None", "Aucune instance"},
};

constexpr const char* kFrenchValueTexts =
    "TypeNone.Msg = Aucun\n"
    "TypeGraph.Msg = Graphe\n"
    "TypeQuery.Msg = Requête\n"
    "LoadModeNone.Msg = Aucun chargement\n"
    "LoadModeDynamic.Msg = Dynamique\n"
    "LoadModeStatic.Msg = Statique\n"
    "InstanceModeNone.Msg = Aucune instance\n"
    "InstanceModeAll.Msg = Toutes\n"
    "InstanceModeSelected.Msg = Sélectionnées\n";

// Parameterised test names and failure messages show the case by its name.
void PrintTo(const ValueTextCase& iCase, std::ostream* oStream) { *oStream << iCase.name; }

class KORLumNLSValueText : public ::testing::TestWithParam<ValueTextCase> {};

std::string CaseName(const ::testing::TestParamInfo<ValueTextCase>& iInfo) {
  return iInfo.param.name;
}

}  // namespace

// The value texts.

TEST_P(KORLumNLSValueText, WithoutCatalogueIsTheEnglishText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(GetParam().text()), GetParam().untranslated);
}

TEST_P(KORLumNLSValueText, WithATranslationIsTheTranslation) {
  SessionFileConfiguration configuration;
  configuration.SetLanguage("fr_FR.UTF-8");
  configuration.WriteCatalogue("fr", "KORLumSessionFile", kFrenchValueTexts);
  EXPECT_EQ(Text(GetParam().text()), GetParam().french);
}

TEST_P(KORLumNLSValueText, EmptyTranslationFallsBackToTheEnglishText) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile",
                               "TypeNone.Msg =\nTypeGraph.Msg =\nTypeQuery.Msg = \"\"\n"
                               "LoadModeNone.Msg =\nLoadModeDynamic.Msg =\nLoadModeStatic.Msg =\n"
                               "InstanceModeNone.Msg =\nInstanceModeAll.Msg =\n"
                               "InstanceModeSelected.Msg =\n");
  EXPECT_EQ(Text(GetParam().text()), GetParam().untranslated);
}

TEST_P(KORLumNLSValueText, TranslationInTheOtherCatalogueIsNotUsed) {
  SessionFileConfiguration configuration;
  configuration.SetLanguage("fr");
  configuration.WriteCatalogue("fr", "LumSessionFile", kFrenchValueTexts);
  EXPECT_EQ(Text(GetParam().text()), GetParam().untranslated);
}

INSTANTIATE_TEST_SUITE_P(EveryValue, KORLumNLSValueText, ::testing::ValuesIn(kValueTexts),
                         CaseName);

TEST(KORLumNLSText, TypeGraphDeclaredEmptyIsGraph) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeGraph.Msg =\n");
  EXPECT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)), "Graph");
}

// A text asked for again gives what a lookup of the catalogue gives.

TEST(KORLumNLSText, TypeTextAskedAgainFollowsTheCatalogueOnceItIsReadAgain) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeGraph.Msg = Graph file\n");
  ASSERT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)), "Graph file");
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeGraph.Msg = Graph session\n");
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)), "Graph session");
}

TEST(KORLumNLSText, TypeTextAskedAgainIsWhatTheCatalogueStillGives) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeGraph.Msg = Graph file\n");
  ASSERT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)), "Graph file");
  // The catalogue service keeps what it read until its cache is flushed.
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeGraph.Msg = Graph session\n");
  EXPECT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)),
            Text(Utilities::GetNLSMessage("KORLumSessionFile", "TypeGraph.Msg", "")));
}

TEST(KORLumNLSText, MissingTypeTextIsTranslatedOnceTheCatalogueIsReadAgain) {
  SessionFileConfiguration configuration;
  ASSERT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)), "Graph");
  configuration.SetLanguage("fr");
  configuration.WriteCatalogue("fr", "KORLumSessionFile", kFrenchValueTexts);
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Graph)), "Graphe");
}

TEST(KORLumNLSText, ModeTextsAskedAgainFollowTheLanguageOnceTheCatalogueIsReadAgain) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("fr", "KORLumSessionFile", kFrenchValueTexts);
  ASSERT_EQ(Text(Utilities::GetNLSLoadMode(KORLumGraphSessionLoadMode_Static)), "Static");
  ASSERT_EQ(Text(Utilities::GetNLSInstanceMode(KORLumGraphSessionInstanceMode_All)), "All");
  configuration.SetLanguage("fr_CA");
  EXPECT_EQ(Text(Utilities::GetNLSLoadMode(KORLumGraphSessionLoadMode_Static)), "Statique");
  EXPECT_EQ(Text(Utilities::GetNLSInstanceMode(KORLumGraphSessionInstanceMode_All)), "Toutes");
}

// Options.

TEST(KORLumNLSOption, NoBitGivesAnEmptyText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSOption(0UL)), "");
}

TEST(KORLumNLSOption, OnlyAnUnknownBitGivesAnEmptyText) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSOption(16UL)), "");
}

TEST(KORLumNLSOption, FourBitsWithoutCatalogueAreTheLettersJoinedByPlus) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSOption(15UL)), "R+M+Q+C");
}

TEST(KORLumNLSOption, UnknownBitsBesideTheFourAreIgnored) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSOption(0x1FUL)), "R+M+Q+C");
}

TEST(KORLumNLSOption, SeparatorStandsOnlyBetweenTextsThatArePresent) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSOption(5UL)), "R+Q");
}

TEST(KORLumNLSOption, EachBitAloneIsItsLetter) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSOption(1UL)), "R");
  EXPECT_EQ(Text(Utilities::GetNLSOption(2UL)), "M");
  EXPECT_EQ(Text(Utilities::GetNLSOption(4UL)), "Q");
  EXPECT_EQ(Text(Utilities::GetNLSOption(8UL)), "C");
}

TEST(KORLumNLSOption, TranslatedSeparatorJoinsTheLetters) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "OptionSeparator.Msg = \", \"\n");
  EXPECT_EQ(Text(Utilities::GetNLSOption(15UL)), "R, M, Q, C");
}

TEST(KORLumNLSOption, TranslatedTextsReplaceTheLetters) {
  SessionFileConfiguration configuration;
  configuration.SetLanguage("fr");
  configuration.WriteCatalogue("fr", "KORLumSessionFile",
                               "OptionReport.Msg = Rapport\nOptionModification.Msg = Modification\n"
                               "OptionQuery.Msg = Requête\nOptionCSB.Msg = CSB\n");
  EXPECT_EQ(Text(Utilities::GetNLSOption(15UL)), "Rapport+Modification+Requête+CSB");
}

TEST(KORLumNLSOption, OptionDeclaredEmptyAddsOnlyItsSeparator) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "OptionModification.Msg =\n");
  // Report, then the separator before the (empty) Modification text.
  EXPECT_EQ(Text(Utilities::GetNLSOption(3UL)), "R+");
}

TEST(KORLumNLSOption, LeadingOptionDeclaredEmptyAddsNoSeparator) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "OptionReport.Msg =\n");
  EXPECT_EQ(Text(Utilities::GetNLSOption(5UL)), "Q");
}

// The "no file" and "no viewer" texts.

TEST(KORLumNLSOption, OptionTextsAskedAgainFollowTheCatalogueOnceItIsReadAgain) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile",
                               "OptionSeparator.Msg = /\nOptionReport.Msg = Report\n");
  ASSERT_EQ(Text(Utilities::GetNLSOption(5UL)), "Report/Q");
  configuration.WriteCatalogue("", "KORLumSessionFile",
                               "OptionSeparator.Msg = \", \"\nOptionQuery.Msg = Query\n");
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Text(Utilities::GetNLSOption(5UL)), "R, Query");
}

TEST(KORLumNLSAbsence, NoFileWithoutCatalogueIsNone) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSNoFile()), "None");
}

TEST(KORLumNLSAbsence, NoViewerWithoutCatalogueIsNone) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSNoViewer()), "None");
}

TEST(KORLumNLSAbsence, NoFileAndNoViewerComeFromTheCatalogueWithoutPrefix) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile",
                               "FileNone.Msg = No file\nViewerNone.Msg = No viewer\n");
  EXPECT_EQ(Text(Utilities::GetNLSNoFile()), "No file");
  EXPECT_EQ(Text(Utilities::GetNLSNoViewer()), "No viewer");
}

TEST(KORLumNLSAbsence, NoFileAndNoViewerAreNotTakenFromTheValueCatalogue) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile",
                               "FileNone.Msg = No file\nViewerNone.Msg = No viewer\n");
  EXPECT_EQ(Text(Utilities::GetNLSNoFile()), "None");
  EXPECT_EQ(Text(Utilities::GetNLSNoViewer()), "None");
}

TEST(KORLumNLSAbsence, EmptyTranslationsFallBackToNone) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "FileNone.Msg =\nViewerNone.Msg =\n");
  EXPECT_EQ(Text(Utilities::GetNLSNoFile()), "None");
  EXPECT_EQ(Text(Utilities::GetNLSNoViewer()), "None");
}

TEST(KORLumNLSAbsence, NoViewerIsReadOnceAndKeptWhenTheCatalogueChanges) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "ViewerNone.Msg = No viewer\n");
  ASSERT_EQ(Text(Utilities::GetNLSNoViewer()), "No viewer");
  configuration.WriteCatalogue("", "LumSessionFile", "ViewerNone.Msg = Without viewer\n");
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Text(Utilities::GetNLSNoViewer()), "No viewer");
}

TEST(KORLumNLSAbsence, NoFileFollowsTheCatalogueAtEveryCall) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "FileNone.Msg = No file\n");
  ASSERT_EQ(Text(Utilities::GetNLSNoFile()), "No file");
  configuration.WriteCatalogue("", "LumSessionFile", "FileNone.Msg = Without file\n");
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Text(Utilities::GetNLSNoFile()), "Without file");
}

// The catalogue lookup.

TEST(KORLumNLSMessage, FoundMessageIsReturned) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "Messages", "Greeting.Msg = Hello\n");
  EXPECT_EQ(Text(Utilities::GetNLSMessage("Messages", "Greeting.Msg", "Default")), "Hello");
}

TEST(KORLumNLSMessage, MissingKeyGivesTheDefault) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "Messages", "Greeting.Msg = Hello\n");
  EXPECT_EQ(Text(Utilities::GetNLSMessage("Messages", "Farewell.Msg", "Default")), "Default");
}

TEST(KORLumNLSMessage, MissingCatalogueGivesTheDefault) {
  SessionFileConfiguration configuration;
  EXPECT_EQ(Text(Utilities::GetNLSMessage("Messages", "Greeting.Msg", "Default")), "Default");
}

TEST(KORLumNLSMessage, MessageDeclaredEmptyIsEmptyDespiteTheDefault) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "Messages", "Greeting.Msg =\n");
  EXPECT_EQ(Text(Utilities::GetNLSMessage("Messages", "Greeting.Msg", "Default")), "");
}

TEST(KORLumNLSMessage, MessageIsReturnedWithItsPlaceholdersUnchanged) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "Messages", "Open.Msg = Open {1} with {2}\n");
  EXPECT_EQ(Text(Utilities::GetNLSMessage("Messages", "Open.Msg", "")), "Open {1} with {2}");
}

TEST(KORLumNLSMessageTrace, FoundMessageWritesTheThreeInputsAndTheResult) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "Messages", "Greeting.Msg = Hello\n");
  TraceCapture capture;
  (void)Utilities::GetNLSMessage("Messages", "Greeting.Msg", "Default");
  const std::string prefix = "   KORLumSessionFileUtilities::GetNLSMessage ";
  EXPECT_EQ(capture.Lines(),
            (Lines{prefix + "iNLSDictionnary = Messages", prefix + "iNLSMessageKey = Greeting.Msg",
                   prefix + "iDefaultNLSMessage = Default", prefix + "NLSMessage = Hello"}));
}

TEST(KORLumNLSMessageTrace, CatalogueErrorWritesTheErrorLineBeforeTheDefault) {
  SessionFileConfiguration configuration;
  const std::string diagnostic = CatalogueErrorDiagnostic("Messages", "Greeting.Msg");
  ASSERT_FALSE(diagnostic.empty());
  TraceCapture capture;
  (void)Utilities::GetNLSMessage("Messages", "Greeting.Msg", "Default");
  const std::string prefix = "   KORLumSessionFileUtilities::GetNLSMessage ";
  EXPECT_EQ(capture.Lines(),
            (Lines{prefix + "iNLSDictionnary = Messages", prefix + "iNLSMessageKey = Greeting.Msg",
                   prefix + "iDefaultNLSMessage = Default", prefix + "Error : " + diagnostic,
                   prefix + "NLSMessage = Default"}));
}

// The value texts' own lines.

TEST(KORLumNLSTextTrace, TypeTextWritesItsArgumentTheNestedLookupAndTheResult) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeQuery.Msg = Query file\n");
  TraceCapture capture;
  (void)Utilities::GetNLSType(KORLumSessionFileType_Query);
  const std::string lookup = "     KORLumSessionFileUtilities::GetNLSMessage ";
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileUtilities::GetNLSType iType = 2",
                   lookup + "iNLSDictionnary = KORLumSessionFile",
                   lookup + "iNLSMessageKey = TypeQuery.Msg",
                   lookup + "iDefaultNLSMessage = ", lookup + "NLSMessage = Query file",
                   "   KORLumSessionFileUtilities::GetNLSType NLSType = Query file"}));
}

TEST(KORLumNLSTextTrace, TypeTextAskedAgainWhileTracingIsOnWritesItsNestedLookup) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile", "TypeQuery.Msg = Query file\n");
  ASSERT_EQ(Text(Utilities::GetNLSType(KORLumSessionFileType_Query)), "Query file");
  TraceCapture capture;
  (void)Utilities::GetNLSType(KORLumSessionFileType_Query);
  const std::string lookup = "     KORLumSessionFileUtilities::GetNLSMessage ";
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileUtilities::GetNLSType iType = 2",
                   lookup + "iNLSDictionnary = KORLumSessionFile",
                   lookup + "iNLSMessageKey = TypeQuery.Msg",
                   lookup + "iDefaultNLSMessage = ", lookup + "NLSMessage = Query file",
                   "   KORLumSessionFileUtilities::GetNLSType NLSType = Query file"}));
}

TEST(KORLumNLSTextTrace, MissingOptionTextAskedAgainWhileTracingIsOnWritesItsErrorLine) {
  SessionFileConfiguration configuration;
  const std::string diagnostic = CatalogueErrorDiagnostic("KORLumSessionFile", "OptionCSB.Msg");
  ASSERT_FALSE(diagnostic.empty());
  ASSERT_EQ(Text(Utilities::GetNLSOption(8UL)), "C");
  TraceCapture capture;
  EXPECT_EQ(Text(Utilities::GetNLSOption(8UL)), "C");
  const Lines lines = capture.Lines();
  const std::string error = "     KORLumSessionFileUtilities::GetNLSMessage Error : " + diagnostic;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), error), 1) << ::testing::PrintToString(lines);
}

TEST(KORLumNLSTextTrace, ModeTextsWriteTheirArgumentsAndResultsUnderTheirOwnLabels) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORLumSessionFile",
                               "LoadModeStatic.Msg = Static\nInstanceModeAll.Msg = All\n");
  TraceCapture capture;
  (void)Utilities::GetNLSLoadMode(KORLumGraphSessionLoadMode_Static);
  (void)Utilities::GetNLSInstanceMode(KORLumGraphSessionInstanceMode_All);
  const Lines lines = capture.Lines();
  ASSERT_EQ(lines.size(), 12U);
  EXPECT_EQ(lines[0], "   KORLumSessionFileUtilities::GetNLSLoadMode iLoadMode = 2");
  EXPECT_EQ(lines[5], "   KORLumSessionFileUtilities::GetNLSLoadMode NLSLoadMode = Static");
  EXPECT_EQ(lines[6], "   KORLumSessionFileUtilities::GetNLSInstanceMode iInstanceMode = 1");
  EXPECT_EQ(lines[11], "   KORLumSessionFileUtilities::GetNLSInstanceMode NLSInstanceMode = All");
}

TEST(KORLumNLSTextTrace, OptionTextWritesItsBitsAsAnUnsignedNumberAndItsResult) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue(
      "", "KORLumSessionFile",
      "OptionSeparator.Msg = +\nOptionReport.Msg = R\nOptionCSB.Msg = C\n");
  TraceCapture capture;
  (void)Utilities::GetNLSOption(9UL);
  const Lines lines = capture.Lines();
  // The option bits, three nested lookups of four lines (separator, Report,
  // CSB), the result.
  ASSERT_EQ(lines.size(), 14U);
  EXPECT_EQ(lines.front(), "   KORLumSessionFileUtilities::GetNLSOption iOption = 9");
  EXPECT_EQ(lines[2],
            "     KORLumSessionFileUtilities::GetNLSMessage iNLSMessageKey = OptionSeparator.Msg");
  EXPECT_EQ(lines[3], "     KORLumSessionFileUtilities::GetNLSMessage iDefaultNLSMessage = +");
  EXPECT_EQ(lines.back(), "   KORLumSessionFileUtilities::GetNLSOption NLSOption = R+C");
}

TEST(KORLumNLSTextTrace, NoFileWritesItsResult) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "FileNone.Msg = No file\n");
  TraceCapture capture;
  (void)Utilities::GetNLSNoFile();
  ASSERT_FALSE(capture.Lines().empty());
  EXPECT_EQ(capture.Lines().back(),
            "   KORLumSessionFileUtilities::GetNLSNoFile NLSNoFile = No file");
}

TEST(KORLumNLSTextTrace, LaterNoViewerWritesOnlyTheKeptText) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "LumSessionFile", "ViewerNone.Msg = No viewer\n");
  (void)Utilities::GetNLSNoViewer();
  TraceCapture capture;
  (void)Utilities::GetNLSNoViewer();
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileUtilities::GetNLSNoViewer _NLSNoViewer = No viewer"}));
}

TEST(KORLumNLSTextTrace, NamesWriteTheirArgumentAndTranslation) {
  SessionFileConfiguration configuration;
  (void)Utilities::GetViewers();
  TraceCapture capture;
  (void)Utilities::GetNLSObject("Part");
  (void)Utilities::GetNLSViewer("Viewer3D");
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileUtilities::GetNLSObject iObject = Part",
                   "   KORLumSessionFileUtilities::GetNLSObject NLSObject = Part",
                   "   KORLumSessionFileUtilities::GetNLSViewer iViewer = Viewer3D",
                   "   KORLumSessionFileUtilities::GetNLSViewer NLSViewer = Viewer3D"}));
}

TEST(KORLumNLSTextTrace, NameListsWriteNoLineOfTheirOwn) {
  SessionFileConfiguration configuration;
  (void)Utilities::GetViewers();
  TraceCapture capture;
  (void)Utilities::GetNLSObjects();
  (void)Utilities::GetNLSViewers();
  EXPECT_EQ(capture.Text(), "");
}
