// lumsess: shows where session files live, which viewers can show them and
// how they read in the user's language, and checks the configuration that
// decides it. This file only builds the command line, parses it and
// dispatches.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "Configuration.h"
#include "Lumsess.h"

namespace lumsess {
namespace {

// Builds the command line, parses it and runs the command; returns the exit
// status. What the command reports ends it through ExitRequest, which main
// catches along with any other failure.
int Run(int argc, char** argv) {
  CLI::App app(
      "Session files of the product-data-management client: where they live, which viewers can "
      "show them, and how they read in your language.\nWith no command: an overview of all of it.",
      "lumsess");
  app.set_version_flag("--version", "lumsess (VX0SESS0) " LUMSESS_VERSION);
  app.require_subcommand(0, 1);

  GlobalOptions global;
  app.add_option("--lang", global.language,
                 "Language of the texts (sets KOR_LANGUAGE), e.g. fr or de_CH")
      ->type_name("LANG");
  app.add_option("--config", global.config,
                 "Configuration directory holding dcls/, msgcatalog/ and admin.settings")
      ->type_name("DIR");
  app.add_flag("--trace", global.trace, "Write the library's trace lines to standard error");
  app.add_flag("--json", global.json, "Write the result as JSON");

  CLI::App* paths = SetupPaths(app);
  CLI::App* viewers = SetupViewers(app);
  CLI::App* show = SetupShow(app);
  CLI::App* list = SetupList(app);
  CLI::App* check = SetupCheck(app);
  CLI::App* po = SetupPo(app);
  // Global options are accepted after the command too.
  for (CLI::App* command : {paths, viewers, show, list, check, po}) command->fallthrough();
  app.footer(
      "Environment:\n"
      "  KOR_DCLS_PATH        directories of declarations (*.dcls), separated by ':'\n"
      "  KOR_MSGCATALOG_PATH  directories of message catalogues (*.msgcat), separated by ':'\n"
      "  KOR_ADMIN_SETTINGS   the administrator settings file\n"
      "  KOR_LANGUAGE, LC_ALL, LC_MESSAGES, LANG\n"
      "                       the language: the first one set and not empty\n"
      "  KORHUB_TRACE, KORHUB_TRACE_FILE\n"
      "                       the library's trace lines, to standard error or to a file\n"
      "With none of the first three set and no --config, the bundled sample configuration\n"
      "is used.\n"
      "\n"
      "Exit status:\n"
      "  0  success\n"
      "  1  problems found (check), an unknown object, or another failure\n"
      "  2  a wrong command line\n"
      "\n"
      "Examples:\n"
      "  lumsess --lang fr viewers Drawing     the viewers of drawings, in French\n"
      "  lumsess --config ./config check       check the configuration in ./config\n"
      "\n"
      "The manual page lumsess(1) tells more.");

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::cout << app.help();
    return kSuccess;
  } catch (const CLI::CallForAllHelp&) {
    std::cout << app.help("", CLI::AppFormatMode::All);
    return kSuccess;
  } catch (const CLI::CallForVersion& version) {
    std::cout << version.what() << '\n';
    return kSuccess;
  } catch (const CLI::ParseError& error) {
    std::cerr << "lumsess: " << error.what() << " (see lumsess --help)." << std::endl;
    return kUsage;
  }

  ApplyConfiguration(global);
  if (paths->parsed()) return RunPaths(global);
  if (viewers->parsed()) return RunViewers(global);
  if (show->parsed()) return RunShow(global);
  if (list->parsed()) return RunList(global);
  if (check->parsed()) return RunCheck(global);
  if (po->parsed()) return RunPo(global);
  return RunOverview(global);
}

// Opens /dev/null on whichever of the standard descriptors 0, 1 and 2 is
// closed, before anything else opens a file: a file opened later would
// otherwise get that number, and the tool's output or error sentences would
// go into it.
void OpenStandardDescriptors() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
    const int opened = ::open("/dev/null", descriptor == STDIN_FILENO ? O_RDONLY : O_WRONLY);
    // The lowest free number is this one; anything else is not ours to keep.
    if (opened >= 0 && opened != descriptor) ::close(opened);
  }
}

// Writes out what is left of standard output and checks that everything
// written there arrived: a full disk or a closed pipe ends the tool with one
// sentence on standard error and status 1 (or the command's own non-zero
// status), never with success.
int FinishOutput(int iStatus) {
  errno = 0;
  std::cout.flush();
  int error = errno;
  bool failed = !std::cout.good();
  if (std::fflush(stdout) != 0) {
    failed = true;
    error = errno;
  }
  if (std::ferror(stdout) != 0) failed = true;
  if (!failed) return iStatus;
  std::cerr << "lumsess: cannot write the output"
            << (error != 0 ? std::string(": ") + std::strerror(error) : std::string()) << '.'
            << std::endl;
  return iStatus != kSuccess ? iStatus : kProblems;
}

}  // namespace
}  // namespace lumsess

// Nothing leaves main as an exception: building the command line can throw
// too, not only the command.
int main(int argc, char** argv) {
  lumsess::OpenStandardDescriptors();
  int status = lumsess::kSuccess;
  try {
    status = lumsess::Run(argc, argv);
  } catch (const lumsess::ExitRequest& request) {
    status = request.status;
  } catch (const std::exception& error) {
    std::cerr << "lumsess: unexpected failure: " << error.what() << std::endl;
    status = lumsess::kProblems;
  }
  return lumsess::FinishOutput(status);
}
