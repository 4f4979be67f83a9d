// lumsess show: one session file as the user sees it (the translated display
// line) and as traces and logs write it (the untranslated string form).
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>

#include <CLI/CLI.hpp>

#include "KORLumSessionFile.h"
#include "KORLumSessionFileType.h"
#include "KORLumViewerDef.h"
#include "Lumsess.h"

namespace lumsess {

namespace {

// Every member starts empty, so that the options, built before main, cannot
// throw there; SetupShow puts the default type.
struct ShowOptions {
  std::string type;
  std::string file;
  std::string viewer;
  std::string viewerDef;
  std::string loadMode;
  std::string instanceMode;
  std::string options;
};
ShowOptions gOptions;

std::string Lower(std::string iText) {
  std::transform(iText.begin(), iText.end(), iText.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return iText;
}

// The value that iValue names in iNames, matched by CLI11's CheckedTransformer
// ignoring case (which also takes the value's number, as --json writes it);
// ends the command with iProblem when iValue names none.
template <typename Enumeration>
Enumeration ParseEnumeration(const std::string& iValue,
                             const std::map<std::string, Enumeration>& iNames,
                             const std::string& iProblem) {
  std::string value = iValue;  // becomes the number of the value named
  if (!CLI::CheckedTransformer(iNames, CLI::ignore_case)(value).empty()) {
    ReportError(kUsage, iProblem);
  }
  return static_cast<Enumeration>(std::stoi(value));
}

_KORLumSessionFileType ParseType(const std::string& iValue) {
  static const std::map<std::string, _KORLumSessionFileType> kNames = {
      {"graph", KORLumSessionFileType_Graph},
      {"query", KORLumSessionFileType_Query},
      {"none", KORLumSessionFileType_None}};
  return ParseEnumeration(
      iValue, kNames,
      "unknown --type value " + Quote(iValue) + "; the accepted values are graph, query and none.");
}

_KORLumGraphSessionLoadMode ParseLoadMode(const std::string& iValue) {
  static const std::map<std::string, _KORLumGraphSessionLoadMode> kNames = {
      {"dynamic", KORLumGraphSessionLoadMode_Dynamic},
      {"static", KORLumGraphSessionLoadMode_Static}};
  if (iValue.empty()) return KORLumGraphSessionLoadMode_None;  // the library puts Dynamic
  return ParseEnumeration(iValue, kNames,
                          "unknown --load-mode value " + Quote(iValue) +
                              "; the accepted values are dynamic and static.");
}

_KORLumGraphSessionInstanceMode ParseInstanceMode(const std::string& iValue) {
  static const std::map<std::string, _KORLumGraphSessionInstanceMode> kNames = {
      {"all", KORLumGraphSessionInstanceMode_All},
      {"selected", KORLumGraphSessionInstanceMode_Selected}};
  if (iValue.empty()) return KORLumGraphSessionInstanceMode_None;  // the library puts All
  return ParseEnumeration(iValue, kNames,
                          "unknown --instance-mode value " + Quote(iValue) +
                              "; the accepted values are all and selected.");
}

// "report,modification,query,csb" (any of them, in any order) or a number
// (decimal, or hexadecimal with 0x) of at most 32 bits.
unsigned long ParseOptions(const std::string& iValue) {
  if (iValue.empty()) return 0;
  if (std::isdigit(static_cast<unsigned char>(iValue[0]))) {
    errno = 0;
    char* end = nullptr;
    // A leading 0 does not make the number octal: 012 is twelve.
    const bool hexadecimal = iValue.size() > 1 && (iValue[1] == 'x' || iValue[1] == 'X');
    const unsigned long long number = std::strtoull(iValue.c_str(), &end, hexadecimal ? 16 : 10);
    if (errno != 0 || *end != '\0' || number > 0xFFFFFFFFULL) {
      ReportError(kUsage, "the --options value " + Quote(iValue) +
                              " is not a number from 0 to 4294967295 (0xFFFFFFFF).");
    }
    return static_cast<unsigned long>(number);
  }
  unsigned long options = 0;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = iValue.find(',', start);
    const std::string name =
        Lower(iValue.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
    if (name == "report") {
      options |= KORLumSessionFileOption_Report;
    } else if (name == "modification") {
      options |= KORLumSessionFileOption_Modification;
    } else if (name == "query") {
      options |= KORLumSessionFileOption_Query;
    } else if (name == "csb") {
      options |= KORLumSessionFileOption_CSB;
    } else {
      ReportError(kUsage, "unknown option " + Quote(name) + " in --options " + Quote(iValue) +
                              "; the accepted options are report, modification, query and "
                              "csb, separated by commas, or a number.");
    }
    if (comma == std::string::npos) break;
    start = comma + 1;
  }
  return options;
}

}  // namespace

CLI::App* SetupShow(CLI::App& ioApp) {
  CLI::App* command = ioApp.add_subcommand(
      "show", "Show one session file's display line and its untranslated string form");
  gOptions.type = "graph";  // the default, which --help shows
  command->add_option("--type", gOptions.type, "Kind of session file: graph, query or none")
      ->type_name("KIND")
      ->capture_default_str();
  command->add_option("--file", gOptions.file, "The session file's path")->type_name("FILE");
  CLI::Option* viewer = command->add_option("--viewer", gOptions.viewer, "The viewer, by its name")
                            ->type_name("VIEWER");
  CLI::Option* viewerDef = command
                               ->add_option("--viewer-def", gOptions.viewerDef,
                                            "The viewer, as OBJECT.VIEWER (a viewer definition)")
                               ->type_name("OBJECT.VIEWER");
  viewer->excludes(viewerDef);
  command
      ->add_option("--load-mode", gOptions.loadMode,
                   "dynamic or static (default: the session file's default, dynamic)")
      ->type_name("MODE");
  command
      ->add_option("--instance-mode", gOptions.instanceMode,
                   "all or selected (default: the session file's default, all)")
      ->type_name("MODE");
  command
      ->add_option("--options", gOptions.options,
                   "Option bits: report,modification,query,csb (comma-separated) or a number")
      ->type_name("BITS");
  return command;
}

int RunShow(const GlobalOptions& iGlobal) {
  const _KORLumSessionFileType type = ParseType(gOptions.type);
  const _KORLumGraphSessionLoadMode loadMode = ParseLoadMode(gOptions.loadMode);
  const _KORLumGraphSessionInstanceMode instanceMode = ParseInstanceMode(gOptions.instanceMode);
  const unsigned long options = ParseOptions(gOptions.options);

  KORLumSessionFile file;
  if (!gOptions.viewerDef.empty()) {
    const std::size_t dot = gOptions.viewerDef.find('.');
    if (dot == std::string::npos || dot == 0 || dot + 1 == gOptions.viewerDef.size()) {
      ReportError(kUsage, "the --viewer-def value " + Quote(gOptions.viewerDef) +
                              " is not of the form OBJECT.VIEWER.");
    }
    const KORLumViewerDef def(gOptions.viewerDef.substr(0, dot).c_str(),
                              gOptions.viewerDef.substr(dot + 1).c_str());
    file = KORLumSessionFile(type, gOptions.file.c_str(), def, loadMode, instanceMode, options);
  } else {
    file = KORLumSessionFile(type, gOptions.file.c_str(), gOptions.viewer.c_str(), loadMode,
                             instanceMode, options);
  }

  const std::string display = Text(file.GetNLS());
  const std::string form = Text(file.ConvertToString());
  if (iGlobal.json) {
    const KORLumViewerDef& def = file.GetViewerDef();
    PrintJson(
        {{"display", display},
         {"string", form},
         {"type", static_cast<int>(file.GetType())},
         {"file", Text(file.GetFile())},
         {"viewer", Text(file.GetViewer())},
         {"viewer_def", {{"object", Text(def.GetObject())}, {"viewer", Text(def.GetViewer())}}},
         {"load_mode", static_cast<int>(file.GetLoadMode())},
         {"instance_mode", static_cast<int>(file.GetInstanceMode())},
         {"options", file.GetOption()}});
  } else {
    const std::string displayLabel = Say("Show.Display", "Display line");
    const std::string formLabel = Say("Show.String", "String form");
    const std::size_t width = ColumnWidth({displayLabel, formLabel});
    std::cout << Pad(displayLabel, width) << display << '\n';
    std::cout << Pad(formLabel, width) << form << '\n';
  }
  return kSuccess;
}

}  // namespace lumsess
