#include "KORMsgCatalog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "FreshProcess.h"
#include "KORError.h"
#include "ListText.h"
#include "StringList.h"
#include "TemporaryDirectory.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

// The text of iKey in the catalogue iCatalog, or "<raised: diagnostic>"
// when the lookup raises KORNLSCatalogError.
std::string Lookup(const char* iCatalog, const char* iKey) {
  auto catalog = std::make_unique<KORMsgCatalog>(iCatalog);
  KORUnicodeString text;
  KORXHContext context;
  const int raised = context.Protect([&] {
    KORMsg msg = catalog->GetMsg(iKey);
    msg.BuildMessage(&text);
  });
  catalog.reset();
  if (raised) {
    EXPECT_TRUE(context.IsKindOf(KORNLSCatalogError::ClassName()));
    std::string diagnostic = std::string("<raised: ") + context.GetDiagnostic().c_str() + ">";
    context.Release();
    return diagnostic;
  }
  return std::string(text.View());
}

std::string Build(const char* iText, const KORListValKORUnicodeString& iParameters) {
  KORUnicodeString built("<untouched>");
  EXPECT_EQ(KORMsg(iText).BuildMessage(&built, iParameters), 0);
  return std::string(built.View());
}

// A catalogue directory with the default, fr and fr_CA files of "Texts".
struct LanguageFixture {
  LanguageFixture() {
    UnsetPlatformVariables();
    directory.Write("Texts.msgcat", "Where = default\nOnlyDefault = default\n");
    directory.Write("fr/Texts.msgcat", "Where = fr\nOnlyFr = fr\n");
    directory.Write("fr_CA/Texts.msgcat", "Where = fr_CA\n");
    directory.Write("C/Texts.msgcat", "Where = C\n");
    setenv("KOR_MSGCATALOG_PATH", directory.Path().c_str(), 1);
  }
  TemporaryDirectory directory;
};

}  // namespace

// --- Messages -------------------------------------------------------------------

TEST(KORMsg, BuildMessageGivesTheTextUnchanged) {
  KORUnicodeString text("<untouched>");
  EXPECT_EQ(KORMsg("Open {1} at 100% {2}").BuildMessage(&text), 0);
  EXPECT_EQ(text, KORUnicodeString("Open {1} at 100% {2}"));
}

TEST(KORMsg, BuildMessageOfAKeptMessageLeavesItsTextForTheNextBuild) {
  const KORMsg message("Öffnen {1}");
  KORUnicodeString first;
  KORUnicodeString second;
  EXPECT_EQ(message.BuildMessage(&first), 0);
  EXPECT_EQ(message.BuildMessage(&second), 0);
  EXPECT_EQ(first, KORUnicodeString("Öffnen {1}"));
  EXPECT_EQ(second, KORUnicodeString("Öffnen {1}"));
  EXPECT_EQ(second.GetLengthInChar(), 10);
}

TEST(KORMsg, DefaultMessageIsEmpty) {
  KORUnicodeString text("<untouched>");
  EXPECT_EQ(KORMsg().BuildMessage(&text), 0);
  EXPECT_EQ(text.GetLengthInChar(), 0);
}

TEST(KORMsg, BuildMessageReplacesNumberedPlaceholdersByTheParameters) {
  EXPECT_EQ(Build("Open {1} with {2}, then {1} again", StringList({"model.hub", "Viewer3D"})),
            "Open model.hub with Viewer3D, then model.hub again");
}

TEST(KORMsg, BuildMessageReplacesPlaceholdersOfSeveralDigits) {
  EXPECT_EQ(Build("{10}-{1}", StringList({"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"})),
            "j-a");
}

TEST(KORMsg, PlaceholdersWithoutParameterStayAsTheyAre) {
  EXPECT_EQ(Build("{0} {3} {01} {x} {} { {1 {99999999999999999999} {1}", StringList({"a", "b"})),
            "{0} {3} {01} {x} {} { {1 {99999999999999999999} a");
}

TEST(KORMsg, ParameterTextIsNotScannedAgain) {
  EXPECT_EQ(Build("{1}{2}", StringList({"{2}", "b"})), "{2}b");
}

TEST(KORMsgDeathTest, BuildMessageIntoNullStops) {
  EXPECT_DEATH(KORMsg("text").BuildMessage(nullptr), "oText != nullptr");
  const KORMsg kept("text");
  EXPECT_DEATH(kept.BuildMessage(nullptr), "oText != nullptr");
}

