#include "Facts.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>
#include <system_error>

#include "KORListLumViewerBag.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileType.h"
#include "KORLumSessionFileUtilities.h"
#include "KORLumViewerBag.h"
#include "Lumsess.h"

namespace fs = std::filesystem;

namespace lumsess {

namespace {

using Utilities = KORLumSessionFileUtilities;

std::string FormatTime(std::time_t iTime, bool iUtc) {
  std::tm parts{};
  if (iUtc) {
    gmtime_r(&iTime, &parts);
  } else {
    localtime_r(&iTime, &parts);
  }
  char text[32];
  const std::size_t length =
      std::strftime(text, sizeof text, iUtc ? "%Y-%m-%dT%H:%M:%SZ" : "%Y-%m-%d %H:%M", &parts);
  return std::string(text, length);
}

std::time_t ModificationTime(const fs::path& iPath) {
  std::error_code error;
  const fs::file_time_type time = fs::last_write_time(iPath, error);
  if (error) return 0;
  const auto system = std::chrono::time_point_cast<std::chrono::system_clock::duration>(
      time - fs::file_time_type::clock::now() + std::chrono::system_clock::now());
  return std::chrono::system_clock::to_time_t(system);
}

bool EndsWith(const std::string& iText, const std::string& iSuffix) {
  return iText.size() >= iSuffix.size() &&
         iText.compare(iText.size() - iSuffix.size(), iSuffix.size(), iSuffix) == 0;
}

}  // namespace

// --- Paths --------------------------------------------------------------------------

PathFacts GatherPaths() {
  PathFacts paths;
  paths.brixFiles = Text(Utilities::GetBRIXFilesPath());
  paths.graphFiles = Text(Utilities::GetGraphFilesPath());
  paths.queryFiles = Text(Utilities::GetQueryFilesPath());
  paths.historyFile = Text(Utilities::GetHistoryFilePath());
  paths.startUpSession = Utilities::IsStartUpSession() == 1;
  return paths;
}

Json ToJson(const PathFacts& iPaths) {
  return {{"brix_files", iPaths.brixFiles},
          {"graph_files", iPaths.graphFiles},
          {"query_files", iPaths.queryFiles},
          {"history_file", iPaths.historyFile},
          {"startup_session", iPaths.startUpSession}};
}

void Print(const PathFacts& iPaths) {
  const std::string labels[] = {
      Say("Paths.BRIXFiles", "BRIX files"), Say("Paths.GraphFiles", "Graph files"),
      Say("Paths.QueryFiles", "Query files"), Say("Paths.HistoryFile", "History file"),
      Say("Paths.StartUpSession", "Start-up session")};
  const std::size_t width = ColumnWidth({std::begin(labels), std::end(labels)});
  auto line = [width](const std::string& iLabel, const std::string& iValue) {
    std::cout << "  " << Pad(iLabel, width) << (iValue.empty() ? Say("Empty", "(empty)") : iValue)
              << '\n';
  };
  std::cout << Say("Paths", "Paths") << '\n';
  line(labels[0], iPaths.brixFiles);
  line(labels[1], iPaths.graphFiles);
  line(labels[2], iPaths.queryFiles);
  line(labels[3], iPaths.historyFile);
  line(labels[4], iPaths.startUpSession ? Say("Yes", "yes") : Say("No", "no"));
}

// --- Viewers -------------------------------------------------------------------------

std::vector<ObjectFact> GatherViewers() {
  std::vector<ObjectFact> objects;
  std::set<std::string> inBag;
  const KORListValKORLumViewerBag bags = Utilities::GetViewerBags();
  for (int i = 1; i <= bags.Size(); ++i) {
    const KORLumViewerBag& bag = bags[i];
    ObjectFact object;
    object.name = Text(bag.GetObject());
    object.label = Text(Utilities::GetNLSObject(bag.GetObject()));
    for (int v = 1; v <= bag.GetNumberOfViewers(); ++v) {
      const KORUnicodeString& viewer = bag.GetViewer(v);
      object.viewers.push_back({Text(viewer), Text(Utilities::GetNLSViewer(viewer))});
      inBag.insert(Text(viewer));
    }
    objects.push_back(std::move(object));
  }
  // Viewers kept by the catalogue without an object (their entry has no KORAB).
  ObjectFact loose;
  const KORListValKORUnicodeString viewers = Utilities::GetViewers();
  for (int i = 1; i <= viewers.Size(); ++i) {
    const std::string command = Text(viewers[i]);
    if (inBag.insert(command).second) {
      loose.viewers.push_back({command, Text(Utilities::GetNLSViewer(viewers[i]))});
    }
  }
  if (!loose.viewers.empty()) objects.push_back(std::move(loose));
  return objects;
}

Json ToJson(const std::vector<ObjectFact>& iObjects) {
  Json objects = Json::array();
  for (const ObjectFact& object : iObjects) {
    Json viewers = Json::array();
    for (const ViewerFact& viewer : object.viewers) {
      viewers.push_back({{"command", viewer.command}, {"label", viewer.label}});
    }
    objects.push_back({{"object", object.name.empty() ? Json(nullptr) : Json(object.name)},
                       {"name", object.label},
                       {"viewers", viewers}});
  }
  return objects;
}

void Print(const std::vector<ObjectFact>& iObjects) {
  std::size_t objectWidth = 0;
  std::size_t viewerWidth = 0;
  std::size_t viewerCount = 0;
  for (const ObjectFact& object : iObjects) {
    objectWidth = std::max(objectWidth, Width(object.name));
    for (const ViewerFact& viewer : object.viewers) {
      viewerWidth = std::max(viewerWidth, Width(viewer.command));
      ++viewerCount;
    }
  }
  const std::string objects = std::to_string(iObjects.size());
  const std::string viewers = std::to_string(viewerCount);
  std::cout << Say("Viewers", "Viewers ({1}, {2})",
                   {iObjects.size() == 1 ? Say("Viewers.Object", "{1} object", {objects})
                                         : Say("Viewers.Objects", "{1} objects", {objects}),
                    viewerCount == 1 ? Say("Viewers.Viewer", "{1} viewer", {viewers})
                                     : Say("Viewers.Viewers", "{1} viewers", {viewers})})
            << '\n';
  if (iObjects.empty()) std::cout << "  " << Say("None", "(none)") << '\n';
  for (const ObjectFact& object : iObjects) {
    if (object.name.empty()) {
      std::cout << "  " << Say("Viewers.NoObject", "(no object)") << '\n';
    } else {
      std::cout << "  " << Pad(object.name, objectWidth + 2) << object.label << '\n';
    }
    for (const ViewerFact& viewer : object.viewers) {
      std::cout << "    " << Pad(viewer.command, viewerWidth + 2) << viewer.label << '\n';
    }
  }
}

// --- Session files -----------------------------------------------------------------

std::vector<std::string> DefaultSessionDirectories(const PathFacts& iPaths) {
  std::vector<std::string> directories;
  for (const std::string& directory : {iPaths.graphFiles, iPaths.queryFiles}) {
    if (!directory.empty() &&
        std::find(directories.begin(), directories.end(), directory) == directories.end()) {
      directories.push_back(directory);
    }
  }
  return directories;
}

std::vector<SessionFileFact> GatherSessionFiles(const std::vector<std::string>& iDirectories,
                                                std::vector<std::string>& oMissing,
                                                std::vector<std::string>& oUnreadable) {
  // The suffixes come from the library's constants: "hub" and "qry".
  const std::string graphSuffix = "." + Text(KORLumSessionFileSuffix_Graph);
  const std::string querySuffix = "." + Text(KORLumSessionFileSuffix_Query);
  std::vector<SessionFileFact> files;
  std::set<std::string> seen;
  for (const std::string& directory : iDirectories) {
    std::error_code error;
    if (!fs::is_directory(directory, error)) {
      oMissing.push_back(directory);
      continue;
    }
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
      std::error_code statusError;
      if (!entry->is_regular_file(statusError)) continue;
      const std::string name = entry->path().filename().string();
      _KORLumSessionFileType type = KORLumSessionFileType_None;
      if (EndsWith(name, graphSuffix) && name.size() > graphSuffix.size()) {
        type = KORLumSessionFileType_Graph;
      } else if (EndsWith(name, querySuffix) && name.size() > querySuffix.size()) {
        type = KORLumSessionFileType_Query;
      } else {
        continue;
      }
      // Directories given with and without a final '/' name the same files.
      const std::string path = (fs::path(directory) / name).lexically_normal().string();
      if (!seen.insert(path).second) continue;
      const KORLumSessionFile file(type, path.c_str(), KORUnicodeString(),
                                   KORLumGraphSessionLoadMode_None,
                                   KORLumGraphSessionInstanceMode_None, 0);
      SessionFileFact fact;
      fact.path = path;
      fact.kind = Text(file.GetNLSType());
      fact.shown = Text(file.GetNLSFile());
      fact.type = type;
      std::error_code sizeError;
      fact.size = entry->file_size(sizeError);
      fact.modified = ModificationTime(entry->path());
      files.push_back(std::move(fact));
    }
    if (error)
      oUnreadable.push_back(Quote(directory) + " cannot be read (" + error.message() + ")");
  }
  std::sort(files.begin(), files.end(),
            [](const SessionFileFact& a, const SessionFileFact& b) { return a.path < b.path; });
  return files;
}

