// Test helper: a configuration of message catalogues and declaration
// resources in a test's own temporary directory, with the platform's search
// variables pointing at it and nothing else.
//
//   SessionFileConfiguration configuration;  // no catalogue, no declaration yet
//   configuration.SetLanguage("fr");
//   configuration.WriteCatalogue("fr", "KORLumSessionFile", "TypeGraph.Msg = Graphe\n");
//   configuration.WriteMethodList(MethodListFile().Entry("HUB", "Tools", "C1", "T1", "O1"));
//
// On construction every platform variable is unset, KOR_MSGCATALOG_PATH and
// KOR_DCLS_PATH name the two (empty) directories "msgcatalog" and "dcls" of
// the temporary directory, and the platform's catalogue and declaration
// caches are flushed. The language stays unset (untranslated default files
// only) until SetLanguage.
#ifndef SessionFileConfiguration_h
#define SessionFileConfiguration_h

#include <stdlib.h>

#include <string>

#include "KORError.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"
#include "MethodListFile.h"
#include "TemporaryDirectory.h"

class SessionFileConfiguration {
 public:
  SessionFileConfiguration() {
    UnsetPlatformVariables();
    ::setenv("KOR_MSGCATALOG_PATH", _directory.MakeDirectory("msgcatalog").c_str(), 1);
    ::setenv("KOR_DCLS_PATH", _directory.MakeDirectory("dcls").c_str(), 1);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }

  // Sets the user's language (KOR_LANGUAGE) and makes the catalogues read it.
  void SetLanguage(const char* iLanguage) const {
    ::setenv("KOR_LANGUAGE", iLanguage, 1);
    KORMsgCatalog::FlushCache();
  }

  // Writes the catalogue iName of the language iLanguage ("" for the
  // untranslated default file). A catalogue already read stays cached until
  // KORMsgCatalog::FlushCache.
  void WriteCatalogue(const std::string& iLanguage, const std::string& iName,
                      const std::string& iContent) const {
    const std::string directory =
        iLanguage.empty() ? "msgcatalog/" : "msgcatalog/" + iLanguage + "/";
    _directory.Write(directory + iName + ".msgcat", iContent);
  }

  // Writes the declaration resource iResource.
  void WriteDeclarations(const std::string& iResource, const std::string& iContent) const {
    _directory.Write("dcls/" + iResource + ".dcls", iContent);
  }

  // Writes the "KORBRIX" declaration resource with the METHOD_LIST table.
  void WriteMethodList(const MethodListFile& iMethodList) const {
    WriteDeclarations("KORBRIX", iMethodList.Text());
  }

 private:
  TemporaryDirectory _directory;
};

// The diagnostic of the catalogue error that looking up iKey in the
// catalogue iName raises now, or "" when the lookup succeeds: the text that a
// trace's "Error : " line carries for the same lookup.
inline std::string CatalogueErrorDiagnostic(const char* iName, const char* iKey) {
  KORXHContext context;
  if (context.Protect([&] { (void)KORMsgCatalog(iName).GetMsg(iKey); }) == 0) return std::string();
  return static_cast<const char*>(context.GetDiagnostic());
}

#endif
