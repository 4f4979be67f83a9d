// The explanations of KORLumSessionFileUtilities: the keys the library reads,
// the viewer catalogue's decision on each METHOD_LIST entry, and how the
// files paths are derived. Each is checked against what the operations that
// it explains return.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <set>
#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORLumSessionFileUtilities.h"
#include "ListText.h"
#include "MethodListFile.h"
#include "SessionFileConfiguration.h"

// Compares explanations with what the library computes on first use and
// keeps (viewer catalogue, files paths): each test case needs a process of
// its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Utilities = KORLumSessionFileUtilities;
using Entry = KORLumMethodListEntry;

std::string Text(const KORUnicodeString& iText) { return std::string(iText.View()); }

std::vector<Entry> Explained() {
  std::vector<Entry> entries;
  EXPECT_EQ(Utilities::ExplainViewers(entries), 0);
  return entries;
}

std::vector<Entry::Decision> Decisions(const std::vector<Entry>& iEntries) {
  std::vector<Entry::Decision> decisions;
  for (const Entry& entry : iEntries) decisions.push_back(entry.decision);
  return decisions;
}

}  // namespace

// --- The keys read --------------------------------------------------------------------

TEST(KORLumKeysRead, ListsTheDeclarationsTheSettingAndTheCatalogueKeys) {
  std::set<std::string> keys;
  for (const KORLumKeyRead& key : Utilities::GetKeysRead()) {
    keys.insert(std::string(key.container) + "/" + key.key);
  }
  for (const char* expected :
       {"MERLO/MERLO.BRIXFILES", "KORBRIX/KORBRIX.HUB.GRAPHSESSION",
        "KORBRIX/KORBRIX.METHOD_LIST(%d).WHERE", "KORBRIX/KORBRIX.METHOD_LIST(%d).KORAB",
        "LUMAdmin/LUM_STARTUP_SESSION", "KORLumSessionFile/TypeGraph.Msg",
        "KORLumSessionFile/OptionSeparator.Msg", "LumSessionFile/FileNone.Msg",
        "LumSessionFile/ViewerNone.Msg", "KORDMToolsManager/.Label",
        "KORLumSessionFile/.Synonym"}) {
    EXPECT_EQ(keys.count(expected), 1U) << expected;
  }
  EXPECT_EQ(keys.size(), 26U);
}

TEST(KORLumKeysRead, DerivedKeysNameTheFieldTheyStartWith) {
  for (const KORLumKeyRead& key : Utilities::GetKeysRead()) {
    if (std::string(key.key) == ".Label") {
      EXPECT_STREQ(key.derivedFrom, "TAG");
    } else if (std::string(key.key) == ".Synonym") {
      EXPECT_STREQ(key.derivedFrom, "KORAB");
    } else {
      EXPECT_EQ(key.derivedFrom, nullptr) << key.key;
    }
  }
}

TEST(KORLumKeysRead, AcceptedValuesAreThoseTheLibraryTestsFor) {
  for (const KORLumKeyRead& key : Utilities::GetKeysRead()) {
    std::string accepted;
    for (const char* const* value = key.accepted; value != nullptr && *value != nullptr; ++value) {
      accepted += std::string(*value) + "|";
    }
    const std::string name = key.key;
    if (name == "KORBRIX.METHOD_LIST(%d).WHERE") {
      EXPECT_EQ(accepted, "HUB|Both|");
    } else if (name == "KORBRIX.METHOD_LIST(%d).ROLE") {
      EXPECT_EQ(accepted, "Tools|");
    } else if (name == "LUM_STARTUP_SESSION") {
      EXPECT_EQ(accepted, "YES|");
    } else {
      EXPECT_EQ(accepted, "") << name;
    }
  }
}

// --- The METHOD_LIST table ----------------------------------------------------------

