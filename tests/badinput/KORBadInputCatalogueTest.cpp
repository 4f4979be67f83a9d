// Damaged message catalogues: the session-file texts fall back to their
// default texts where the catalogue cannot help, the catalogue reports what
// it skipped, and every good declaration next to the damage is still used.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <filesystem>
#include <string>

#include "BadInput.h"
#include "KORLumSessionFileUtilities.h"
#include "KORMsgCatalog.h"

using namespace std::string_literals;

namespace {

using Utilities = KORLumSessionFileUtilities;

constexpr const char* kCatalogue = "msgcatalog/KORLumSessionFile.msgcat";

std::string GraphText() {
  return std::string(Utilities::GetNLSType(KORLumSessionFileType_Graph).View());
}
std::string QueryText() {
  return std::string(Utilities::GetNLSType(KORLumSessionFileType_Query).View());
}

KORListValKORUnicodeString CatalogueProblems() {
  return KORMsgCatalog("KORLumSessionFile").GetProblems();
}

}  // namespace

TEST(KORBadInputCatalogue, MissingDirectoryGivesTheDefaultTexts) {
  BadInputConfiguration configuration;
  ::setenv("KOR_MSGCATALOG_PATH", configuration.PathOf("no/such/directory").c_str(), 1);
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(GraphText(), "Graph");
  EXPECT_EQ(QueryText(), "Query");
  EXPECT_EQ(std::string(Utilities::GetNLSOption(15UL).View()), "R+M+Q+C");
  EXPECT_EQ(std::string(
                Utilities::GetNLSMessage("KORLumSessionFile", "TypeGraph.Msg", "fallback").View()),
            "fallback");
}

TEST(KORBadInputCatalogue, DirectoryInPlaceOfTheFileIsSkippedForTheNextDirectory) {
  BadInputConfiguration configuration;
  configuration.MakeDirectory("first/KORLumSessionFile.msgcat");
  configuration.Write("second/KORLumSessionFile.msgcat", "TypeGraph.Msg = Graphe\n");
  ::setenv("KOR_MSGCATALOG_PATH",
           (configuration.PathOf("first") + ":" + configuration.PathOf("second")).c_str(), 1);
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(GraphText(), "Graphe");
  const KORListValKORUnicodeString problems = CatalogueProblems();
  EXPECT_TRUE(badinput::AnyContains(problems, "first/KORLumSessionFile.msgcat"))
      << badinput::Lines(problems);
}

TEST(KORBadInputCatalogue, DirectoryInPlaceOfTheOnlyFileGivesTheDefaultTexts) {
  BadInputConfiguration configuration;
  configuration.MakeDirectory(kCatalogue);
  EXPECT_EQ(GraphText(), "Graph");
  EXPECT_TRUE(badinput::AnyContains(CatalogueProblems(), "is a directory"))
      << badinput::Lines(CatalogueProblems());
}

TEST(KORBadInputCatalogue, UnreadableFileIsSkippedForTheNextDirectory) {
  BadInputConfiguration configuration;
  const std::string unreadable =
      configuration.Write("first/KORLumSessionFile.msgcat", "TypeGraph.Msg = Unreadable\n");
  configuration.Write("second/KORLumSessionFile.msgcat", "TypeGraph.Msg = Graphe\n");
  if (!MakeUnreadable(unreadable)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  ::setenv("KOR_MSGCATALOG_PATH",
           (configuration.PathOf("first") + ":" + configuration.PathOf("second")).c_str(), 1);
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(GraphText(), "Graphe");
  EXPECT_TRUE(badinput::AnyContains(CatalogueProblems(), unreadable))
      << badinput::Lines(CatalogueProblems());
}

TEST(KORBadInputCatalogue, EmptyFileGivesTheDefaultTexts) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue, "");
  EXPECT_EQ(GraphText(), "Graph");
  EXPECT_EQ(CatalogueProblems().Size(), 0);
}

TEST(KORBadInputCatalogue, BinaryGarbageLeavesTheGoodKeyUsable) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue, badinput::Garbage(64 * 1024) + "\nTypeGraph.Msg = Graphe\n" +
                                      badinput::Garbage(4096));
  EXPECT_EQ(GraphText(), "Graphe");
  EXPECT_GT(CatalogueProblems().Size(), 0);
}

TEST(KORBadInputCatalogue, InvalidUtf8BecomesReplacementCharacters) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue,
                      "TypeGraph.Msg = Gr\xFF\xC3phe\nTypeQuery.Msg = Requ\xC3\xAAte\n");
  EXPECT_EQ(GraphText(), "Gr\xEF\xBF\xBD\xEF\xBF\xBDphe");
  EXPECT_EQ(QueryText(), "Requ\xC3\xAAte");
}

TEST(KORBadInputCatalogue, NulByteSkipsItsLineOnlyAndIsReported) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue, "TypeGraph.Msg = Gra\0phe\nTypeQuery.Msg = Requete\n"s);
  EXPECT_EQ(GraphText(), "Graph");  // the damaged line is not a declaration
  EXPECT_EQ(QueryText(), "Requete");
  EXPECT_TRUE(badinput::AnyContains(CatalogueProblems(), "KORLumSessionFile.msgcat:1: NUL byte"))
      << badinput::Lines(CatalogueProblems());
}

