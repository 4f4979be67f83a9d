// lumsess: which configuration the tool uses, and how it tells the platform.
//
// A configuration directory holds dcls/ (declaration resources), msgcatalog/
// (message catalogues) and admin.settings (administrator settings). The tool
// picks one, in this order:
//   1. --config DIR;
//   2. the environment, when any of KOR_DCLS_PATH, KOR_MSGCATALOG_PATH or
//      KOR_ADMIN_SETTINGS is set (used exactly as it is);
//   3. the bundled sample configuration: share/VX0SESS0 beside the installed
//      tool, else the source tree's resources/ for a tool run from its build
//      tree, else the configured installation directory.
// For 1 and 3 it sets the three variables to the directory's parts, and
// LUMSESS_CONFIG to the directory itself, so that declared paths such as
// ${LUMSESS_CONFIG}/sessions/graphs point into it.
#ifndef LUMSESS_CONFIGURATION_H
#define LUMSESS_CONFIGURATION_H

#include <string>

#include <nlohmann/json.hpp>

#include "Lumsess.h"

namespace lumsess {

struct ConfigurationSource {
  enum Kind { kOption, kEnvironment, kBundled };
  Kind kind = kEnvironment;
  std::string directory;  // the configuration directory (empty for kEnvironment)
};

// Chooses the configuration, sets the variables and the language (--lang sets
// KOR_LANGUAGE) and switches tracing on for --trace. Must run before the
// library is used. A --config directory that does not exist is a usage error.
void ApplyConfiguration(const GlobalOptions& iGlobal);

// The configuration chosen by ApplyConfiguration.
const ConfigurationSource& CurrentConfiguration();

// Where the tool's own catalogue ("lumsess", its headings and labels) is:
// the msgcatalog directory of the bundled configuration, whatever
// configuration the tool reads, so that --config keeps them translated.
const KORListValKORUnicodeString& ToolCatalogueDirectories();

// How the configuration in use reads: where it comes from, the declaration and
// catalogue search paths, the language chain and the settings file.
Json DescribeConfiguration();
void PrintConfiguration(const Json& iDescription);

}  // namespace lumsess

#endif
