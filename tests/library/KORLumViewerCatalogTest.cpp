// The viewer catalogue: the viewers of the structure navigator's tools, read
// once from the METHOD_LIST table of the "KORBRIX" declarations, with their
// labels from "KORDMToolsManager" and their objects' synonyms from
// "KORLumSessionFile".
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORListLumViewerBag.h"
#include "KORListLumViewerDef.h"
#include "KORLumSessionFileUtilities.h"
#include "KORLumViewerBag.h"
#include "KORLumViewerDef.h"
#include "KORMsgCatalog.h"
#include "ListText.h"
#include "MethodListFile.h"
#include "SessionFileConfiguration.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;
using Utilities = KORLumSessionFileUtilities;

std::string Text(const KORUnicodeString& iText) { return iText.ConvertToChar(); }

// The bags as "object: [viewer] [viewer]", one per bag.
std::vector<std::string> BagTexts(const KORListValKORLumViewerBag& iBags) {
  std::vector<std::string> texts;
  for (int i = 1; i <= iBags.Size(); ++i) {
    texts.push_back(Text(iBags[i].GetObject()) + ": " + ListText(iBags[i].GetViewers()));
  }
  return texts;
}

// The definitions as "object.viewer".
std::vector<std::string> DefinitionTexts(const KORListValKORLumViewerDef& iDefinitions) {
  std::vector<std::string> texts;
  for (int i = 1; i <= iDefinitions.Size(); ++i) {
    texts.push_back(Text(iDefinitions[i].GetObject()) + "." + Text(iDefinitions[i].GetViewer()));
  }
  return texts;
}

// The lines of one GetNLSMessage nested once inside the caller's scope.
Lines NestedLookupLines(const std::string& iCatalogue, const std::string& iKey,
                        const std::string& iResult) {
  const std::string prefix = "     KORLumSessionFileUtilities::GetNLSMessage ";
  return {prefix + "iNLSDictionnary = " + iCatalogue, prefix + "iNLSMessageKey = " + iKey,
          prefix + "iDefaultNLSMessage = ", prefix + "NLSMessage = " + iResult};
}

const std::string kGetViewers = "   KORLumSessionFileUtilities::GetViewers ";

}  // namespace

// Kept and skipped entries.

TEST(KORLumViewerCatalog, KeptEntryGivesOneViewerAndOneBagOfItsObject) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O1: [C1]"}));
}

TEST(KORLumViewerCatalog, ViewerLabelComesFromToolsManagerCatalogueUnderTagDotLabel) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T1.Label = Viewer one\n");
  // The same key in the session-file catalogue is not the viewer's label.
  configuration.WriteCatalogue("", "KORLumSessionFile", "T1.Label = Wrong catalogue\n");
  EXPECT_EQ(ListText(Utilities::GetNLSViewers()), "[Viewer one]");
  EXPECT_EQ(Text(Utilities::GetNLSViewer("C1")), "Viewer one");
}

TEST(KORLumViewerCatalog, ObjectSynonymComesFromSessionFileCatalogueUnderObjectDotSynonym) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORLumSessionFile", "O1.Synonym = Object one\n");
  configuration.WriteCatalogue("", "KORDMToolsManager", "O1.Synonym = Wrong catalogue\n");
  EXPECT_EQ(ListText(Utilities::GetNLSObjects()), "[Object one]");
  EXPECT_EQ(Text(Utilities::GetNLSObject("O1")), "Object one");
}

TEST(KORLumViewerCatalog, LabelAndSynonymFollowTheUsersLanguage) {
  SessionFileConfiguration configuration;
  configuration.SetLanguage("fr_FR.UTF-8");
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T1.Label = Viewer one\n");
  configuration.WriteCatalogue("fr", "KORDMToolsManager", "T1.Label = Visualiseur un\n");
  configuration.WriteCatalogue("fr", "KORLumSessionFile", "O1.Synonym = Objet un\n");
  EXPECT_EQ(Text(Utilities::GetNLSViewer("C1")), "Visualiseur un");
  EXPECT_EQ(Text(Utilities::GetNLSObject("O1")), "Objet un");
}

