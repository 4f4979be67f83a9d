// Test helper of the PO round trip: prints, for every catalogue of the
// catalogue directory given, every language directory (and the default
// texts) and every key any of its files declares, the text a user of that
// language reads and the level that gives it, as KORMsgCatalog resolves it.
// Two runs print the same lines exactly when every key reads the same at
// every level.
//
//   lumsess_catalogue_texts DIR > texts.txt
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>

#include "KORMsgCatalog.h"
#include "KORResourceFile.h"

namespace fs = std::filesystem;

namespace {

// The text on one line: backslash, newline, carriage return and tab escaped.
std::string OneLine(std::string_view iText) {
  std::string line;
  for (const char c : iText) {
    switch (c) {
      case '\\':
        line += "\\\\";
        break;
      case '\n':
        line += "\\n";
        break;
      case '\r':
        line += "\\r";
        break;
      case '\t':
        line += "\\t";
        break;
      default:
        line += c;
        break;
    }
  }
  return line;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: lumsess_catalogue_texts DIR\n";
    return 2;
  }
  const fs::path directory(argv[1]);
  ::setenv("KOR_MSGCATALOG_PATH", argv[1], 1);

  std::set<std::string> languages = {""};
  std::set<std::string> catalogues;
  std::set<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(directory)) {
    if (entry.path().extension() != ".msgcat") continue;
    files.insert(entry.path());
    catalogues.insert(entry.path().stem().string());
    const fs::path parent = entry.path().parent_path();
    if (parent != directory) languages.insert(parent.filename().string());
  }
  for (const std::string& catalogue : catalogues) {
    std::set<std::string> keys;
    for (const fs::path& file : files) {
      if (file.stem() != catalogue) continue;
      const KORListValKORUnicodeString declared = KORResourceFile::Load(file.c_str()).GetKeys();
      for (int i = 1; i <= declared.Size(); ++i) keys.insert(std::string(declared[i].View()));
    }
    const KORMsgCatalog messages(catalogue.c_str());
    for (const std::string& language : languages) {
      for (const std::string& key : keys) {
        const KORMsgResolution resolution = messages.Resolve(key.c_str(), language.c_str());
        std::cout << catalogue << " [" << language << "] " << key << " -> ";
        if (resolution.outcome == KORMsgResolution::Found) {
          std::cout << '[' << resolution.language.View() << "] \""
                    << OneLine(resolution.text.View()) << "\"\n";
        } else {
          std::cout << "not declared\n";
        }
      }
    }
  }
  return 0;
}
