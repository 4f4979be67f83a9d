// lumsess check: validates a configuration and explains it — the resource
// files found, their malformed lines and duplicate keys, the METHOD_LIST
// table entry by entry, the paths, and the catalogue keys that the library
// reads but a language lacks. Exit status 1 when it finds a problem.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "Configuration.h"
#include "KORGetEnv.h"
#include "KORLumPool.h"
#include "KORLumSessionFileUtilities.h"
#include "KORMsgCatalog.h"
#include "KORResourceFile.h"
#include "Lumsess.h"

namespace fs = std::filesystem;

namespace lumsess {

namespace {

using json = Json;

// What check found: problems make the exit status 1, notes only explain.
struct Findings {
  std::vector<std::string> problems;
  std::vector<std::string> notes;
};

bool IsDirectory(const std::string& iPath) {
  std::error_code error;
  return fs::is_directory(iPath, error);
}

std::string Plural(std::size_t iCount, const char* iOne, const char* iMany) {
  return std::to_string(iCount) + " " + (iCount == 1 ? iOne : iMany);
}

void AddAll(std::vector<std::string>& ioTo, const KORListValKORUnicodeString& iFrom) {
  for (const std::string& text : Texts(iFrom)) ioTo.push_back(text);
}

void CheckSearchPath(const char* iWhat, const KORListValKORUnicodeString& iPath,
                     Findings& ioFindings) {
  for (const std::string& directory : Texts(iPath)) {
    if (!IsDirectory(directory)) {
      ioFindings.problems.push_back(std::string("the ") + iWhat + " directory " + directory +
                                    " does not exist.");
    }
  }
}

// --- Declarations -------------------------------------------------------------------

struct Declarations {
  bool brixLoaded = false;   // KORBRIX
  bool merloLoaded = false;  // MERLO
  json resources = json::array();
};

Declarations LoadDeclarations(Findings& ioFindings) {
  Declarations declarations;
  const std::string searched = Join(Texts(KORLumPool::GetSearchPath()), ":");
  const struct {
    const char* name;
    const char* consequence;
    bool Declarations::*loaded;
  } resources[] = {
      {"KORBRIX",
       "the viewer catalogue stays empty and the graph files path falls back to the BRIX files "
       "path",
       &Declarations::brixLoaded},
      {"MERLO", "the BRIX files path falls back to $PWD", &Declarations::merloLoaded},
  };
  for (const auto& resource : resources) {
    const bool loaded = KORLumPool::LoadPool(resource.name) == 0;
    declarations.*resource.loaded = loaded;
    const std::string file = Text(KORLumPool::GetResourceFile(resource.name));
    declarations.resources.push_back(
        {{"resource", resource.name}, {"file", loaded ? json(file) : json(nullptr)}});
    if (!loaded) {
      ioFindings.problems.push_back(std::string("no readable declaration resource ") +
                                    resource.name + ".dcls in " + searched + ": " +
                                    resource.consequence + ".");
    }
  }
  AddAll(ioFindings.problems, KORLumPool::GetProblems());
  return declarations;
}

// --- The METHOD_LIST table ----------------------------------------------------------

struct MethodEntry {
  int index = 0;
  std::string status;  // "kept", "skipped", "stop" (reading stops, not added), "end"
  std::optional<std::string> where, role, command, tag, object;
  std::string reason;
};

struct MethodTable {
  std::vector<MethodEntry> entries;
  int lastIndexRead = 0;
  std::vector<int> neverRead;
  std::vector<std::string> objects;  // distinct, in reading order
  std::vector<std::string> tags;     // of the viewers added, non-empty, distinct
};

std::optional<std::string> ReadField(int iIndex, const char* iField) {
  const std::string key = "KORBRIX.METHOD_LIST(" + std::to_string(iIndex) + ")." + iField;
  int status = 0;
  const KORUnicodeString value = KORLumPool::GetStringDec(key.c_str(), status);
  if (status != 0) return std::nullopt;
  return Text(value);
}

// The indices of METHOD_LIST entries that the KORBRIX file declares, each
// with the fields it declares.
std::map<int, std::vector<std::string>> DeclaredEntries() {
  std::map<int, std::vector<std::string>> entries;
  const std::string file = Text(KORLumPool::GetResourceFile("KORBRIX"));
  const std::string prefix = "KORBRIX.METHOD_LIST(";
  for (const std::string& key : Texts(KORResourceFile::Load(file.c_str()).GetKeys())) {
    if (key.compare(0, prefix.size(), prefix) != 0) continue;
    const std::size_t close = key.find(").", prefix.size());
    if (close == std::string::npos || close == prefix.size()) continue;
    const std::string digits = key.substr(prefix.size(), close - prefix.size());
    if (digits.find_first_not_of("0123456789") != std::string::npos || digits.size() > 9) {
      continue;
    }
    entries[std::stoi(digits)].push_back(key.substr(close + 2));
  }
  return entries;
}

std::string IndexList(const std::vector<int>& iIndices) {
  std::vector<std::string> texts;
  texts.reserve(iIndices.size());
  for (const int index : iIndices) texts.push_back(std::to_string(index));
  return Join(texts, ", ");
}

// Reads the table with the rules of the library's viewer catalogue
// (KORLumSessionFileUtilities::GetViewers), which this function mirrors and
// must be kept in step with:
//   - entries are read from index 1; a missing WHERE ends the table;
//   - an entry is kept when WHERE is "HUB" or "Both" and ROLE is "Tools"
//     (exact comparisons); any other entry, one without ROLE included, is
//     skipped and reading goes on;
//   - a kept entry without COMMAND or without TAG ends the reading, and its
//     viewer is not added;
//   - a kept entry adds its COMMAND as a viewer, labelled by TAG.Label in the
//     KORDMToolsManager catalogue, and its KORAB object (if not empty) with the
//     synonym KORAB.Synonym in the KORLumSessionFile catalogue;
//   - a kept entry without KORAB keeps its viewer, without object, and ends
//     the reading after it.
MethodTable ReadMethodTable(Findings& ioFindings) {
  MethodTable table;
  for (int n = 1;; ++n) {
    MethodEntry entry;
    entry.index = n;
    table.lastIndexRead = n;
    entry.where = ReadField(n, "WHERE");
    if (!entry.where) {
      entry.status = "end";
      entry.reason = "WHERE is not declared: the table ends here";
      table.entries.push_back(entry);
      break;
    }
    entry.role = ReadField(n, "ROLE");
    const bool where = *entry.where == "HUB" || *entry.where == "Both";
    if (!where || !entry.role || *entry.role != "Tools") {
      entry.status = "skipped";
      if (!where) {
        entry.reason = "WHERE is " + Quote(*entry.where) + ", not \"HUB\" or \"Both\"";
      } else if (!entry.role) {
        entry.reason = "ROLE is not declared";
      } else {
        entry.reason = "ROLE is " + Quote(*entry.role) + ", not \"Tools\"";
      }
      table.entries.push_back(entry);
      continue;
    }
    entry.command = ReadField(n, "COMMAND");
    if (entry.command) entry.tag = ReadField(n, "TAG");
    if (!entry.command || !entry.tag) {
      entry.status = "stop";
      entry.reason = std::string("kept, but ") + (entry.command ? "TAG" : "COMMAND") +
                     " is not declared: reading stops here and this entry's viewer is not added";
      table.entries.push_back(entry);
      break;
    }
    entry.status = "kept";
    if (!entry.tag->empty() &&
        std::find(table.tags.begin(), table.tags.end(), *entry.tag) == table.tags.end()) {
      table.tags.push_back(*entry.tag);
    }
    if (entry.tag->empty()) {
      ioFindings.notes.push_back("METHOD_LIST entry " + std::to_string(n) +
                                 " has an empty TAG: its viewer " + *entry.command +
                                 " is labelled with its command.");
    }
    entry.object = ReadField(n, "KORAB");
    if (!entry.object) {
      entry.reason =
          "KORAB is not declared: the viewer belongs to no object and reading stops "
          "after this entry";
      table.entries.push_back(entry);
      break;
    }
    if (entry.object->empty()) {
      entry.reason = "KORAB is empty: the viewer belongs to no object";
    } else if (std::find(table.objects.begin(), table.objects.end(), *entry.object) ==
               table.objects.end()) {
      table.objects.push_back(*entry.object);
    }
    table.entries.push_back(entry);
  }

  // The entries that the file declares beyond the point where reading stops.
  const std::map<int, std::vector<std::string>> declared = DeclaredEntries();
  for (const auto& [index, fields] : declared) {
    if (index > table.lastIndexRead) table.neverRead.push_back(index);
  }
  const MethodEntry& last = table.entries.back();
  const std::string at = "METHOD_LIST entry " + std::to_string(last.index);
  const std::string unread =
      table.neverRead.empty()
          ? std::string()
          : (table.neverRead.size() == 1 ? "; entry " : "; entries ") + IndexList(table.neverRead) +
                (table.neverRead.size() == 1 ? " is never read" : " are never read");
  if (last.status == "end") {
    const auto here = declared.find(last.index);
    if (here != declared.end()) {
      ioFindings.problems.push_back(at + " declares " + Join(here->second, ", ") +
                                    " but no WHERE, so the table ends there" + unread + ".");
    } else if (!table.neverRead.empty()) {
      ioFindings.problems.push_back("the METHOD_LIST table ends at entry " +
                                    std::to_string(last.index) + ", which has no WHERE" + unread +
                                    ".");
    }
    if (last.index == 1) {
      ioFindings.problems.push_back(
          "the METHOD_LIST table has no entry 1: the viewer catalogue is empty.");
    }
  } else if (last.status == "stop") {
    ioFindings.problems.push_back(at + " is kept but has no " + (last.command ? "TAG" : "COMMAND") +
                                  ": reading stops there and its viewer is not added" + unread +
                                  ".");
  } else if (!table.neverRead.empty()) {  // kept without KORAB, entries follow
    ioFindings.problems.push_back(at + " has no KORAB: its viewer " + *last.command +
                                  " belongs to no object and reading stops after it" + unread +
                                  ".");
  } else {
    ioFindings.notes.push_back(at + " has no KORAB: its viewer " + *last.command +
                               " belongs to no object.");
  }
  return table;
}

json ToJson(const MethodTable& iTable) {
  json entries = json::array();
  auto field = [](const std::optional<std::string>& iValue) {
    return iValue ? json(*iValue) : json(nullptr);
  };
  for (const MethodEntry& entry : iTable.entries) {
    entries.push_back({{"index", entry.index},
                       {"status", entry.status},
                       {"where", field(entry.where)},
                       {"role", field(entry.role)},
                       {"command", field(entry.command)},
                       {"tag", field(entry.tag)},
                       {"object", field(entry.object)},
                       {"reason", entry.reason}});
  }
  return {{"entries", entries}, {"never_read", iTable.neverRead}};
}

void Print(const MethodTable& iTable) {
  std::cout << "METHOD_LIST of KORBRIX\n";
  for (const MethodEntry& entry : iTable.entries) {
    std::cout << "  " << Pad(std::to_string(entry.index), 4) << Pad(entry.status, 9);
    if (entry.status == "kept") {
      std::cout << *entry.command;
      if (entry.object && !entry.object->empty()) std::cout << " for " << *entry.object;
      if (!entry.tag->empty()) std::cout << " (label " << *entry.tag << ".Label)";
      if (!entry.reason.empty()) std::cout << "; " << entry.reason;
    } else {
      std::cout << entry.reason;
    }
    std::cout << '\n';
  }
  if (!iTable.neverRead.empty()) {
    std::cout << "  never read: " << (iTable.neverRead.size() == 1 ? "entry " : "entries ")
              << IndexList(iTable.neverRead) << '\n';
  }
}

// --- Message catalogues ------------------------------------------------------------

const char* const kCatalogues[] = {"KORLumSessionFile", "LumSessionFile", "KORDMToolsManager"};

struct CatalogueFiles {
  std::string name;
  // For each language level ("" for the default texts), the file used, or
  // an absent resource when no directory has a readable one.
  std::map<std::string, KORResourceFile> files;
};

std::string LevelName(const std::string& iLevel) { return iLevel.empty() ? "default" : iLevel; }

// The language subdirectories of the catalogue directories.
std::vector<std::string> Languages(const std::vector<std::string>& iDirectories) {
  std::set<std::string> languages;
  for (const std::string& directory : iDirectories) {
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
      std::error_code typeError;
      if (entry->is_directory(typeError)) languages.insert(entry->path().filename().string());
    }
  }
  return std::vector<std::string>(languages.begin(), languages.end());
}

// Finds each catalogue's file at each level as the catalogue service does:
// the first directory of the search path with a readable file.
std::vector<CatalogueFiles> FindCatalogues(const std::vector<std::string>& iDirectories,
                                           const std::vector<std::string>& iLevels,
                                           Findings& ioFindings) {
  std::vector<CatalogueFiles> catalogues;
  for (const char* name : kCatalogues) {
    CatalogueFiles catalogue;
    catalogue.name = name;
    for (const std::string& level : iLevels) {
      const std::string relative = (level.empty() ? std::string() : level + "/") + name + ".msgcat";
      KORResourceFile used;
      for (const std::string& directory : iDirectories) {
        KORResourceFile file = KORResourceFile::Load((fs::path(directory) / relative).c_str());
        AddAll(ioFindings.problems, file.GetProblems());
        if (file.GetState() == KORResourceFile::Loaded) {
          used = file;
          break;
        }
      }
      if (used.GetState() != KORResourceFile::Loaded) {
        std::string problem = "the catalogue ";
        problem.append(catalogue.name).append(" has no ");
        if (level.empty()) {
          problem.append("default-language file ").append(relative);
        } else {
          problem.append("file in language ")
              .append(level)
              .append(" (")
              .append(relative)
              .append(")");
        }
        problem.append(" in ").append(Join(iDirectories, ":")).append(".");
        ioFindings.problems.push_back(std::move(problem));
      }
      catalogue.files.emplace(level, used);
    }
    catalogues.push_back(std::move(catalogue));
  }
  return catalogues;
}

struct MissingKey {
  std::string catalogue;
  std::string key;
  std::vector<std::string> levels;
};

// The keys that the library reads, by catalogue.
std::vector<std::pair<std::string, std::string>> KeysRead(const MethodTable& iTable) {
  std::vector<std::pair<std::string, std::string>> keys;
  for (const char* key :
       {"TypeGraph.Msg", "TypeQuery.Msg", "TypeNone.Msg", "LoadModeDynamic.Msg",
        "LoadModeStatic.Msg", "LoadModeNone.Msg", "InstanceModeAll.Msg", "InstanceModeSelected.Msg",
        "InstanceModeNone.Msg", "OptionReport.Msg", "OptionModification.Msg", "OptionQuery.Msg",
        "OptionCSB.Msg", "OptionSeparator.Msg"}) {
    keys.emplace_back("KORLumSessionFile", key);
  }
  for (const std::string& object : iTable.objects) {
    keys.emplace_back("KORLumSessionFile", object + ".Synonym");
  }
  keys.emplace_back("LumSessionFile", "FileNone.Msg");
  keys.emplace_back("LumSessionFile", "ViewerNone.Msg");
  for (const std::string& tag : iTable.tags) keys.emplace_back("KORDMToolsManager", tag + ".Label");
  return keys;
}

std::vector<MissingKey> FindMissingKeys(
    const std::vector<std::pair<std::string, std::string>>& iKeys,
    const std::vector<CatalogueFiles>& iCatalogues, const std::vector<std::string>& iLevels,
    Findings& ioFindings) {
  std::vector<MissingKey> missing;
  for (const auto& [catalogueName, key] : iKeys) {
    const auto catalogue = std::find_if(
        iCatalogues.begin(), iCatalogues.end(),
        [&wanted = catalogueName](const CatalogueFiles& c) { return c.name == wanted; });
    MissingKey entry{catalogueName, key, {}};
    for (const std::string& level : iLevels) {
      const KORResourceFile& file = catalogue->files.at(level);
      // A level without file is reported once for the whole catalogue.
      if (file.GetState() == KORResourceFile::Loaded && file.Find(key) == nullptr) {
        entry.levels.push_back(LevelName(level));
      }
    }
    if (!entry.levels.empty()) {
      std::string problem = "the key ";
      problem.append(key)
          .append(" of the catalogue ")
          .append(catalogueName)
          .append(" is missing in ")
          .append(Join(entry.levels, ", "))
          .append(".");
      ioFindings.problems.push_back(std::move(problem));
      missing.push_back(std::move(entry));
    }
  }
  return missing;
}

// --- Settings and paths ----------------------------------------------------------

json CheckSettings(Findings& ioFindings) {
  const char* path = KORGetEnv("KOR_ADMIN_SETTINGS");
  if (path == nullptr) {
    ioFindings.notes.push_back(
        "KOR_ADMIN_SETTINGS is not set: there are no services, so this is not the start-up "
        "session.");
    return {{"file", nullptr}, {"state", "unset"}};
  }
  const KORResourceFile file = KORResourceFile::Load(path);
  json settings = {{"file", path}};
  switch (file.GetState()) {
    case KORResourceFile::Absent:
      settings["state"] = "absent";
      if (CurrentConfiguration().kind == ConfigurationSource::kEnvironment) {
        ioFindings.problems.push_back(std::string("the administrator settings file ") + path +
                                      " named by KOR_ADMIN_SETTINGS does not exist.");
      } else {
        ioFindings.notes.push_back(std::string("there is no administrator settings file ") + path +
                                   ": this is not the start-up session.");
      }
      break;
    case KORResourceFile::Unreadable:
      settings["state"] = "unreadable";
      AddAll(ioFindings.problems, file.GetProblems());
      break;
    case KORResourceFile::Loaded: {
      settings["state"] = "loaded";
      AddAll(ioFindings.problems, file.GetProblems());
      const KORUnicodeString* value = file.Find("LUMAdmin.LUM_STARTUP_SESSION");
      settings["startup_session_value"] = value != nullptr ? json(Text(*value)) : json(nullptr);
      break;
    }
  }
  settings["startup_session"] = KORLumSessionFileUtilities::IsStartUpSession() == 1;
  return settings;
}

bool IsDeclared(const char* iKey) {
  int status = 0;
  (void)KORLumPool::GetStringDec(iKey, status);
  return status == 0;
}

json CheckPath(const char* iWhat, const char* iKey, bool iResourceLoaded, const std::string& iPath,
               Findings& ioFindings) {
  json path = {{"key", iKey}, {"path", iPath}};
  if (iResourceLoaded && !IsDeclared(iKey)) {
    ioFindings.problems.push_back(std::string(iKey) + " is not declared: the " + iWhat +
                                  " path is empty.");
  } else if (iPath.empty()) {
    ioFindings.problems.push_back(std::string("the ") + iWhat + " path is empty.");
  } else if (!IsDirectory(iPath)) {
    ioFindings.problems.push_back(std::string("the ") + iWhat + " directory " + iPath +
                                  " does not exist.");
  }
  path["exists"] = !iPath.empty() && IsDirectory(iPath);
  return path;
}

}  // namespace

