// The library's translated texts after a catalogue failed for now (no free
// descriptor): the fallback text stands in while the failure lasts, and the
// translation is shown as soon as the catalogue can be read again.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "FaultInjection.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileUtilities.h"
#include "KORMsgCatalog.h"
#include "TemporaryDirectory.h"

namespace {

std::string Text(const KORUnicodeString& iText) { return iText.ConvertToChar(); }

class LibraryTransientFailure : public testing::Test {
 protected:
  void SetUp() override {
    UnsetPlatformVariables();
    directory.Write("msgcatalog/fr/KORLumSessionFile.msgcat",
                    "TypeGraph.Msg = Graphe\nOptionReport.Msg = Rapport\n");
    setenv("KOR_MSGCATALOG_PATH", directory.PathOf("msgcatalog").c_str(), 1);
    setenv("KOR_LANGUAGE", "fr", 1);
    KORMsgCatalog::FlushCache();
  }
  void TearDown() override { KORMsgCatalog::FlushCache(); }

  [[nodiscard]] std::string CataloguePath() const {
    return directory.PathOf("msgcatalog/fr/KORLumSessionFile.msgcat");
  }

  TemporaryDirectory directory;
};

}  // namespace

TEST_F(LibraryTransientFailure, TypeTextIsTranslatedOnceTheFailureIsOver) {
  {
    const OpenFailure failure(CataloguePath(), EMFILE);
    ASSERT_EQ(Text(KORLumSessionFileUtilities::GetNLSType(KORLumSessionFileType_Graph)), "Graph");
  }
  EXPECT_EQ(Text(KORLumSessionFileUtilities::GetNLSType(KORLumSessionFileType_Graph)), "Graphe");
}

TEST_F(LibraryTransientFailure, DisplayLineIsTranslatedOnceTheFailureIsOver) {
  const KORLumSessionFile file(KORLumSessionFileType_Graph, "/data/model.hub",
                               KORUnicodeString("V"), KORLumGraphSessionLoadMode_Dynamic,
                               KORLumGraphSessionInstanceMode_All, 1UL);
  {
    const OpenFailure failure(CataloguePath(), EMFILE);
    ASSERT_EQ(Text(file.GetNLS()), "Graph : /data/model.hub [V] [Dynamic] [All] [R]");
  }
  EXPECT_EQ(Text(file.GetNLS()), "Graphe : /data/model.hub [V] [Dynamic] [All] [Rapport]");
}
