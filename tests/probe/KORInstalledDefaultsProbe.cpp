// Run by the installed-defaults tests with a copy of the KORPlatform library
// placed in a temporary installed tree: prints, one per line, where the
// platform searches for catalogues and declarations when no path variable is
// set, and what it finds there.
#include <cstdio>

#include "KORError.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"

int main() {
  const KORListValKORUnicodeString catalogs = KORMsgCatalog::GetSearchPath();
  const KORListValKORUnicodeString declarations = KORLumPool::GetSearchPath();
  std::printf("msgcatalog=%s\n", catalogs.Size() == 1 ? catalogs[1].ConvertToChar() : "?");
  std::printf("dcls=%s\n", declarations.Size() == 1 ? declarations[1].ConvertToChar() : "?");

  KORUnicodeString message;
  KORXHContext context;
  KORMsgCatalog catalog("Probe");
  if (context.Protect([&] { catalog.GetMsg("Probe.Msg").BuildMessage(&message); })) {
    std::printf("message=<error: %s>\n", context.GetDiagnostic().c_str());
    context.Release();
  } else {
    std::printf("message=%s\n", message.ConvertToChar());
  }

  int status = -1;
  const int loaded = KORLumPool::LoadPool("Probe");
  const KORUnicodeString declared = KORLumPool::GetStringDec("Probe.Key", status);
  std::printf("declaration=%d %d %s\n", loaded, status, declared.ConvertToChar());
  return 0;
}
