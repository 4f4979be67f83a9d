// lumsess: shared declarations of the command-line tool.
//
// main.cpp builds the command line and dispatches to one command; each
// command lives in a file of its own with a setup function (its options) and
// a run function (its work). Errors go through ReportError, which prints one
// sentence on standard error and ends the command with its exit status.
#ifndef LUMSESS_LUMSESS_H
#define LUMSESS_LUMSESS_H

#include <cstddef>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "KORListValKORUnicodeString.h"
#include "KORUnicodeString.h"

namespace CLI {
class App;
}

namespace lumsess {

// JSON documents keep their members in the order they were written.
using Json = nlohmann::ordered_json;

// Exit statuses of the tool.
enum ExitStatus : int {
  kSuccess = 0,   // done
  kProblems = 1,  // the command ran and found problems (or an unknown object, ...)
  kUsage = 2      // the command line was wrong
};

// The options that apply to every command.
struct GlobalOptions {
  std::string language;  // --lang: empty when not given
  std::string config;    // --config: empty when not given
  bool trace = false;    // --trace
  bool json = false;     // --json
};

// Thrown by ReportError and caught by main, which returns the status: the
// stack unwinds, so every object is released normally.
struct ExitRequest {
  int status;
};

// Prints "lumsess: <sentence>" on standard error and ends the command with
// iStatus. The sentence names what was wrong and ends with a full stop.
[[noreturn]] void ReportError(ExitStatus iStatus, const std::string& iSentence);

// --- Text helpers -----------------------------------------------------------------

// The UTF-8 text of a platform string.
std::string Text(const KORUnicodeString& iString);
// The UTF-8 texts of a platform string list, in order.
std::vector<std::string> Texts(const KORListValKORUnicodeString& iList);
// iText followed by blanks up to iWidth characters (code points); at least
// one blank when iText is as wide or wider.
std::string Pad(const std::string& iText, std::size_t iWidth);
// The number of code points of a UTF-8 text.
std::size_t Width(const std::string& iText);
// The items joined by iSeparator.
std::string Join(const std::vector<std::string>& iItems, const std::string& iSeparator);
// iText between double quotes.
std::string Quote(const std::string& iText);
// The tool's own text under iKey in the "lumsess" message catalogue, in the
// user's language, with "{1}", "{2}", ... replaced by iParameters; iEnglish
// (with the same replacements) when the catalogue or the key is missing.
std::string Say(const char* iKey, const char* iEnglish,
                const std::vector<std::string>& iParameters = {});
// The widest of the texts, in characters, plus two blanks.
std::size_t ColumnWidth(const std::vector<std::string>& iTexts);
// Writes a JSON document on standard output, indented, with a final newline.
void PrintJson(const Json& iDocument);

// --- Commands ------------------------------------------------------------------------
// Each Setup function adds its subcommand and options to the application and
// returns the subcommand; each Run function does the work and returns the exit
// status.

int RunOverview(const GlobalOptions& iGlobal);

CLI::App* SetupPaths(CLI::App& ioApp);
int RunPaths(const GlobalOptions& iGlobal);

CLI::App* SetupViewers(CLI::App& ioApp);
int RunViewers(const GlobalOptions& iGlobal);

CLI::App* SetupShow(CLI::App& ioApp);
int RunShow(const GlobalOptions& iGlobal);

CLI::App* SetupList(CLI::App& ioApp);
int RunList(const GlobalOptions& iGlobal);

CLI::App* SetupCheck(CLI::App& ioApp);
int RunCheck(const GlobalOptions& iGlobal);

CLI::App* SetupPo(CLI::App& ioApp);
int RunPo(const GlobalOptions& iGlobal);

}  // namespace lumsess

#endif
