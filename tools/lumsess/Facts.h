// lumsess: what the library answers, gathered once for printing as text or
// JSON. The overview and the commands paths, viewers and list share these.
#ifndef LUMSESS_FACTS_H
#define LUMSESS_FACTS_H

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

#include "Lumsess.h"

namespace lumsess {

// --- Paths and start-up session ---------------------------------------------------

struct PathFacts {
  std::string brixFiles;
  std::string graphFiles;
  std::string queryFiles;
  std::string historyFile;
  bool startUpSession = false;
};

PathFacts GatherPaths();
Json ToJson(const PathFacts& iPaths);
void Print(const PathFacts& iPaths);

// --- Viewer catalogue ------------------------------------------------------------

struct ViewerFact {
  std::string command;  // the viewer name
  std::string label;    // its translated label
};

struct ObjectFact {
  std::string name;   // the object name; empty for the viewers without object
  std::string label;  // its translated name
  std::vector<ViewerFact> viewers;
};

// One element per object of the catalogue, in catalogue order, then (when
// there are any) one element with an empty name holding the viewers that
// belong to no object.
std::vector<ObjectFact> GatherViewers();
Json ToJson(const std::vector<ObjectFact>& iObjects);
void Print(const std::vector<ObjectFact>& iObjects);

// --- Session files -----------------------------------------------------------------

struct SessionFileFact {
  std::string path;   // the full path
  std::string kind;   // the translated kind
  std::string shown;  // the path as the display line shows it (shortened)
  int type = 0;       // 1 Graph, 2 Query
  std::uintmax_t size = 0;
  std::time_t modified = 0;
};

// The directories searched by default: the graph and query files paths,
// without repetition and without empty ones.
std::vector<std::string> DefaultSessionDirectories(const PathFacts& iPaths);
// The session files (suffixes of the Graph and Query kinds) directly in the
// directories, sorted by path. The directories that do not exist are added to
// oMissing; those that exist but cannot be read (wholly or in part) to
// oUnreadable, as "\"directory\" cannot be read (reason)".
std::vector<SessionFileFact> GatherSessionFiles(const std::vector<std::string>& iDirectories,
                                                std::vector<std::string>& oMissing,
                                                std::vector<std::string>& oUnreadable);
// Ends the command with one sentence on standard error and status 1 when
// iUnreadable (from GatherSessionFiles) names any directory; else nothing.
void ReportUnreadableDirectories(const std::vector<std::string>& iUnreadable);
Json ToJson(const std::vector<SessionFileFact>& iFiles);
void Print(const std::vector<SessionFileFact>& iFiles);

}  // namespace lumsess

#endif