// --- Search path and language chain ------------------------------------------

TEST(KORMsgCatalog, WithoutLanguageTheDefaultFileIsUsed) {
  LanguageFixture fixture;
  EXPECT_EQ(Lookup("Texts", "Where"), "default");
}

TEST(KORMsgCatalog, ExactLanguageWinsOverBaseLanguageAndDefault) {
  LanguageFixture fixture;
  setenv("KOR_LANGUAGE", "fr_CA", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr_CA");
}

TEST(KORMsgCatalog, CodesetAndModifierAreRemovedFromTheLanguage) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA.UTF-8@euro", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr_CA");
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()),
            ListText(StringList({"fr_CA", "fr", ""})));
}

TEST(KORMsgCatalog, LanguageFallsBackFromRegionToBaseLanguage) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA.UTF-8@euro", 1);
  EXPECT_EQ(Lookup("Texts", "OnlyFr"), "fr");
}

TEST(KORMsgCatalog, LanguageFallsBackToTheDefaultFile) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA.UTF-8@euro", 1);
  EXPECT_EQ(Lookup("Texts", "OnlyDefault"), "default");
}

TEST(KORMsgCatalog, MissingRegionFileFallsBackToBaseLanguage) {
  LanguageFixture fixture;
  setenv("LANG", "fr_BE.UTF-8", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
}

TEST(KORMsgCatalog, LanguageWithoutRegionHasItsOwnLevelAndTheDefault) {
  LanguageFixture fixture;
  setenv("LANG", "fr", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()), ListText(StringList({"fr", ""})));
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
}

TEST(KORMsgCatalog, CAndPosixUseTheDefaultFileOnly) {
  LanguageFixture fixture;
  setenv("LANG", "C.UTF-8", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()), ListText(StringList({""})));
  EXPECT_EQ(Lookup("Texts", "Where"), "default");
  KORMsgCatalog::FlushCache();
  setenv("LANG", "POSIX", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()), ListText(StringList({""})));
}

TEST(KORMsgCatalog, LanguageThatCannotNameADirectoryUsesTheDefaultFileOnly) {
  LanguageFixture fixture;
  setenv("LANG", "../fr", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()), ListText(StringList({""})));
}

TEST(KORMsgCatalog, KorLanguageComesBeforeLcAll) {
  LanguageFixture fixture;
  setenv("KOR_LANGUAGE", "fr", 1);
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()), ListText(StringList({"fr", ""})));
}

TEST(KORMsgCatalog, LcAllComesBeforeLcMessages) {
  LanguageFixture fixture;
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  setenv("LC_MESSAGES", "fr_FR.UTF-8", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()),
            ListText(StringList({"de_DE", "de", ""})));
}

TEST(KORMsgCatalog, LcMessagesComesBeforeLang) {
  LanguageFixture fixture;
  setenv("LC_MESSAGES", "it_IT", 1);
  setenv("LANG", "fr_FR.UTF-8", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels()),
            ListText(StringList({"it_IT", "it", ""})));
}

TEST(KORMsgCatalog, EmptyLanguageVariablesArePassedOver) {
  LanguageFixture fixture;
  setenv("KOR_LANGUAGE", "", 1);
  setenv("LC_ALL", "", 1);
  setenv("LC_MESSAGES", "", 1);
  setenv("LANG", "fr_CA", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr_CA");
}

TEST(KORMsgCatalog, FirstDirectoryThatHasTheFileWinsAtEachLevel) {
  UnsetPlatformVariables();
  TemporaryDirectory first;
  TemporaryDirectory second;
  first.Write("Texts.msgcat", "Where = first default\n");
  second.Write("Texts.msgcat", "Where = second default\nOnlySecondDefault = x\n");
  second.Write("fr/Texts.msgcat", "FrWhere = second fr\n");
  setenv("KOR_MSGCATALOG_PATH", (first.Path() + ":" + second.Path()).c_str(), 1);
  setenv("LANG", "fr", 1);
  EXPECT_EQ(Lookup("Texts", "FrWhere"), "second fr");
  EXPECT_EQ(Lookup("Texts", "Where"), "first default");
  // The default file of the second directory is never read.
  EXPECT_EQ(Lookup("Texts", "OnlySecondDefault").rfind("<raised: ", 0), 0u);
  EXPECT_EQ(ListText(KORMsgCatalog("Texts").GetFilesUsed()),
            ListText(StringList({(second.Path() + "/fr/Texts.msgcat").c_str(),
                                 (first.Path() + "/Texts.msgcat").c_str()})));
}

TEST(KORMsgCatalog, EmptyEntriesOfTheSearchPathAreSkipped) {
  UnsetPlatformVariables();
  TemporaryDirectory directory;
  directory.Write("Texts.msgcat", "Where = found\n");
  setenv("KOR_MSGCATALOG_PATH", ("::" + directory.Path() + ":").c_str(), 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetSearchPath()),
            ListText(StringList({directory.Path().c_str()})));
  EXPECT_EQ(Lookup("Texts", "Where"), "found");
}