TEST(KORLumExplainViewers, EachEntryReadHasItsDecisionAndTheLastSaysWhyReadingStops) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("Both", "Print", "P", "P", "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(Decisions(Explained()),
            (std::vector<Entry::Decision>{Entry::Kept, Entry::Skipped, Entry::Kept, Entry::End}));
}

TEST(KORLumExplainViewers, FieldsCarryTheirKeysValuesAndPlaces) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  const std::vector<Entry> entries = Explained();
  ASSERT_EQ(entries.size(), 2U);
  const Entry& entry = entries[0];
  EXPECT_EQ(entry.index, 1);
  EXPECT_EQ(Text(entry.role.key), "KORBRIX.METHOD_LIST(1).ROLE");
  EXPECT_EQ(Text(entry.role.value), "Tools");
  EXPECT_EQ(entry.role.declared, 1);
  EXPECT_EQ(entry.role.line, 2);
  EXPECT_EQ(entry.object.line, 5);
  EXPECT_NE(Text(entry.object.file).find("KORBRIX.dcls"), std::string::npos);
  EXPECT_EQ(entries[1].where.read, 1);
  EXPECT_EQ(entries[1].where.declared, 0);
  EXPECT_EQ(entries[1].role.read, 0);
}

TEST(KORLumExplainViewers, KeptEntriesGiveTheLabelsAndObjectsTheCatalogueTakes) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", "O1")
                                    .Entry("HUB", "Tools", "C2", "", "O1")
                                    .Entry("HUB", "Tools", "C1", "T3", "O2"));
  configuration.WriteCatalogue("", "KORDMToolsManager", "T1.Label = One\nT3.Label = Three\n");
  configuration.WriteCatalogue("", "KORLumSessionFile", "O2.Synonym = Second\n");
  const std::vector<Entry> entries = Explained();
  ASSERT_EQ(entries.size(), 4U);
  // What the library's own catalogue holds, position for position.
  const KORListValKORUnicodeString labels = Utilities::GetNLSViewers();
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(entries[i].viewerPosition, i + 1);
    EXPECT_EQ(entries[i].label, labels[entries[i].viewerPosition]);
    EXPECT_EQ(entries[i].shownLabel, Utilities::GetNLSViewer(entries[i].command.value));
  }
  EXPECT_EQ(Text(entries[1].label), "C2");        // empty TAG: the command
  EXPECT_EQ(Text(entries[2].label), "Three");     // its own TAG's label at its position
  EXPECT_EQ(Text(entries[2].shownLabel), "One");  // but the first entry of C1 names it
  EXPECT_EQ(entries[0].addsObject, 1);
  EXPECT_EQ(entries[1].addsObject, 0);  // O1 is known
  EXPECT_EQ(Text(entries[2].synonym), "Second");
  EXPECT_EQ(Text(entries[0].synonym), "O1");
}

TEST(KORLumExplainViewers, SelectedEntryWithoutTagStopsTheReading) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", nullptr, "O1")
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  const std::vector<Entry> entries = Explained();
  EXPECT_EQ(Decisions(entries), (std::vector<Entry::Decision>{Entry::Stopped}));
  EXPECT_EQ(entries[0].tag.declared, 0);
  EXPECT_EQ(entries[0].viewerPosition, 0);
  EXPECT_EQ(Utilities::GetViewers().Size(), 0);
}

TEST(KORLumExplainViewers, SelectedEntryWithoutObjectIsTheLastOneRead) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", "Tools", "C1", "T1", nullptr)
                                    .Entry("HUB", "Tools", "C2", "T2", "O2"));
  EXPECT_EQ(Decisions(Explained()), (std::vector<Entry::Decision>{Entry::KeptAndLast}));
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C1]");
}

TEST(KORLumExplainViewers, EntryWithoutRoleIsSkipped) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile()
                                    .Entry("HUB", nullptr, "C1", "T1", "O1")
                                    .Entry("hub", "Tools", "C2", "T2", "O2"));
  const std::vector<Entry> entries = Explained();
  EXPECT_EQ(Decisions(entries),
            (std::vector<Entry::Decision>{Entry::Skipped, Entry::Skipped, Entry::End}));
  EXPECT_EQ(entries[0].role.declared, 0);
  EXPECT_EQ(entries[0].command.read, 0);
}