TEST(KORLumViewerCatalog, WhereBothIsKeptLikeHub) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("Both", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1] [C2]");
}

TEST(KORLumViewerCatalog, RoleOtherThanToolsIsSkippedAndReadingGoesOn) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("Both", "Viewer", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C2]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O2: [C2]"}));
}

TEST(KORLumViewerCatalog, EntryWithoutRoleIsSkippedAndReadingGoesOn) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", nullptr, "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C2]");
}

TEST(KORLumViewerCatalog, WhereAndRoleAreComparedExactly) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("hub", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "tools", "C2", "T2", "O2")
                                    .Entry("Graph", "Tools", "C3", "T3", "O3")
                                    .Entry("HUB ", "Tools", "C4", "T4", "O4")
                                    .Entry("HUB", "Tools", "C5", "T5", "O5"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C5]");
}

TEST(KORLumViewerCatalog, SkippedEntryWithoutCommandOrTagDoesNotEndReading) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Viewer", nullptr, nullptr, nullptr)
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C2]");
}

// The end of the table.

TEST(KORLumViewerCatalog, MissingWhereInTheMiddleEndsTheTable) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry(nullptr, "Tools", "C2", "T2", "O2")
                                    .Entry("HUB", "Tools", "C3", "T3", "O3"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O1: [C1]"}));
}

TEST(KORLumViewerCatalog, KeptEntryWithoutCommandEndsReading) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", nullptr, "T2", "O2")
                                    .Entry("HUB", "Tools", "C3", "T3", "O3"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1]");
  EXPECT_EQ(ListText(Utilities::GetViewers("O2")), "");
}

TEST(KORLumViewerCatalog, KeptEntryWithoutTagEndsReadingWithoutItsCommand) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", nullptr, "O2")
                                    .Entry("HUB", "Tools", "C3", "T3", "O3"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1]");
  EXPECT_EQ(ListText(Utilities::GetNLSViewers()), "[C1]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O1: [C1]"}));
}

TEST(KORLumViewerCatalog, KeptEntryWithoutObjectAddsItsCommandAndEndsReading) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", nullptr)
                                    .Entry("HUB", "Tools", "C3", "T3", "O3"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1] [C2]");
  EXPECT_EQ(ListText(Utilities::GetNLSViewers()), "[C1] [C2]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O1: [C1]"}));
  EXPECT_EQ(ListText(Utilities::GetNLSObjects()), "[O1]");
}

TEST(KORLumViewerCatalog, KeptEntryWithAnEmptyObjectAddsItsCommandOnlyAndReadingGoesOn) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1] [C2]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O2: [C2]"}));
}

// Several viewers, several objects.

TEST(KORLumViewerCatalog, SameCommandAndObjectTwiceGiveTheCommandTwiceButOnceInTheBag) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("Both", "Tools", "C1", "T1", "O1"));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1] [C1]");
  EXPECT_EQ(ListText(Utilities::GetNLSViewers()), "[C1] [C1]");
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), (std::vector<std::string>{"O1: [C1]"}));
}

TEST(KORLumViewerCatalog, CommandListedTwiceIsShownWithTheLabelOfItsFirstEntry) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C1", "T2", "O2"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T1.Label = First\nT2.Label = Second\n");
  EXPECT_EQ(ListText(Utilities::GetNLSViewers()), "[First] [Second]");
  EXPECT_EQ(Text(Utilities::GetNLSViewer("C1")), "First");
}