TEST(KORMsgCatalog, DeclaredEmptyMessageIsFoundAndStopsTheSearch) {
  LanguageFixture fixture;
  fixture.directory.Write("fr/Texts.msgcat", "Where =\n");
  setenv("LANG", "fr", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "");
}

// --- Failed lookups -------------------------------------------------------------

TEST(KORMsgCatalog, UndeclaredKeyRaisesAnErrorNamingCatalogueKeyLevelsAndFiles) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA.UTF-8", 1);
  const std::string& dir = fixture.directory.Path();
  EXPECT_EQ(Lookup("Texts", "Missing.Msg"),
            "<raised: message catalogue \"Texts\", key \"Missing.Msg\": key not declared for the "
            "languages tried (fr_CA, fr, default); files read: " +
                dir + "/fr_CA/Texts.msgcat, " + dir + "/fr/Texts.msgcat, " + dir +
                "/Texts.msgcat>");
}

TEST(KORMsgCatalog, CatalogueWithoutAnyFileRaisesAnErrorSayingSo) {
  LanguageFixture fixture;
  setenv("LANG", "de_DE", 1);
  EXPECT_EQ(Lookup("Unknown", "TypeGraph.Msg"),
            "<raised: message catalogue \"Unknown\", key \"TypeGraph.Msg\": no catalogue file for "
            "the languages tried (de_DE, de, default) in " +
                fixture.directory.Path() + ">");
}

TEST(KORMsgCatalog, FailedLookupRaisesAHeapNLSCatalogErrorThatIsAKORError) {
  LanguageFixture fixture;
  KORMsgCatalog catalog("Texts");
  KORXHContext context;
  ASSERT_EQ(context.Protect([&] { (void)catalog.GetMsg("Missing.Msg"); }), 1);
  ASSERT_NE(context.GetError(), nullptr);
  EXPECT_STREQ(context.GetError()->GetClassName(), "KORNLSCatalogError");
  EXPECT_EQ(context.IsKindOf("KORNLSCatalogError"), 1);
  EXPECT_EQ(context.IsKindOf("KORError"), 1);
  context.Release();
  EXPECT_EQ(context.GetError(), nullptr);
}