CLI::App* SetupCheck(CLI::App& ioApp) {
  return ioApp.add_subcommand(
      "check", "Validate the configuration and explain it; exit status 1 when it has problems");
}

int RunCheck(const GlobalOptions& iGlobal) {
  Findings findings;
  const json configuration = DescribeConfiguration();

  CheckSearchPath("declaration", KORLumPool::GetSearchPath(), findings);
  const Declarations declarations = LoadDeclarations(findings);

  const std::vector<std::string> catalogueDirectories = Texts(KORMsgCatalog::GetSearchPath());
  CheckSearchPath("catalogue", KORMsgCatalog::GetSearchPath(), findings);
  const std::vector<std::string> languages = Languages(catalogueDirectories);
  std::vector<std::string> levels{""};
  levels.insert(levels.end(), languages.begin(), languages.end());
  const std::vector<CatalogueFiles> catalogues =
      FindCatalogues(catalogueDirectories, levels, findings);

  const json settings = CheckSettings(findings);

  const std::string brixPath = Text(KORLumSessionFileUtilities::GetBRIXFilesPath());
  const std::string graphPath = Text(KORLumSessionFileUtilities::GetGraphFilesPath());
  const json paths = {{"brix_files", CheckPath("BRIX files", "MERLO.BRIXFILES",
                                               declarations.merloLoaded, brixPath, findings)},
                      {"graph_files", CheckPath("graph files", "KORBRIX.HUB.GRAPHSESSION",
                                                declarations.brixLoaded, graphPath, findings)}};

  MethodTable table;
  if (declarations.brixLoaded) table = ReadMethodTable(findings);
  const auto keys = KeysRead(table);
  const std::vector<MissingKey> missing = FindMissingKeys(keys, catalogues, levels, findings);

  if (iGlobal.json) {
    json catalogueFiles = json::array();
    for (const CatalogueFiles& catalogue : catalogues) {
      json files = json::object();
      for (const std::string& level : levels) {
        const KORResourceFile& file = catalogue.files.at(level);
        files[LevelName(level)] = file.GetState() == KORResourceFile::Loaded
                                      ? json(std::string(file.GetFileName()))
                                      : json(nullptr);
      }
      catalogueFiles.push_back({{"name", catalogue.name}, {"files", files}});
    }
    json missingKeys = json::array();
    for (const MissingKey& key : missing) {
      missingKeys.push_back(
          {{"catalogue", key.catalogue}, {"key", key.key}, {"languages", key.levels}});
    }
    PrintJson({{"configuration", configuration},
               {"declarations", declarations.resources},
               {"languages", languages},
               {"catalogues", catalogueFiles},
               {"settings", settings},
               {"paths", paths},
               {"method_list", declarations.brixLoaded ? ToJson(table) : json(nullptr)},
               {"keys_checked", keys.size()},
               {"missing_keys", missingKeys},
               {"problems", findings.problems},
               {"notes", findings.notes},
               {"ok", findings.problems.empty()}});
    return findings.problems.empty() ? kSuccess : kProblems;
  }

  PrintConfiguration(configuration);

  std::cout << "\nDeclarations\n";
  for (const json& resource : declarations.resources) {
    std::cout << "  " << Pad(resource["resource"].get<std::string>(), 9)
              << (resource["file"].is_null() ? std::string("not found")
                                             : resource["file"].get<std::string>())
              << '\n';
  }

  std::cout << "\nMessage catalogues (languages: "
            << (languages.empty() ? std::string("none") : Join(languages, ", ")) << ")\n";
  for (const CatalogueFiles& catalogue : catalogues) {
    std::cout << "  " << catalogue.name << '\n';
    for (const std::string& level : levels) {
      const KORResourceFile& file = catalogue.files.at(level);
      std::cout << "    " << Pad(LevelName(level), 9)
                << (file.GetState() == KORResourceFile::Loaded ? std::string(file.GetFileName())
                                                               : std::string("no file"))
                << '\n';
    }
  }

  std::cout << "\nAdministrator settings\n  ";
  if (settings["file"].is_null()) {
    std::cout << "none (KOR_ADMIN_SETTINGS is not set)";
  } else {
    std::cout << settings["file"].get<std::string>() << " (" << settings["state"].get<std::string>()
              << ")";
    if (settings.contains("startup_session_value") &&
        !settings["startup_session_value"].is_null()) {
      std::cout << ": LUMAdmin.LUM_STARTUP_SESSION = "
                << settings["startup_session_value"].get<std::string>();
    }
  }
  std::cout << "\n  " << Pad("Start-up session", 18)
            << (settings["startup_session"].get<bool>() ? "yes" : "no") << '\n';

  std::cout << "\nPaths\n";
  for (const auto& [label, name] : {std::pair<const char*, const char*>{"BRIX files", "brix_files"},
                                    {"Graph files", "graph_files"}}) {
    const json& path = paths[name];
    const std::string value = path["path"].get<std::string>();
    std::cout << "  " << Pad(label, 14) << (value.empty() ? std::string("(empty)") : value) << "  ("
              << path["key"].get<std::string>()
              << (path["exists"].get<bool>() ? "" : ", no such directory") << ")\n";
  }

  std::cout << '\n';
  if (declarations.brixLoaded) {
    Print(table);
  } else {
    std::cout << "METHOD_LIST of KORBRIX\n  not read: KORBRIX cannot be loaded\n";
  }

  std::cout << "\nCatalogue keys read by the library: " << keys.size() << " in "
            << Join(std::vector<std::string>(std::begin(kCatalogues), std::end(kCatalogues)), ", ")
            << '\n';
  if (missing.empty()) {
    std::cout << "  every key is declared in every catalogue file found\n";
  }
  for (const MissingKey& key : missing) {
    std::cout << "  " << Pad(key.catalogue, 19) << Pad(key.key, 26) << "missing in "
              << Join(key.levels, ", ") << '\n';
  }

  if (!findings.notes.empty()) {
    std::cout << "\nNotes\n";
    for (const std::string& note : findings.notes) std::cout << "  " << note << '\n';
  }
  if (findings.problems.empty()) {
    std::cout << "\nNo problem found.\n";
    return kSuccess;
  }
  std::cout << "\nProblems (" << findings.problems.size() << ")\n";
  for (const std::string& problem : findings.problems) std::cout << "  " << problem << '\n';
  std::cout.flush();
  std::cerr << "lumsess: the configuration has "
            << Plural(findings.problems.size(), "problem.", "problems.") << std::endl;
  return kProblems;
}

}  // namespace lumsess
