// lumsess viewers [OBJECT]: the objects of the viewer catalogue with their
// translated names and, for each, its viewers with their translated labels.
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "Facts.h"
#include "Lumsess.h"

namespace lumsess {

namespace {
std::string gObject;  // the OBJECT argument; empty for all objects
}

CLI::App* SetupViewers(CLI::App& ioApp) {
  CLI::App* command = ioApp.add_subcommand(
      "viewers", "Show the objects of the viewer catalogue and the viewers of each");
  command
      ->add_option("OBJECT", gObject,
                   "Show this object's viewers only (its name or its translated name)")
      ->type_name("");
  return command;
}

int RunViewers(const GlobalOptions& iGlobal) {
  std::vector<ObjectFact> objects = GatherViewers();
  if (!gObject.empty()) {
    std::vector<ObjectFact> chosen;
    // The object's own name first, then its translated name.
    for (const ObjectFact& object : objects) {
      if (!object.name.empty() && object.name == gObject) chosen.push_back(object);
    }
    if (chosen.empty()) {
      for (const ObjectFact& object : objects) {
        if (!object.name.empty() && object.label == gObject) chosen.push_back(object);
      }
    }
    if (chosen.empty()) {
      std::vector<std::string> known;
      for (const ObjectFact& object : objects) {
        if (!object.name.empty()) known.push_back(object.name);
      }
      ReportError(kProblems, "the viewer catalogue has no object " + Quote(gObject) +
                                 (known.empty() ? std::string("; it is empty.")
                                                : "; its objects are " + Join(known, ", ") + "."));
    }
    objects = std::move(chosen);
  }
  if (iGlobal.json) {
    PrintJson(ToJson(objects));
  } else {
    Print(objects);
  }
  return kSuccess;
}

}  // namespace lumsess
