// lumsess: error reporting and text helpers shared by the commands.
#include <algorithm>
#include <iostream>

#include "Configuration.h"
#include "KORError.h"
#include "KORMsgCatalog.h"
#include "Lumsess.h"

namespace lumsess {

void ReportError(ExitStatus iStatus, const std::string& iSentence) {
  std::cout.flush();
  std::cerr << "lumsess: " << iSentence << std::endl;
  throw ExitRequest{iStatus};
}

std::string Text(const KORUnicodeString& iString) { return std::string(iString.View()); }

std::vector<std::string> Texts(const KORListValKORUnicodeString& iList) {
  std::vector<std::string> texts;
  for (int i = 1; i <= iList.Size(); ++i) texts.push_back(Text(iList[i]));
  return texts;
}

std::size_t Width(const std::string& iText) {
  // Counted as the platform counts a string's characters (an ill-formed
  // sequence is one replacement character, as it is shown).
  return static_cast<std::size_t>(KORUnicodeString(iText.data(), iText.size()).GetLengthInChar());
}

std::string Pad(const std::string& iText, std::size_t iWidth) {
  const std::size_t width = Width(iText);
  return iText + std::string(width < iWidth ? iWidth - width : 1, ' ');
}

std::string Join(const std::vector<std::string>& iItems, const std::string& iSeparator) {
  std::string text;
  for (std::size_t i = 0; i < iItems.size(); ++i) {
    if (i > 0) text += iSeparator;
    text += iItems[i];
  }
  return text;
}

std::string Say(const char* iKey, const char* iEnglish,
                const std::vector<std::string>& iParameters) {
  KORListValKORUnicodeString parameters;
  for (const std::string& parameter : iParameters) parameters.Append(parameter.c_str());
  const KORMsgCatalog catalog("lumsess", ToolCatalogueDirectories());
  KORUnicodeString text;
  KORXHContext context;
  if (context.Protect([&] { catalog.GetMsg(iKey).BuildMessage(&text, parameters); }) != 0) {
    // No catalogue, or no such key: the English text. Any other error is
    // not the catalogue's to excuse, and ends the command.
    if (context.IsKindOf(KORNLSCatalogError::ClassName()) == 0) {
      std::string diagnostic(context.GetDiagnostic().View());
      if (diagnostic.empty() || diagnostic.back() != '.') diagnostic += '.';
      ReportError(kProblems,
                  "the text " + Quote(iKey) +
                      " of the message catalogue \"lumsess\" could not be built: " + diagnostic);
    }
    context.Release();
    text.Reset();
  }
  if (text.GetLengthInChar() == 0) KORMsg(iEnglish).BuildMessage(&text, parameters);
  return Text(text);
}

std::size_t ColumnWidth(const std::vector<std::string>& iTexts) {
  std::size_t width = 0;
  for (const std::string& text : iTexts) width = std::max(width, Width(text));
  return width + 2;
}

std::string Quote(const std::string& iText) { return "\"" + iText + "\""; }

void PrintJson(const Json& iDocument) {
  // Invalid UTF-8 (a file name, say) is replaced rather than refused.
  std::cout << iDocument.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
            << '\n';
}

}  // namespace lumsess
