// lumsess po export / po import: the message catalogues as PO files, for
// translators and the tools made for them.
//
// export writes, for each catalogue, DIR/NAME/NAME.pot (the default texts)
// and DIR/NAME/LANG.po for each language that has a file of the catalogue
// (or the one given with --lang): msgctxt is the key, msgid the default text,
// msgstr the language's own text (empty when the key falls back to another
// level), with "#: FILE:LINE" references to the declarations. The header
// names the catalogue (X-Catalog) and the language (Language).
//
// import reads PO files and writes the texts they translate into the
// language's own catalogue file. Every file is read and checked first: when
// one of them cannot be imported, no catalogue file is changed.
//
// PO files are read and written with GNU gettext's libgettextpo.
#include <gettext-po.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "KORMsgCatalog.h"
#include "KORResourceFile.h"
#include "Lumsess.h"
#include "MsgcatWriter.h"

namespace fs = std::filesystem;

namespace lumsess {

namespace {

// --- Command line ------------------------------------------------------------------

CLI::App* gExport = nullptr;
CLI::App* gImport = nullptr;
std::string gExportDirectory;           // export: DIR
std::string gCatalogue;                 // export: --catalog
std::vector<std::string> gImportFiles;  // import: FILE.po...
bool gIncludeFuzzy = false;             // import: --include-fuzzy

const char* const kCatalogueField = "X-Catalog";

// --- Problems reported by libgettextpo ---------------------------------------------

struct PoProblem {
  std::string file;  // empty when libgettextpo names none
  std::size_t line = 0;
  int severity = PO_SEVERITY_WARNING;
  std::string text;
};

// libgettextpo reports through plain functions: the problems of the call in
// progress are collected here.
std::vector<PoProblem> gProblems;

std::string Trimmed(const char* iText) {
  std::string text = iText != nullptr ? iText : "";
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
  return text;
}

void Collect(int iSeverity, const char* iFile, std::size_t iLine, const char* iText) {
  PoProblem problem;
  problem.severity = iSeverity;
  if (iFile != nullptr) {
    problem.file = iFile;
    problem.line = iLine == static_cast<std::size_t>(-1) ? 0 : iLine;
  }
  problem.text = Trimmed(iText);
  gProblems.push_back(std::move(problem));
}

std::string Located(const PoProblem& iProblem, const char* iSeverity) {
  std::string text;
  if (!iProblem.file.empty()) {
    text = iProblem.file + ":";
    if (iProblem.line > 0) text += std::to_string(iProblem.line) + ":";
    text += " ";
  }
  return text + iSeverity + ": " + iProblem.text;
}

// A fatal error must not return to libgettextpo: the command ends here, and
// since PO files are all read before any catalogue file is written, nothing
// is left half done.
[[noreturn]] void Fatal() {
  for (const PoProblem& problem : gProblems) std::cerr << Located(problem, "error") << '\n';
  std::cerr << "lumsess: a PO file could not be processed; no catalogue file was changed."
            << std::endl;
  std::exit(kProblems);
}

void OnProblem(int iSeverity, po_message_t /*iMessage*/, const char* iFile, std::size_t iLine,
               std::size_t /*iColumn*/, int /*iMultiline*/, const char* iText) {
  Collect(iSeverity, iFile, iLine, iText);
  if (iSeverity == PO_SEVERITY_FATAL_ERROR) Fatal();
}

void OnProblem2(int iSeverity, po_message_t /*iMessage1*/, const char* iFile1, std::size_t iLine1,
                std::size_t /*iColumn1*/, int /*iMultiline1*/, const char* iText1,
                po_message_t /*iMessage2*/, const char* iFile2, std::size_t iLine2,
                std::size_t /*iColumn2*/, int /*iMultiline2*/, const char* iText2) {
  std::string text = Trimmed(iText1);
  if (iFile2 != nullptr && iLine2 != static_cast<std::size_t>(-1) && iLine2 != 0) {
    text += " (" + Trimmed(iText2) + ": line " + std::to_string(iLine2) + ")";
  }
  Collect(iSeverity, iFile1, iLine1, text.c_str());
  if (iSeverity == PO_SEVERITY_FATAL_ERROR) Fatal();
}

const po_xerror_handler kHandler = {OnProblem, OnProblem2};

// Frees a libgettextpo object at the end of a scope.
struct PoFile {
  po_file_t file = nullptr;
  PoFile() = default;
  PoFile(const PoFile&) = delete;
  PoFile& operator=(const PoFile&) = delete;
  ~PoFile() {
    if (file != nullptr) po_file_free(file);
  }
};
struct PoIterator {
  po_message_iterator_t iterator;
  explicit PoIterator(po_file_t iFile) : iterator(po_message_iterator(iFile, nullptr)) {}
  PoIterator(const PoIterator&) = delete;
  PoIterator& operator=(const PoIterator&) = delete;
  ~PoIterator() { po_message_iterator_free(iterator); }
};

// The line of a message in the PO file it was read from. libgettextpo has no
// accessor for it, but its message check reports it: the message is given
// texts that the check must reject (a msgid that begins with a newline, a
// msgstr that does not), and its texts are put back afterwards.
std::size_t MessageLine(po_message_t iMessage, po_message_iterator_t iIterator) {
  const std::string msgid = po_message_msgid(iMessage);
  const std::string msgstr = po_message_msgstr(iMessage);
  const char* plural = po_message_msgid_plural(iMessage);
  const std::string msgidPlural = plural != nullptr ? plural : "";
  std::vector<std::string> plurals;
  if (plural != nullptr) {
    for (int i = 0; po_message_msgstr_plural(iMessage, i) != nullptr; ++i)
      plurals.emplace_back(po_message_msgstr_plural(iMessage, i));
    po_message_set_msgid_plural(iMessage, nullptr);
  }
  po_message_set_msgid(iMessage, "\n");
  po_message_set_msgstr(iMessage, "x");
  std::vector<PoProblem> saved;
  saved.swap(gProblems);
  po_message_check_all(iMessage, iIterator, &kHandler);
  std::size_t line = 0;
  for (const PoProblem& problem : gProblems) {
    if (!problem.file.empty() && problem.line > 0) {
      line = problem.line;
      break;
    }
  }
  gProblems.swap(saved);
  po_message_set_msgid(iMessage, msgid.c_str());
  if (plural != nullptr) {
    po_message_set_msgid_plural(iMessage, msgidPlural.c_str());
    for (std::size_t i = 0; i < plurals.size(); ++i)
      po_message_set_msgstr_plural(iMessage, static_cast<int>(i), plurals[i].c_str());
  } else {
    po_message_set_msgstr(iMessage, msgstr.c_str());
  }
  return line;
}

// A header field, or "" when the header lacks it.
std::string HeaderField(const char* iHeader, const char* iField) {
  if (iHeader == nullptr) return std::string();
  char* value = po_header_field(iHeader, iField);
  if (value == nullptr) return std::string();
  std::string text = value;
  std::free(value);  // NOLINT(cppcoreguidelines-no-malloc): allocated by libgettextpo
  return text;
}

// --- The catalogues ----------------------------------------------------------------

// The catalogues of the search path and, for each, the languages that have a
// file of it.
std::map<std::string, std::set<std::string>> Catalogues() {
  std::map<std::string, std::set<std::string>> catalogues;
  auto addFiles = [&](const fs::path& iDirectory, const std::string& iLanguage) {
    std::error_code error;
    for (fs::directory_iterator entry(iDirectory, error), end; !error && entry != end;
         entry.increment(error)) {
      if (entry->path().extension() != ".msgcat" || !entry->is_regular_file(error)) continue;
      const std::string name = entry->path().stem().string();
      catalogues.try_emplace(name);
      if (!iLanguage.empty()) catalogues[name].insert(iLanguage);
    }
  };
  const KORListValKORUnicodeString path = KORMsgCatalog::GetSearchPath();
  for (int i = 1; i <= path.Size(); ++i) {
    const fs::path directory(Text(path[i]));
    addFiles(directory, "");
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string name = entry->path().filename().string();
      if (entry->is_directory(error) && KORMsgCatalog::IsLanguageDirectory(name.c_str()) != 0) {
        addFiles(entry->path(), name);
      }
    }
  }
  return catalogues;
}

// The first language level of iLanguage (its own directory), "" when the
// language has none (C, POSIX, a name that cannot be a directory).
std::string OwnLevel(const std::string& iLanguage) {
  const KORListValKORUnicodeString levels = KORMsgCatalog::GetLanguageLevels(iLanguage.c_str());
  return levels.Size() > 0 ? Text(levels[1]) : std::string();
}

// The files the catalogue iName uses for a user of language iLanguage, level
// by level ("" for a level without file), as the catalogue itself finds them.
std::vector<std::string> FilesOfLevels(const std::string& iName, const std::string& iLanguage) {
  std::vector<std::string> files;
  for (const KORResourceFile& file :
       KORMsgCatalog(iName.c_str()).GetLevelFiles(iLanguage.empty() ? "C" : iLanguage.c_str())) {
    files.push_back(file.GetState() == KORResourceFile::Loaded
                        ? std::string(file.GetFileName().View())
                        : std::string());
  }
  return files;
}

// The keys the files declare, default file first, each once.
std::vector<std::string> KeysOf(const std::vector<std::string>& iFiles) {
  std::vector<std::string> keys;
  std::set<std::string> seen;
  for (auto file = iFiles.rbegin(); file != iFiles.rend(); ++file) {
    if (file->empty()) continue;
    for (const std::string& key : Texts(KORResourceFile::Load(file->c_str()).GetKeys())) {
      if (seen.insert(key).second) keys.push_back(key);
    }
  }
  return keys;
}

// --- Export ------------------------------------------------------------------------

std::string Now() {
  std::time_t now = std::time(nullptr);
  // Reproducible output when the build asks for it.
  if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH"); epoch != nullptr && *epoch != '\0') {
    now = static_cast<std::time_t>(std::strtoll(epoch, nullptr, 10));
  }
  std::tm utc{};
  if (gmtime_r(&now, &utc) == nullptr) return "1970-01-01 00:00+0000";
  char text[32];
  if (std::strftime(text, sizeof text, "%Y-%m-%d %H:%M+0000", &utc) == 0) {
    return "1970-01-01 00:00+0000";
  }
  return text;
}