TEST(KORBadInputCatalogue, CrlfLineEndsAreNotPartOfTheTexts) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue, "TypeGraph.Msg = Graphe\r\nTypeQuery.Msg = \"Requete\"\r\n");
  EXPECT_EQ(GraphText(), "Graphe");
  EXPECT_EQ(QueryText(), "Requete");
  EXPECT_EQ(CatalogueProblems().Size(), 0);
}

TEST(KORBadInputCatalogue, ByteOrderMarkIsNotPartOfTheFirstKey) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue, "\xEF\xBB\xBFTypeGraph.Msg = Graphe\n");
  EXPECT_EQ(GraphText(), "Graphe");
}

TEST(KORBadInputCatalogue, MegabyteLineIsReadWholeAndTheNextKeyToo) {
  BadInputConfiguration configuration;
  const std::string longText(1024 * 1024, 'g');
  configuration.Write(kCatalogue, "TypeGraph.Msg = " + longText + "\nTypeQuery.Msg = Requete\n");
  EXPECT_EQ(GraphText(), longText);
  EXPECT_EQ(QueryText(), "Requete");
}

TEST(KORBadInputCatalogue, FiftyMegabyteFileLoadsAndItsLastKeyIsFound) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue, "TypeQuery.Msg = Requete\n" + badinput::CommentMegabytes(50) +
                                      "TypeGraph.Msg = Graphe\n");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(GraphText(), "Graphe");
  EXPECT_EQ(QueryText(), "Requete");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(KORBadInputCatalogue, KeyDeclaredTwiceTakesTheLastValueAndIsReported) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue,
                      "TypeGraph.Msg = First\nTypeQuery.Msg = Requete\n"
                      "TypeGraph.Msg = Second\n");
  EXPECT_EQ(GraphText(), "Second");
  EXPECT_EQ(QueryText(), "Requete");
  EXPECT_TRUE(
      badinput::AnyContains(CatalogueProblems(), ":3: key \"TypeGraph.Msg\" declared again"))
      << badinput::Lines(CatalogueProblems());
}

TEST(KORBadInputCatalogue, VariablesAndCommandsInTextsAreShownAsWritten) {
  BadInputConfiguration configuration;
  ::setenv("KOR_BADINPUT_SELF", "$KOR_BADINPUT_SELF", 1);
  configuration.Write(kCatalogue,
                      "TypeGraph.Msg = ${HOME and $KOR_BADINPUT_SELF\n"
                      "TypeQuery.Msg = $(touch " +
                          configuration.PathOf("ran") + ") `id`\n");
  EXPECT_EQ(GraphText(), "${HOME and $KOR_BADINPUT_SELF");
  EXPECT_EQ(QueryText(), "$(touch " + configuration.PathOf("ran") + ") `id`");
  EXPECT_FALSE(std::filesystem::exists(configuration.PathOf("ran")));
}

TEST(KORBadInputCatalogue, MalformedLinesAreSkippedAndReportedWithTheirLine) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue,
                      "no equal sign\n = empty key\nType Graph.Msg = blank in key\n"
                      "TypeGraph.Msg = \"unterminated\nTypeGraph.Msg = \"bad \\q escape\"\n"
                      "TypeQuery.Msg = Requete\n");
  EXPECT_EQ(GraphText(), "Graph");
  EXPECT_EQ(QueryText(), "Requete");
  const KORListValKORUnicodeString problems = CatalogueProblems();
  ASSERT_EQ(problems.Size(), 5) << badinput::Lines(problems);
  for (int line = 1; line <= 5; ++line) {
    EXPECT_TRUE(badinput::AnyContains(problems, ".msgcat:" + std::to_string(line) + ": "))
        << "line " << line << "\n"
        << badinput::Lines(problems);
  }
}

TEST(KORBadInputCatalogue, ValueTextsOfValuesFarOutOfRangeAreTheNoneTexts) {
  BadInputConfiguration configuration;
  configuration.Write(kCatalogue,
                      "TypeNone.Msg = Aucun\nLoadModeNone.Msg = Aucun mode\n"
                      "InstanceModeNone.Msg = Aucune instance\n");
  for (const int value : {INT_MIN, -1, 3, INT_MAX}) {
    EXPECT_EQ(std::string(Utilities::GetNLSType(static_cast<_KORLumSessionFileType>(value)).View()),
              "Aucun")
        << value;
    EXPECT_EQ(
        std::string(
            Utilities::GetNLSLoadMode(static_cast<_KORLumGraphSessionLoadMode>(value)).View()),
        "Aucun mode")
        << value;
    EXPECT_EQ(std::string(
                  Utilities::GetNLSInstanceMode(static_cast<_KORLumGraphSessionInstanceMode>(value))
                      .View()),
              "Aucune instance")
        << value;
  }
}
