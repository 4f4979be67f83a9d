#include "KORLumModuleDriver.h"

#include <cstring>
#include <string_view>

#include "KORListValKORUnicodeString.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileType.h"
#include "KORLumSessionFileUtilities.h"

namespace {

std::size_t Answer(std::string_view iAnswer, char* oText, std::size_t iSize) {
  if (iSize > 0) {
    const std::size_t kept = iAnswer.size() < iSize ? iAnswer.size() : iSize - 1;
    std::memcpy(oText, iAnswer.data(), kept);
    oText[kept] = '\0';
  }
  return iAnswer.size();
}

std::size_t AnswerList(const KORListValKORUnicodeString& iList, char* oText, std::size_t iSize) {
  KORUnicodeString text;
  for (int i = 1; i <= iList.Size(); ++i) {
    if (i > 1) text.Append(" ");
    text.Append("[");
    text.Append(iList[i]);
    text.Append("]");
  }
  return Answer(text.View(), oText, iSize);
}

}  // namespace

std::size_t KORLumDriverBRIXFilesPath(char* oText, std::size_t iSize) {
  return Answer(KORLumSessionFileUtilities::GetBRIXFilesPath().View(), oText, iSize);
}

std::size_t KORLumDriverGraphFilesPath(char* oText, std::size_t iSize) {
  return Answer(KORLumSessionFileUtilities::GetGraphFilesPath().View(), oText, iSize);
}

std::size_t KORLumDriverViewers(char* oText, std::size_t iSize) {
  return AnswerList(KORLumSessionFileUtilities::GetViewers(), oText, iSize);
}

std::size_t KORLumDriverViewerLabels(char* oText, std::size_t iSize) {
  return AnswerList(KORLumSessionFileUtilities::GetNLSViewers(), oText, iSize);
}

std::size_t KORLumDriverDisplayLine(char* oText, std::size_t iSize) {
  const KORLumSessionFile file(KORLumSessionFileType_Graph, "/data/model.hub",
                               KORUnicodeString("Viewer3D"), KORLumGraphSessionLoadMode_Static,
                               KORLumGraphSessionInstanceMode_Selected,
                               KORLumSessionFileOption_Report | KORLumSessionFileOption_CSB);
  return Answer(file.GetNLS().View(), oText, iSize);
}