TEST(KORLumExplainViewers, UnloadableDeclarationsGiveNoEntry) {
  SessionFileConfiguration configuration;
  std::vector<Entry> entries(3);
  EXPECT_NE(Utilities::ExplainViewers(entries), 0);
  EXPECT_TRUE(entries.empty());
}

TEST(KORLumExplainViewers, ExplainingLeavesTheCatalogueKeptUnread) {
  SessionFileConfiguration configuration;
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
  Explained();
  configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C9", "T9", "O9"));
  KORLumPool::FlushCache();
  // The catalogue is read on its own first use, from the declarations then.
  EXPECT_EQ(ListText(Utilities::GetViewers()), "[C9]");
}

// --- Files paths ----------------------------------------------------------------------

TEST(KORLumExplainPaths, DeclaredPathGivesItsPlaceAndTheUnsetVariables) {
  SessionFileConfiguration configuration;
  unsetenv("KOR_TEST_NOWHERE");
  configuration.WriteDeclarations("MERLO",
                                  "# files\nMERLO.BRIXFILES = ${KOR_TEST_NOWHERE}/files\n");
  const KORLumPathExplanation explanation = Utilities::ExplainBRIXFilesPath();
  EXPECT_EQ(Text(explanation.resource), "MERLO");
  EXPECT_EQ(Text(explanation.key), "MERLO.BRIXFILES");
  EXPECT_EQ(explanation.resourceLoaded, 1);
  EXPECT_EQ(explanation.declared, 1);
  EXPECT_EQ(explanation.line, 2);
  EXPECT_EQ(Text(explanation.value), "${KOR_TEST_NOWHERE}/files");
  EXPECT_EQ(ListText(explanation.unsetVariables), "[KOR_TEST_NOWHERE]");
  EXPECT_EQ(Text(explanation.fallback), "");
  EXPECT_EQ(explanation.path, Utilities::GetBRIXFilesPath());
}

TEST(KORLumExplainPaths, UnloadableResourceNamesTheFallback) {
  SessionFileConfiguration configuration;
  setenv("PWD", "/home/u", 1);
  const KORLumPathExplanation explanation = Utilities::ExplainBRIXFilesPath();
  EXPECT_EQ(explanation.resourceLoaded, 0);
  EXPECT_EQ(Text(explanation.fallback), "$PWD");
  EXPECT_EQ(Text(explanation.path), "/home/u/");
  EXPECT_EQ(explanation.path, Utilities::GetBRIXFilesPath());
}

TEST(KORLumExplainPaths, GraphFilesPathFallsBackToTheBRIXFilesPath) {
  SessionFileConfiguration configuration;
  configuration.WriteDeclarations("MERLO", "MERLO.BRIXFILES = /data/files\n");
  const KORLumPathExplanation explanation = Utilities::ExplainGraphFilesPath();
  EXPECT_EQ(Text(explanation.fallback), "BRIX files path");
  EXPECT_EQ(Text(explanation.path), "/data/files/");
  EXPECT_EQ(explanation.path, Utilities::GetGraphFilesPath());
}

TEST(KORLumExplainPaths, UndeclaredKeyOfALoadedResourceGivesAnEmptyPath) {
  SessionFileConfiguration configuration;
  configuration.WriteDeclarations("KORBRIX", "KORBRIX.OTHER = 1\n");
  const KORLumPathExplanation explanation = Utilities::ExplainGraphFilesPath();
  EXPECT_EQ(explanation.resourceLoaded, 1);
  EXPECT_EQ(explanation.declared, 0);
  EXPECT_EQ(explanation.line, 0);
  EXPECT_EQ(Text(explanation.path), "");
}