TEST(KORMsgCatalog, UnreadableFileCountsAsAbsentAndIsNamedInTheDiagnostic) {
  UnsetPlatformVariables();
  TemporaryDirectory first;
  TemporaryDirectory second;
  const std::string locked = first.Write("Texts.msgcat", "Where = locked\n");
  second.Write("Texts.msgcat", "Where = second\n");
  if (!MakeUnreadable(locked)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  setenv("KOR_MSGCATALOG_PATH", (first.Path() + ":" + second.Path()).c_str(), 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "second");
  EXPECT_EQ(Lookup("Texts", "Missing"),
            "<raised: message catalogue \"Texts\", key \"Missing\": key not declared for the "
            "languages tried (default); files read: " +
                second.Path() + "/Texts.msgcat; unreadable files skipped: " + locked +
                ": cannot be read (Permission denied)>");
}

TEST(KORMsgCatalog, DirectoryInPlaceOfTheFileCountsAsAbsentAndIsNamedInTheDiagnostic) {
  UnsetPlatformVariables();
  TemporaryDirectory first;
  TemporaryDirectory second;
  const std::string notAFile = first.MakeDirectory("Texts.msgcat");
  second.Write("Texts.msgcat", "Where = second\n");
  setenv("KOR_MSGCATALOG_PATH", (first.Path() + ":" + second.Path()).c_str(), 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "second");
  EXPECT_EQ(Lookup("Texts", "Missing"),
            "<raised: message catalogue \"Texts\", key \"Missing\": key not declared for the "
            "languages tried (default); files read: " +
                second.Path() + "/Texts.msgcat; unreadable files skipped: " + notAFile +
                ": is a directory, not a file>");
}

TEST(KORMsgCatalog, OnlyUnreadableFilesMeanNoCatalogueFile) {
  UnsetPlatformVariables();
  TemporaryDirectory directory;
  const std::string notAFile = directory.MakeDirectory("Texts.msgcat");
  setenv("KOR_MSGCATALOG_PATH", directory.Path().c_str(), 1);
  EXPECT_EQ(Lookup("Texts", "Where"),
            "<raised: message catalogue \"Texts\", key \"Where\": no catalogue file for the "
            "languages tried (default) in " +
                directory.Path() + "; unreadable files skipped: " + notAFile +
                ": is a directory, not a file>");
}

// --- Cache -------------------------------------------------------------------------

TEST(KORMsgCatalog, LookupsDoNoInputOutputAfterTheFirst) {
  LanguageFixture fixture;
  setenv("LANG", "fr", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
  std::filesystem::remove_all(fixture.directory.Path());
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
  EXPECT_EQ(Lookup("Texts", "OnlyDefault"), "default");
}

TEST(KORMsgCatalog, EnvironmentIsReadOnceUntilFlushCache) {
  LanguageFixture fixture;
  setenv("LANG", "fr", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
  setenv("LANG", "fr_CA", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Lookup("Texts", "Where"), "fr_CA");
}

TEST(KORMsgCatalog, FlushCacheMakesTheNextLookupReadTheFilesAgain) {
  LanguageFixture fixture;
  EXPECT_EQ(Lookup("Texts", "Where"), "default");
  fixture.directory.Write("Texts.msgcat", "Where = changed\n");
  EXPECT_EQ(Lookup("Texts", "Where"), "default");
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Lookup("Texts", "Where"), "changed");
}

// --- The cache stamp ----------------------------------------------------------------

TEST(KORMsgCatalogStamp, IsNeverZero) {
  EXPECT_NE(KORMsgCatalog::GetCacheStamp(), 0UL);
  KORMsgCatalog::FlushCache();
  EXPECT_NE(KORMsgCatalog::GetCacheStamp(), 0UL);
}

TEST(KORMsgCatalogStamp, StaysTheSameWhileLookupsAnswerFromTheCache) {
  LanguageFixture fixture;
  KORMsgCatalog::FlushCache();
  const unsigned long stamp = KORMsgCatalog::GetCacheStamp();
  EXPECT_EQ(Lookup("Texts", "Where"), "default");
  EXPECT_NE(Lookup("Texts", "Undeclared").find("<raised: "), std::string::npos);
  EXPECT_NE(Lookup("Missing", "Where").find("<raised: "), std::string::npos);
  EXPECT_EQ(KORMsgCatalog::GetCacheStamp(), stamp);
}

TEST(KORMsgCatalogStamp, ChangesWhenTheCacheIsFlushed) {
  LanguageFixture fixture;
  EXPECT_EQ(Lookup("Texts", "Where"), "default");
  const unsigned long stamp = KORMsgCatalog::GetCacheStamp();
  KORMsgCatalog::FlushCache();
  EXPECT_NE(KORMsgCatalog::GetCacheStamp(), stamp);
}

TEST(KORMsgCatalog, MissingCatalogueIsRememberedUntilFlushCache) {
  LanguageFixture fixture;
  EXPECT_EQ(Lookup("Late", "Key").rfind("<raised: ", 0), 0u);
  fixture.directory.Write("Late.msgcat", "Key = now there\n");
  EXPECT_EQ(Lookup("Late", "Key").rfind("<raised: ", 0), 0u);
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(Lookup("Late", "Key"), "now there");
}

// --- Diagnostics ------------------------------------------------------------------

TEST(KORMsgCatalog, GetSearchPathGivesTheDirectoriesInOrder) {
  UnsetPlatformVariables();
  setenv("KOR_MSGCATALOG_PATH", "/first/dir:relative/dir:/last", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetSearchPath()),
            ListText(StringList({"/first/dir", "relative/dir", "/last"})));
}

TEST(KORMsgCatalog, GetFilesUsedGivesAnEmptyPathForLevelsWithoutFile) {
  LanguageFixture fixture;
  setenv("LANG", "fr_BE", 1);
  const std::string& dir = fixture.directory.Path();
  EXPECT_EQ(ListText(KORMsgCatalog("Texts").GetFilesUsed()),
            ListText(StringList(
                {"", (dir + "/fr/Texts.msgcat").c_str(), (dir + "/Texts.msgcat").c_str()})));
}

TEST(KORMsgCatalog, GetProblemsListsSkippedFilesThenMalformedLinesAndDuplicates) {
  UnsetPlatformVariables();
  TemporaryDirectory first;
  TemporaryDirectory second;
  const std::string notAFile = first.MakeDirectory("fr/Texts.msgcat");
  const std::string fr = second.Write("fr/Texts.msgcat", "A = 1\nA = 2\n");
  const std::string byDefault = second.Write("Texts.msgcat", "broken line\n");
  setenv("KOR_MSGCATALOG_PATH", (first.Path() + ":" + second.Path()).c_str(), 1);
  setenv("LANG", "fr", 1);
  EXPECT_EQ(
      ListText(KORMsgCatalog("Texts").GetProblems()),
      ListText(StringList({(notAFile + ": is a directory, not a file").c_str(),
                           (fr + ":2: key \"A\" declared again (previously at line 1): the last "
                                 "declaration wins")
                               .c_str(),
                           (byDefault + ":1: no '=' between a key and a value").c_str()})));
}

// --- Resolution: where a text comes from ---------------------------------------------

TEST(KORMsgCatalog, ResolveGivesTheLevelFileAndLineOfTheText) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA.UTF-8", 1);
  const KORMsgResolution resolution = KORMsgCatalog("Texts").Resolve("OnlyFr");
  EXPECT_EQ(resolution.outcome, KORMsgResolution::Found);
  EXPECT_EQ(resolution.level, 2);
  EXPECT_EQ(resolution.language, KORUnicodeString("fr"));
  EXPECT_EQ(std::string(resolution.file.View()), fixture.directory.PathOf("fr/Texts.msgcat"));
  EXPECT_EQ(resolution.line, 2);
  EXPECT_EQ(resolution.text, KORUnicodeString("fr"));
}