TEST(KORLumViewerCatalog, EveryNameOfALargeCatalogueIsTranslatedAndEveryObjectHasItsViewers) {
  SessionFileConfiguration configuration;
  MethodListFile table;
  std::string labels;
  std::string synonyms;
  for (int n = 1; n <= 2000; ++n) {
    const std::string viewer = "C" + std::to_string(n);
    const std::string object = "O" + std::to_string(n % 1000);
    table.Entry("HUB", "Tools", viewer.c_str(), ("T" + viewer).c_str(), object.c_str());
    labels += "T" + viewer + ".Label = Label " + viewer + "\n";
  }
  for (int i = 0; i < 1000; ++i) {
    synonyms += "O" + std::to_string(i) + ".Synonym = Synonym " + std::to_string(i) + "\n";
  }
  configuration.WriteMethodList(table);
  configuration.WriteCatalogue("", "KORDMToolsManager", labels);
  configuration.WriteCatalogue("", "KORLumSessionFile", synonyms);
  for (int n = 1; n <= 2000; ++n) {
    const std::string viewer = "C" + std::to_string(n);
    ASSERT_EQ(Text(Utilities::GetNLSViewer(viewer.c_str())), "Label " + viewer);
  }
  for (int i = 0; i < 1000; ++i) {
    const std::string object = "O" + std::to_string(i);
    ASSERT_EQ(Text(Utilities::GetNLSObject(object.c_str())), "Synonym " + std::to_string(i));
    const int first = i == 0 ? 1000 : i;
    ASSERT_EQ(ListText(Utilities::GetViewers(object.c_str())),
              "[C" + std::to_string(first) + "] [C" + std::to_string(first + 1000) + "]");
  }
}

TEST(KORLumViewerCatalog, TwoViewersOfOneObjectShareItsBag) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2")
                                    .Entry("HUB", "Tools", "C3", "T3", "O1"));
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()),
            (std::vector<std::string>{"O1: [C1] [C3]", "O2: [C2]"}));
  EXPECT_EQ(ListText(Utilities::GetViewers("O1")), "[C1] [C3]");
  EXPECT_EQ(ListText(Utilities::GetNLSObjects()), "[O1] [O2]");
}

TEST(KORLumViewerCatalog, ManyObjectsKeepTheirBagsInTheOrderOfTheirFirstEntry) {
  // 300 objects, each met three times: in order, backwards, then with a
  // stride; each entry has its own command.
  const int objects = 300;
  std::vector<int> order;
  for (int i = 0; i < objects; ++i) order.push_back(i);
  for (int i = objects - 1; i >= 0; --i) order.push_back(i);
  for (int i = 0; i < objects; ++i) order.push_back(i * 7 % objects);
  MethodListFile table;
  std::vector<std::string> expected(objects);
  for (std::size_t n = 0; n < order.size(); ++n) {
    const std::string command = "C" + std::to_string(n);
    const std::string object = "O" + std::to_string(order[n]);
    table.Entry("HUB", "Tools", command.c_str(), command.c_str(), object.c_str());
    std::string& bag = expected[static_cast<std::size_t>(order[n])];
    bag += (bag.empty() ? object + ": [" : " [") + command + "]";
  }
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(table);
  EXPECT_EQ(BagTexts(Utilities::GetViewerBags()), expected);
  EXPECT_EQ(ListText(Utilities::GetViewers("O123")), "[C123] [C476] [C789]");
  EXPECT_EQ(ListText(Utilities::GetViewers("O300")), "");
}

TEST(KORLumViewerCatalog, ViewerDefinitionsFollowBagsThenViewersInOrder) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2")
                                    .Entry("HUB", "Tools", "C3", "T3", "O1"));
  EXPECT_EQ(DefinitionTexts(Utilities::GetViewerDefs()),
            (std::vector<std::string>{"O1.C1", "O1.C3", "O2.C2"}));
}

TEST(KORLumViewerCatalog, ViewersOfAnUnknownObjectAreNone) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  EXPECT_EQ(Utilities::GetViewers("Unknown").Size(), 0);
}

// Labels and synonyms that are missing or empty.

TEST(KORLumViewerCatalog, ViewerWithoutLabelIsShownByItsCommand) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "Other.Label = Other\n");
  EXPECT_EQ(Text(Utilities::GetNLSViewer("C1")), "C1");
}

TEST(KORLumViewerCatalog, ViewerWithAnEmptyLabelIsShownByItsCommand) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T1.Label =\n");
  EXPECT_EQ(Text(Utilities::GetNLSViewer("C1")), "C1");
}