std::string Header(const std::string& iCatalogue, const std::string& iLanguage) {
  const std::string now = Now();
  std::string header = "Project-Id-Version: " + iCatalogue + "\n";
  header += "POT-Creation-Date: " + now + "\n";
  header += "PO-Revision-Date: " + now + "\n";
  header += "Last-Translator: \n";
  header += "Language-Team: \n";
  header += "Language: " + iLanguage + "\n";
  header += "MIME-Version: 1.0\n";
  header += "Content-Type: text/plain; charset=UTF-8\n";
  header += "Content-Transfer-Encoding: 8bit\n";
  header += std::string(kCatalogueField) + ": " + iCatalogue + "\n";
  header += "X-Generator: lumsess " LUMSESS_VERSION "\n";
  return header;
}

std::string Reference(const KORMsgResolution& iResolution) {
  return Text(iResolution.file) + ":" + std::to_string(iResolution.line);
}

// Writes one PO file (iLanguage "" for the template); returns the number of
// entries msgfmt --check would reject (each reported as a warning).
int WritePo(const std::string& iPath, const std::string& iCatalogue, const std::string& iLanguage,
            const std::vector<std::string>& iKeys) {
  const KORMsgCatalog catalogue(iCatalogue.c_str());
  PoFile po;
  po.file = po_file_create();
  int rejected = 0;
  {
    const PoIterator iterator(po.file);
    po_message_t header = po_message_create();
    po_message_set_msgid(header, "");
    po_message_set_msgstr(header, Header(iCatalogue, iLanguage).c_str());
    po_message_insert(iterator.iterator, header);
    for (const std::string& key : iKeys) {
      const KORMsgResolution source = catalogue.Resolve(key.c_str(), "");
      po_message_t message = po_message_create();
      po_message_set_msgctxt(message, key.c_str());
      std::string comments;
      std::string where;
      if (source.outcome == KORMsgResolution::Found) {
        po_message_set_msgid(message, source.text.ConvertToChar());
        po_message_add_filepos(message, source.file.ConvertToChar(),
                               static_cast<std::size_t>(source.line));
        where = Reference(source);
      } else {
        po_message_set_msgid(message, "");
        comments += "Not in the default texts: declared for " + iLanguage + " only.\n";
      }
      po_message_set_msgstr(message, "");
      if (!iLanguage.empty()) {
        const KORMsgResolution own = catalogue.Resolve(key.c_str(), iLanguage.c_str());
        const std::string level = Text(own.language);
        if (own.outcome == KORMsgResolution::Found && level == iLanguage) {
          po_message_set_msgstr(message, own.text.ConvertToChar());
          po_message_add_filepos(message, own.file.ConvertToChar(),
                                 static_cast<std::size_t>(own.line));
          where = Reference(own);
          if (own.text.GetLengthInChar() == 0) {
            comments +=
                "Declared empty at " + Reference(own) + ": left so unless translated here.\n";
          }
        } else if (own.outcome == KORMsgResolution::Found && !level.empty()) {
          comments += "Falls back to the " + level + " text: " + Text(own.text) + "\n";
        }
      }
      if (!comments.empty()) po_message_set_extracted_comments(message, comments.c_str());

      // What msgfmt --check would say of the entry, said now.
      gProblems.clear();
      po_message_check_all(message, iterator.iterator, &kHandler);
      for (const PoProblem& problem : gProblems) {
        if (problem.severity == PO_SEVERITY_WARNING) continue;
        std::cerr << where << ": warning: " << key << ": " << problem.text << " (" << iPath
                  << ")\n";
        ++rejected;
      }
      gProblems.clear();
      po_message_insert(iterator.iterator, message);
    }
  }
  gProblems.clear();
  if (po_file_write(po.file, iPath.c_str(), &kHandler) == nullptr || !gProblems.empty()) {
    std::string reason = gProblems.empty() ? std::string() : ": " + gProblems.front().text;
    ReportError(kProblems, "cannot write " + Quote(iPath) + reason + ".");
  }
  return rejected;
}