void ReportUnreadableDirectories(const std::vector<std::string>& iUnreadable) {
  if (iUnreadable.empty()) return;
  ReportError(kProblems, (iUnreadable.size() == 1 ? "the session file directory "
                                                  : "the session file directories ") +
                             Join(iUnreadable, ", ") + ".");
}

Json ToJson(const std::vector<SessionFileFact>& iFiles) {
  Json files = Json::array();
  for (const SessionFileFact& file : iFiles) {
    files.push_back({{"path", file.path},
                     {"type", file.type},
                     {"kind", file.kind},
                     {"shown", file.shown},
                     {"size", file.size},
                     {"modified", FormatTime(file.modified, true)}});
  }
  return files;
}

void Print(const std::vector<SessionFileFact>& iFiles) {
  std::size_t width = 0;
  std::size_t sizeWidth = 0;
  for (const SessionFileFact& file : iFiles) {
    width = std::max(width, Width(file.kind + " : " + file.shown));
    sizeWidth = std::max(sizeWidth, std::to_string(file.size).size());
  }
  std::cout << Say("SessionFiles", "Session files ({1})", {std::to_string(iFiles.size())}) << '\n';
  if (iFiles.empty()) std::cout << "  " << Say("None", "(none)") << '\n';
  const std::string bytes = Say("SessionFiles.Bytes", "bytes");
  for (const SessionFileFact& file : iFiles) {
    const std::string size = std::to_string(file.size);
    std::cout << "  " << Pad(file.kind + " : " + file.shown, width + 2)
              << std::string(sizeWidth - size.size(), ' ') << size << ' ' << bytes << "  "
              << FormatTime(file.modified, false) << '\n';
  }
}

}  // namespace lumsess
