// lumsess with no command: the configuration in use, the paths, the viewer
// catalogue and the session files found, in one page.
#include <iostream>

#include "Configuration.h"
#include "Facts.h"
#include "Lumsess.h"

namespace lumsess {

int RunOverview(const GlobalOptions& iGlobal) {
  const Json configuration = DescribeConfiguration();
  const PathFacts paths = GatherPaths();
  const std::vector<ObjectFact> viewers = GatherViewers();
  std::vector<std::string> missing;
  std::vector<std::string> unreadable;
  const std::vector<SessionFileFact> files =
      GatherSessionFiles(DefaultSessionDirectories(paths), missing, unreadable);

  if (iGlobal.json) {
    PrintJson({{"configuration", configuration},
               {"paths", ToJson(paths)},
               {"viewers", ToJson(viewers)},
               {"session_files", ToJson(files)},
               {"missing_directories", missing}});
    ReportUnreadableDirectories(unreadable);
    return kSuccess;
  }
  PrintConfiguration(configuration);
  std::cout << '\n';
  Print(paths);
  std::cout << '\n';
  Print(viewers);
  std::cout << '\n';
  Print(files);
  for (const std::string& directory : missing) {
    std::cout << "  "
              << Say("SessionFiles.Missing", "(the directory {1} does not exist)", {directory})
              << '\n';
  }
  ReportUnreadableDirectories(unreadable);
  return kSuccess;
}

}  // namespace lumsess