TEST(KORMsgCatalog, ResolveOfTheDefaultLevelHasAnEmptyLanguage) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA", 1);
  const KORMsgResolution resolution = KORMsgCatalog("Texts").Resolve("OnlyDefault");
  EXPECT_EQ(resolution.outcome, KORMsgResolution::Found);
  EXPECT_EQ(resolution.level, 3);
  EXPECT_EQ(resolution.language, KORUnicodeString(""));
}

TEST(KORMsgCatalog, ResolveOfAnUndeclaredKeySaysSoWithoutRaising) {
  LanguageFixture fixture;
  const KORMsgResolution resolution = KORMsgCatalog("Texts").Resolve("Nowhere");
  EXPECT_EQ(resolution.outcome, KORMsgResolution::NotDeclared);
  EXPECT_EQ(resolution.level, 0);
  EXPECT_EQ(resolution.file, KORUnicodeString(""));
}

TEST(KORMsgCatalog, ResolveOfACatalogueWithoutFileSaysSo) {
  LanguageFixture fixture;
  EXPECT_EQ(KORMsgCatalog("Absent").Resolve("Where").outcome, KORMsgResolution::NoFile);
}

TEST(KORMsgCatalog, ResolveInAnotherLanguageFollowsThatLanguagesChain) {
  LanguageFixture fixture;
  setenv("LANG", "de_DE", 1);  // the language in force is not asked
  const KORMsgCatalog catalog("Texts");
  EXPECT_EQ(catalog.Resolve("Where", "fr_CA.UTF-8").text, KORUnicodeString("fr_CA"));
  EXPECT_EQ(catalog.Resolve("OnlyFr", "fr_CA").language, KORUnicodeString("fr"));
  EXPECT_EQ(catalog.Resolve("Where", "fr_BE").language, KORUnicodeString("fr"));
  EXPECT_EQ(catalog.Resolve("Where", "C").language, KORUnicodeString(""));
  EXPECT_EQ(catalog.Resolve("Where", "").text, KORUnicodeString("default"));
  EXPECT_EQ(catalog.Resolve("Where").text, KORUnicodeString("default"));
}

TEST(KORMsgCatalog, GetMsgGivesWhatResolveFinds) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA", 1);
  for (const char* key : {"Where", "OnlyFr", "OnlyDefault"}) {
    EXPECT_EQ(Lookup("Texts", key), std::string(KORMsgCatalog("Texts").Resolve(key).text.View()))
        << key;
  }
}

TEST(KORMsgCatalog, LanguageLevelsOfAGivenLanguage) {
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels("fr_CA.UTF-8@euro")),
            ListText(StringList({"fr_CA", "fr", ""})));
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels("ja")), ListText(StringList({"ja", ""})));
  for (const char* untranslated : {"POSIX", "C.UTF-8", "", "../fr"}) {
    EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageLevels(untranslated)), ListText(StringList({""})))
        << untranslated;
  }
}