TEST(KORLumViewerCatalog, ViewerWithAnEmptyTagIsShownByItsCommandWithoutLookingUpALabel) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "", "O1"));
  // A lookup of the key ".Label" would find this text.
  configuration.WriteCatalogue("", "KORDMToolsManager", ".Label = Label of no tag\n");
  EXPECT_EQ(ListText(Utilities::GetNLSViewers()), "[C1]");
}

TEST(KORLumViewerCatalog, ObjectWithAnEmptySynonymIsShownByItsName) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORLumSessionFile", "O1.Synonym = \"\"\n");
  EXPECT_EQ(Text(Utilities::GetNLSObject("O1")), "O1");
}

TEST(KORLumViewerCatalog, NameOutsideTheCatalogueIsShownUnchanged) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORLumSessionFile", "Unknown.Synonym = Synonym\n");
  configuration.WriteCatalogue("", "KORDMToolsManager", "Unknown.Label = Label\n");
  EXPECT_EQ(Text(Utilities::GetNLSObject("Unknown")), "Unknown");
  EXPECT_EQ(Text(Utilities::GetNLSViewer("Unknown")), "Unknown");
}

// Declarations that cannot be loaded, and the once-only reading.

TEST(KORLumViewerCatalog, UnloadableDeclarationsGiveNoViewerAndNamesUnchanged) {
  SessionFileConfiguration configuration;
  configuration.WriteCatalogue("", "KORDMToolsManager", "C1.Label = Viewer one\n");
  EXPECT_EQ(Utilities::GetViewers().Size(), 0);
  EXPECT_EQ(Utilities::GetViewerBags().Size(), 0);
  EXPECT_EQ(Text(Utilities::GetNLSViewer("C1")), "C1");
}

TEST(KORLumViewerCatalog, DeclarationsThatAppearLaterAreNotRead) {
  SessionFileConfiguration configuration;
  ASSERT_EQ(Utilities::GetViewers().Size(), 0);
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  EXPECT_EQ(Utilities::GetViewers().Size(), 0);
}

TEST(KORLumViewerCatalog, TableIsReadOnceForTheLibrarysLifetime) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  ASSERT_EQ(ListText(Utilities::GetViewers()), "[C1]");
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C2", "T2", "O2"));
  KORLumPool::FlushCache();
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1]");
}

// Trace lines.

TEST(KORLumViewerCatalogTrace, ReadingAnEntryShowsItsCommandInBothLinesAndTheLookups) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T1.Label = Viewer one\n");
  configuration.WriteCatalogue("", "KORLumSessionFile", "O1.Synonym = Object one\n");
  TraceCapture capture;
  (void)Utilities::GetViewers();
  EXPECT_EQ(capture.Lines(),
            Concatenated({{kGetViewers + "[1] - Viewer     = [C1]"},
                          NestedLookupLines("KORDMToolsManager", "T1.Label", "Viewer one"),
                          {kGetViewers + "[1] - NLS Viewer = [C1]"},
                          NestedLookupLines("KORLumSessionFile", "O1.Synonym", "Object one"),
                          {kGetViewers + "Number of viewer(s) = [1]"}}));
}

TEST(KORLumViewerCatalogTrace, EntryLinesAreNumberedByTheViewerListsSize) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "", "")
                                    .Entry("HUB", "Viewer", "Skipped", "", "")
                                    .Entry("Both", "Tools", "C3", "", ""));
  TraceCapture capture;
  (void)Utilities::GetViewers();
  EXPECT_EQ(capture.Lines(),
            (Lines{kGetViewers + "[1] - Viewer     = [C1]", kGetViewers + "[1] - NLS Viewer = [C1]",
                   kGetViewers + "[2] - Viewer     = [C3]", kGetViewers + "[2] - NLS Viewer = [C3]",
                   kGetViewers + "Number of viewer(s) = [2]"}));
}

