// Uses the installed headers and libraries the way a client program does, and
// fails when what it sees is not what it expects.
#include <cstdio>
#include <cstring>

#include "KORLumSessionFileType.h"
#include "KORLumViewerDef.h"
#include "KORUnicodeString.h"

int main() {
  const KORLumViewerDef def("Part", "Viewer3D");
  const KORUnicodeString text = def.ConvertToString();
  std::printf("%s %s\n", text.ConvertToChar(), KORLumSessionFileSuffix_Graph.ConvertToChar());
  const bool ok = std::strcmp(text.ConvertToChar(), "Part.Viewer3D") == 0 &&
                  KORLumSessionFileSuffix_Graph == "hub" &&
                  KORLumViewerDef("Part", "") == KORLumViewerDef::GetNoViewerDef();
  return ok ? 0 : 1;
}