int RunExport(const GlobalOptions& iGlobal) {
  const std::map<std::string, std::set<std::string>> catalogues = Catalogues();
  if (!gCatalogue.empty() && catalogues.count(gCatalogue) == 0) {
    ReportError(kUsage, "there is no catalogue " + Quote(gCatalogue) + " in the catalogue path.");
  }
  std::string language;
  if (!iGlobal.language.empty()) {
    language = OwnLevel(iGlobal.language);
    if (language.empty()) {
      ReportError(kUsage, "the language " + Quote(iGlobal.language) +
                              " has no texts of its own: it reads the default texts.");
    }
  }
  std::error_code error;
  fs::create_directories(gExportDirectory, error);
  if (error || !fs::is_directory(gExportDirectory, error)) {
    ReportError(kProblems, "cannot create the directory " + Quote(gExportDirectory) + ".");
  }

  int rejected = 0;
  int written = 0;
  for (const auto& [name, languages] : catalogues) {
    if (!gCatalogue.empty() && name != gCatalogue) continue;
    const fs::path directory = fs::path(gExportDirectory) / name;
    fs::create_directories(directory, error);
    if (error) ReportError(kProblems, "cannot create the directory " + Quote(directory) + ".");

    const std::string pot = (directory / (name + ".pot")).string();
    rejected += WritePo(pot, name, "", KeysOf(FilesOfLevels(name, "")));
    std::cout << pot << '\n';
    ++written;
    const std::set<std::string> chosen =
        language.empty() ? languages : std::set<std::string>{language};
    for (const std::string& each : chosen) {
      const std::string po = (directory / (each + ".po")).string();
      rejected += WritePo(po, name, each, KeysOf(FilesOfLevels(name, each)));
      std::cout << po << '\n';
      ++written;
    }
  }
  std::cout.flush();
  if (rejected > 0) {
    std::cerr << "lumsess: " << rejected
              << " entries of the files written would be rejected by msgfmt --check." << std::endl;
    return kProblems;
  }
  return kSuccess;
}

