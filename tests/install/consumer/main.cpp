// Uses the installed headers and libraries the way a client program does, and
// fails when what it sees is not what it expects. Given a directory, it also
// expects the library to find the graph files there: the installed sample's,
// with none of the path variables set.
#include <cstdio>
#include <cstring>

#include "KORLumSessionFileType.h"
#include "KORLumSessionFileUtilities.h"
#include "KORLumViewerDef.h"
#include "KORUnicodeString.h"

int main(int argc, char** argv) {
  const KORLumViewerDef def("Part", "Viewer3D");
  const KORUnicodeString text = def.ConvertToString();
  std::printf("%s %s\n", text.ConvertToChar(), KORLumSessionFileSuffix_Graph.ConvertToChar());
  bool ok = std::strcmp(text.ConvertToChar(), "Part.Viewer3D") == 0 &&
            KORLumSessionFileSuffix_Graph == "hub" &&
            KORLumViewerDef("Part", "") == KORLumViewerDef::GetNoViewerDef();
  if (argc > 1) {
    const KORUnicodeString graphFiles = KORLumSessionFileUtilities::GetGraphFilesPath();
    std::printf("graph files: %s\n", graphFiles.ConvertToChar());
    ok = ok && std::strcmp(graphFiles.ConvertToChar(), argv[1]) == 0;
  }
  return ok ? 0 : 1;
}