TEST(KORMsgCatalog, LanguageVariablesAreListedInTheOrderTheyAreRead) {
  EXPECT_EQ(ListText(KORMsgCatalog::GetLanguageVariables()),
            ListText(StringList({"KOR_LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})));
}

TEST(KORMsgCatalog, LanguageVariableNamesTheVariableThatGivesTheLanguage) {
  LanguageFixture fixture;
  setenv("LC_MESSAGES", "", 1);
  setenv("LANG", "fr", 1);
  EXPECT_EQ(KORMsgCatalog::GetLanguageVariable(), KORUnicodeString("LANG"));
}

TEST(KORMsgCatalog, LanguageVariableIsEmptyWhenNoneIsSet) {
  LanguageFixture fixture;
  EXPECT_EQ(KORMsgCatalog::GetLanguageVariable(), KORUnicodeString(""));
}

TEST(KORMsgCatalog, OnlyNamesALanguageCanTakeAreLanguageDirectories) {
  for (const char* name : {"fr", "fr_CA", "ja_JP", "de"}) {
    EXPECT_EQ(KORMsgCatalog::IsLanguageDirectory(name), 1) << name;
  }
  for (const char* name : {"fr_FR.UTF-8", "de@euro", ".git", "old.backup", "C", "POSIX", ""}) {
    EXPECT_EQ(KORMsgCatalog::IsLanguageDirectory(name), 0) << name;
  }
}

TEST(KORMsgCatalog, DirectoryWithACodesetIsNeverSearched) {
  LanguageFixture fixture;
  fixture.directory.Write("fr_FR.UTF-8/Texts.msgcat", "Where = unreachable\n");
  setenv("LANG", "fr_FR.UTF-8", 1);
  EXPECT_EQ(Lookup("Texts", "Where"), "fr");
}

TEST(KORMsgCatalog, CatalogueOfItsOwnDirectoriesIgnoresTheSearchPath) {
  LanguageFixture fixture;
  TemporaryDirectory own;
  own.Write("Texts.msgcat", "Where = own\n");
  own.Write("fr/Texts.msgcat", "Where = own fr\n");
  KORListValKORUnicodeString directories;
  directories.Append(own.Path().c_str());
  const KORMsgCatalog catalog("Texts", directories);
  KORUnicodeString text;
  catalog.GetMsg("Where").BuildMessage(&text);
  EXPECT_EQ(text, KORUnicodeString("own"));
  EXPECT_EQ(catalog.Resolve("Where", "fr").text, KORUnicodeString("own fr"));
  EXPECT_EQ(Lookup("Texts", "Where"), "default");  // the search path's catalogue is apart
}

// --- Lookups that do not raise ---------------------------------------------------------

TEST(KORMsgCatalog, FindGivesTheTextGetMsgGives) {
  LanguageFixture fixture;
  setenv("LANG", "fr_CA", 1);
  KORUnicodeString text;
  EXPECT_EQ(KORMsgCatalog("Texts").Find("OnlyFr", &text), 0);
  EXPECT_EQ(std::string(text.View()), Lookup("Texts", "OnlyFr"));
}

TEST(KORMsgCatalog, FindOfAMissingKeyIsNonZeroAndLeavesTheTextAlone) {
  LanguageFixture fixture;
  KORUnicodeString text("kept");
  EXPECT_NE(KORMsgCatalog("Texts").Find("Nowhere", &text), 0);
  EXPECT_NE(KORMsgCatalog("Absent").Find("Where", &text), 0);
  EXPECT_EQ(text, KORUnicodeString("kept"));
}

TEST(KORMsgCatalog, DescribeFailureIsTheDiagnosticGetMsgRaisesWith) {
  LanguageFixture fixture;
  for (const char* catalogue : {"Texts", "Absent"}) {
    const std::string described(KORMsgCatalog(catalogue).DescribeFailure("Nowhere").View());
    EXPECT_EQ("<raised: " + described + ">", Lookup(catalogue, "Nowhere")) << catalogue;
  }
}

TEST(KORMsgCatalogDeathTest, FindIntoNullStops) {
  LanguageFixture fixture;
  EXPECT_DEATH((void)KORMsgCatalog("Texts").Find("Where", nullptr), "oText != nullptr");
}