// --- Import ------------------------------------------------------------------------

// What one PO file brings into one catalogue file.
struct PoImport {
  std::string file;       // the PO file
  std::string catalogue;  // its catalogue
  std::string language;   // its language level
  std::string target;     // the catalogue file written
  std::vector<std::pair<std::string, std::string>> values;
  int fuzzy = 0;         // fuzzy entries left out
  int untranslated = 0;  // untranslated entries left out
  int unknown = 0;       // entries whose key the catalogue does not declare
};

// Reads and checks one PO file; reports its problems on standard error.
// Returns false when it cannot be imported.
bool ReadPo(const std::string& iFile, const std::string& iLanguage,
            const std::map<std::string, std::set<std::string>>& iCatalogues, PoImport& oImport) {
  oImport.file = iFile;
  gProblems.clear();
  PoFile po;
  po.file = po_file_read(iFile.c_str(), &kHandler);
  bool failed = false;
  for (const PoProblem& problem : gProblems) {
    if (problem.severity == PO_SEVERITY_WARNING) continue;
    PoProblem located = problem;
    if (located.file.empty()) located.file = iFile;
    std::cerr << Located(located, "error") << '\n';
    failed = true;
  }
  gProblems.clear();
  if (po.file == nullptr) {
    std::error_code error;
    const std::string reason = fs::exists(iFile, error) ? "cannot be read" : "does not exist";
    std::cerr << iFile << ": error: the file " << reason << '\n';
    return false;
  }
  if (failed) return false;

  auto error = [&](std::size_t iLine, const std::string& iText) {
    std::cerr << iFile << ':' << (iLine > 0 ? iLine : 1) << ": error: " << iText << '\n';
    failed = true;
  };

  const PoIterator iterator(po.file);
  po_message_t header = nullptr;
  std::vector<po_message_t> messages;
  for (po_message_t message = po_next_message(iterator.iterator); message != nullptr;
       message = po_next_message(iterator.iterator)) {
    if (po_message_is_obsolete(message) != 0) continue;
    if (po_message_msgctxt(message) == nullptr && *po_message_msgid(message) == '\0') {
      header = message;
    } else {
      messages.push_back(message);
    }
  }
  if (header == nullptr) {
    error(1, "the file has no header entry: its charset and catalogue are unknown");
    return false;
  }
  // A copy: finding the header's line sets its texts anew.
  const std::string headerCopy = po_message_msgstr(header);
  const char* headerText = headerCopy.c_str();
  const std::size_t headerLine = MessageLine(header, iterator.iterator);

  // The charset: only UTF-8, the catalogues' own.
  const std::string contentType = HeaderField(headerText, "Content-Type");
  const std::size_t charsetAt = contentType.find("charset=");
  std::string charset =
      charsetAt == std::string::npos ? std::string() : contentType.substr(charsetAt + 8);
  const std::size_t charsetEnd = charset.find_first_of("; \t");
  if (charsetEnd != std::string::npos) charset.resize(charsetEnd);
  std::string upper;
  for (const char c : charset)
    upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (upper != "UTF-8") {
    error(headerLine,
          "the charset is " + (charset.empty() ? std::string("not given") : charset) +
              ", but catalogues are UTF-8: convert the file with msgconv --to-code=UTF-8");
  }
  oImport.catalogue = HeaderField(headerText, kCatalogueField);
  if (oImport.catalogue.empty()) {
    error(headerLine,
          std::string("the header has no ") + kCatalogueField +
              " field naming the catalogue (a file exported by lumsess po export has one)");
  } else if (iCatalogues.count(oImport.catalogue) == 0) {
    error(headerLine,
          "there is no catalogue " + Quote(oImport.catalogue) + " in the catalogue path");
  }
  const std::string language = !iLanguage.empty() ? iLanguage : HeaderField(headerText, "Language");
  if (language.empty()) {
    error(headerLine, "the header gives no Language: name it with --lang");
  } else {
    oImport.language = OwnLevel(language);
    if (oImport.language.empty()) {
      error(headerLine, "the language " + Quote(language) +
                            " has no texts of its own: it reads the default texts");
    }
  }
  if (failed) return false;

  // The catalogue file of the language, and the keys the catalogue declares
  // at the levels of that language.
  const std::vector<std::string> files = FilesOfLevels(oImport.catalogue, oImport.language);
  std::set<std::string> known;
  for (const std::string& key : KeysOf(files)) known.insert(key);
  oImport.target = files.empty() ? std::string() : files.front();
  if (oImport.target.empty()) {
    // The language has no file yet: it goes beside the default texts.
    const std::string fallback = files.empty() ? std::string() : files.back();
    const KORListValKORUnicodeString path = KORMsgCatalog::GetSearchPath();
    const fs::path base = !fallback.empty() ? fs::path(fallback).parent_path()
                          : path.Size() > 0 ? fs::path(Text(path[1]))
                                            : fs::path(".");
    oImport.target = (base / oImport.language / (oImport.catalogue + ".msgcat")).string();
    std::error_code exists;
    if (fs::exists(oImport.target, exists)) {
      error(headerLine, "the catalogue file " + oImport.target + " exists but cannot be read");
      return false;
    }
  } else if (KORResourceFile::Load(oImport.target.c_str()).GetEncoding() != KORResourceFile::Utf8) {
    error(headerLine, "the catalogue file " + oImport.target +
                          " is not UTF-8: convert it before importing texts into it");
    return false;
  }

  std::map<std::string, std::size_t> seen;  // key -> line of its entry
  for (po_message_t message : messages) {
    const char* context = po_message_msgctxt(message);
    if (context == nullptr) {
      error(MessageLine(message, iterator.iterator),
            "the entry has no msgctxt: the key of a catalogue text is its msgctxt");
      continue;
    }
    const std::string key = context;
    const std::size_t line = MessageLine(message, iterator.iterator);
    if (po_message_msgid_plural(message) != nullptr) {
      error(line, "the entry " + key +
                      " has plural forms (msgid_plural): a catalogue text has one form only");
      continue;
    }
    const auto [first, inserted] = seen.emplace(key, line);
    if (!inserted) {
      error(line, "msgctxt " + Quote(key) + " appears twice: its first entry is at line " +
                      std::to_string(first->second));
      continue;
    }
    const std::string text = po_message_msgstr(message);
    if (po_message_is_fuzzy(message) != 0 && !gIncludeFuzzy) {
      ++oImport.fuzzy;
      continue;
    }
    if (text.empty()) {
      ++oImport.untranslated;
      continue;
    }
    if (known.count(key) == 0) {
      std::cerr << iFile << ':' << line << ": warning: the catalogue " << oImport.catalogue
                << " declares no key " << key << ": skipped\n";
      ++oImport.unknown;
      continue;
    }
    oImport.values.emplace_back(key, text);
  }
  return !failed;
}

