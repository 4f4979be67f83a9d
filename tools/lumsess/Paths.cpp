// lumsess paths: where the session files, query files and the history file
// live, and whether this run is the start-up session.
#include <CLI/CLI.hpp>

#include "Facts.h"
#include "Lumsess.h"

namespace lumsess {

CLI::App* SetupPaths(CLI::App& ioApp) {
  return ioApp.add_subcommand(
      "paths", "Show the BRIX, graph, query and history file paths and the start-up session flag");
}

int RunPaths(const GlobalOptions& iGlobal) {
  const PathFacts paths = GatherPaths();
  if (iGlobal.json) {
    PrintJson(ToJson(paths));
  } else {
    Print(paths);
  }
  return kSuccess;
}

}  // namespace lumsess
