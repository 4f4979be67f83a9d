// lumsess list [DIR...]: the session files of the graph and query
// directories (or of the given ones), as the display line shows them.
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "Facts.h"
#include "Lumsess.h"

namespace lumsess {

namespace {
std::vector<std::string> gDirectories;  // the DIR arguments
}

CLI::App* SetupList(CLI::App& ioApp) {
  CLI::App* command = ioApp.add_subcommand(
      "list", "List the session files of the graph and query directories, or of DIR...");
  command
      ->add_option("DIR", gDirectories,
                   "Directories to list instead of the graph and query files directories")
      ->type_name("");
  return command;
}

int RunList(const GlobalOptions& iGlobal) {
  for (const std::string& directory : gDirectories) {
    std::error_code error;
    if (!std::filesystem::is_directory(directory, error)) {
      ReportError(kUsage, "the directory " + Quote(directory) + " given to list does not exist.");
    }
  }
  std::vector<std::string> directories = gDirectories;
  if (directories.empty()) {
    directories = DefaultSessionDirectories(GatherPaths());
    if (directories.empty()) {
      ReportError(kProblems,
                  "the graph and query files paths are both empty: there is no directory to list.");
    }
  }
  std::vector<std::string> missing;
  std::vector<std::string> unreadable;
  const std::vector<SessionFileFact> files = GatherSessionFiles(directories, missing, unreadable);
  if (iGlobal.json) {
    PrintJson({{"directories", directories},
               {"missing_directories", missing},
               {"session_files", ToJson(files)}});
  } else {
    Print(files);
  }
  if (!missing.empty()) {
    ReportError(
        kProblems,
        missing.size() == 1
            ? "the session file directory " + Quote(missing[0]) + " does not exist."
            : "the session file directories " + Quote(Join(missing, "\", \"")) + " do not exist.");
  }
  ReportUnreadableDirectories(unreadable);
  return kSuccess;
}

}  // namespace lumsess