std::string ReadWhole(const std::string& iPath, bool& oFailed) {
  std::ifstream stream(iPath, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  oFailed = !stream && !stream.eof();
  return content.str();
}

int RunImport(const GlobalOptions& iGlobal) {
  const std::map<std::string, std::set<std::string>> catalogues = Catalogues();
  std::vector<PoImport> imports;
  bool failed = false;
  for (const std::string& file : gImportFiles) {
    PoImport import;
    if (ReadPo(file, iGlobal.language, catalogues, import)) {
      imports.push_back(std::move(import));
    } else {
      failed = true;
    }
  }
  if (failed) {
    std::cerr << "lumsess: no catalogue file was changed: the PO files have errors." << std::endl;
    return kProblems;
  }

  int unknown = 0;
  for (const PoImport& import : imports) {
    unknown += import.unknown;
    std::error_code error;
    const bool exists = fs::exists(import.target, error);
    bool unreadable = false;
    const std::string content = exists ? ReadWhole(import.target, unreadable) : std::string();
    if (unreadable) ReportError(kProblems, "cannot read " + Quote(import.target) + ".");
    const MsgcatUpdate update = UpdateMsgcat(content, import.target.c_str(), import.values);
    if (!update.error.empty()) {
      ReportError(kProblems, import.target + " was left unchanged: " + update.error + ".");
    }
    if (update.changed > 0 || update.added > 0) {
      fs::create_directories(fs::path(import.target).parent_path(), error);
      const std::string failure = WriteFileAtomically(import.target, update.content);
      if (!failure.empty()) ReportError(kProblems, failure + ".");
    }
    std::cout << import.file << ": " << import.target << ": " << update.changed << " changed, "
              << update.added << " added, "
              << (import.values.size() - static_cast<std::size_t>(update.changed + update.added))
              << " unchanged; left out: " << import.fuzzy << " fuzzy, " << import.untranslated
              << " untranslated, " << import.unknown << " unknown\n";
  }
  std::cout.flush();
  return unknown > 0 ? kProblems : kSuccess;
}

}  // namespace

CLI::App* SetupPo(CLI::App& ioApp) {
  CLI::App* po = ioApp.add_subcommand(
      "po", "Export the message catalogues to PO files for translators, import their work back");
  po->require_subcommand(1);
  gExport = po->add_subcommand(
      "export",
      "Write DIR/NAME/NAME.pot and DIR/NAME/LANG.po for each catalogue and language "
      "(--lang LANG: that language only)");
  gExport->add_option("DIR", gExportDirectory, "Directory to write the PO files into")->required();
  gExport->add_option("--catalog", gCatalogue, "Export this catalogue only");
  gImport =
      po->add_subcommand("import",
                         "Write the translations of FILE.po... into the language's catalogue files "
                         "(--lang LANG: the language, instead of the Language header field)");
  gImport->add_option("FILE", gImportFiles, "PO files to import")->required();
  gImport->add_flag("--include-fuzzy", gIncludeFuzzy, "Import fuzzy entries too");
  for (CLI::App* command : {po, gExport, gImport}) command->fallthrough();
  return po;
}

int RunPo(const GlobalOptions& iGlobal) {
  if (gExport->parsed()) return RunExport(iGlobal);
  return RunImport(iGlobal);
}

}  // namespace lumsess