TEST(KORLumViewerCatalogTrace, MissingLabelShowsTheCatalogueErrorThenTheCommand) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", ""));
  const std::string diagnostic = CatalogueErrorDiagnostic("KORDMToolsManager", "T1.Label");
  ASSERT_FALSE(diagnostic.empty());
  TraceCapture capture;
  (void)Utilities::GetViewers();
  const std::string lookup = "     KORLumSessionFileUtilities::GetNLSMessage ";
  EXPECT_EQ(
      capture.Lines(),
      (Lines{kGetViewers + "[1] - Viewer     = [C1]",
             lookup + "iNLSDictionnary = KORDMToolsManager", lookup + "iNLSMessageKey = T1.Label",
             lookup + "iDefaultNLSMessage = ", lookup + "Error : " + diagnostic,
             lookup + "NLSMessage = ", kGetViewers + "[1] - NLS Viewer = [C1]",
             kGetViewers + "Number of viewer(s) = [1]"}));
}

TEST(KORLumViewerCatalogTrace, UnloadableDeclarationsWriteOnlyTheCount) {
  SessionFileConfiguration configuration;
  TraceCapture capture;
  (void)Utilities::GetViewers();
  EXPECT_EQ(capture.Lines(), (Lines{kGetViewers + "Number of viewer(s) = [0]"}));
}

TEST(KORLumViewerCatalogTrace, LaterGetViewersWritesNoLine) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "", "O1"));
  (void)Utilities::GetViewers();
  TraceCapture capture;
  (void)Utilities::GetViewers();
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORLumViewerCatalogTrace, ViewersOfAnObjectShowTheObjectAndTheirNumber) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(
      MethodListFile().Entry("HUB", "Tools", "C1", "", "O1").Entry("HUB", "Tools", "C2", "", "O1"));
  (void)Utilities::GetViewers();
  TraceCapture capture;
  (void)Utilities::GetViewers("O1");
  EXPECT_EQ(
      capture.Lines(),
      (Lines{"   KORLumSessionFileUtilities::GetViewers (object) iObject = O1",
             "   KORLumSessionFileUtilities::GetViewers (object) Number of viewer(s) = [2]"}));
}

TEST(KORLumViewerCatalogTrace, ViewerBagsShowTheirNumber) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(
      MethodListFile().Entry("HUB", "Tools", "C1", "", "O1").Entry("HUB", "Tools", "C2", "", "O2"));
  (void)Utilities::GetViewers();
  TraceCapture capture;
  (void)Utilities::GetViewerBags();
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileUtilities::GetViewerBags Number of viewer bag(s) = [2]"}));
}

TEST(KORLumViewerCatalogTrace, ViewerDefinitionsShowTheirNumber) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "", "O1")
                                    .Entry("HUB", "Tools", "C2", "", "O1")
                                    .Entry("HUB", "Tools", "C3", "", "O2"));
  (void)Utilities::GetViewers();
  TraceCapture capture;
  (void)Utilities::GetViewerDefs();
  EXPECT_EQ(capture.Lines(),
            (Lines{"   KORLumSessionFileUtilities::GetViewerDefs Number of viewer def(s) = [3]"}));
}

TEST(KORLumViewerCatalogTrace, FirstCallThroughAnotherOperationReadsTheTableInANestedScope) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "", "O1"));
  TraceCapture capture;
  (void)Utilities::GetViewerBags();
  const std::string nested = "     KORLumSessionFileUtilities::GetViewers ";
  EXPECT_EQ(
      capture.Lines(),
      (Lines{nested + "[1] - Viewer     = [C1]", nested + "[1] - NLS Viewer = [C1]",
             "       KORLumSessionFileUtilities::GetNLSMessage iNLSDictionnary = KORLumSessionFile",
             "       KORLumSessionFileUtilities::GetNLSMessage iNLSMessageKey = O1.Synonym",
             "       KORLumSessionFileUtilities::GetNLSMessage iDefaultNLSMessage = ",
             "       KORLumSessionFileUtilities::GetNLSMessage Error : " +
                 CatalogueErrorDiagnostic("KORLumSessionFile", "O1.Synonym"),
             "       KORLumSessionFileUtilities::GetNLSMessage NLSMessage = ",
             nested + "Number of viewer(s) = [1]",
             "   KORLumSessionFileUtilities::GetViewerBags Number of viewer bag(s) = [1]"}));
}
