#include "Configuration.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "KORGetEnv.h"
#include "KORHUBTrace.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"

namespace fs = std::filesystem;

namespace lumsess {

namespace {

ConfigurationSource gSource;

const char* const kVariables[] = {"KOR_DCLS_PATH", "KOR_MSGCATALOG_PATH", "KOR_ADMIN_SETTINGS"};

bool IsDirectory(const fs::path& iPath) {
  std::error_code error;
  return fs::is_directory(iPath, error);
}

// The directory of the running program, or empty when it cannot be known.
fs::path ProgramDirectory() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) return fs::path();
  return program.parent_path();
}

// The bundled sample configuration, or empty when none can be found.
std::string BundledDirectory() {
  const fs::path program = ProgramDirectory();
  if (!program.empty()) {
    const fs::path installed = (program / LUMSESS_DATADIR_FROM_BINDIR).lexically_normal();
    if (IsDirectory(installed / "dcls")) return installed.string();
  }
  if (IsDirectory(fs::path(LUMSESS_SOURCE_CONFIG) / "dcls")) return LUMSESS_SOURCE_CONFIG;
  if (IsDirectory(fs::path(LUMSESS_INSTALLED_CONFIG) / "dcls")) return LUMSESS_INSTALLED_CONFIG;
  return std::string();
}

void Set(const char* iName, const std::string& iValue) { ::setenv(iName, iValue.c_str(), 1); }

void UseDirectory(const std::string& iDirectory) {
  Set("KOR_DCLS_PATH", (fs::path(iDirectory) / "dcls").string());
  Set("KOR_MSGCATALOG_PATH", (fs::path(iDirectory) / "msgcatalog").string());
  Set("KOR_ADMIN_SETTINGS", (fs::path(iDirectory) / "admin.settings").string());
  Set("LUMSESS_CONFIG", iDirectory);
}

// The variable that gives the language, as the catalogues choose it.
std::string LanguageVariable() { return Text(KORMsgCatalog::GetLanguageVariable()); }

}  // namespace

void ApplyConfiguration(const GlobalOptions& iGlobal) {
  if (!iGlobal.language.empty()) Set("KOR_LANGUAGE", iGlobal.language);
  if (iGlobal.trace) {
    KORHUBTrace::SetOutput(&std::cerr);
    KORHUBTrace::SetActive(1);
  }

  if (!iGlobal.config.empty()) {
    std::error_code error;
    const fs::path directory = fs::weakly_canonical(fs::absolute(iGlobal.config), error);
    if (error || !fs::exists(directory)) {
      ReportError(kUsage, "the configuration directory " + Quote(iGlobal.config) +
                              " given with --config does not exist.");
    }
    if (!IsDirectory(directory)) {
      ReportError(kUsage, "the configuration " + Quote(iGlobal.config) +
                              " given with --config is not a directory.");
    }
    gSource = {ConfigurationSource::kOption, directory.string()};
    UseDirectory(gSource.directory);
    return;
  }

  for (const char* name : kVariables) {
    if (KORGetEnv(name) != nullptr) {
      gSource = {ConfigurationSource::kEnvironment, std::string()};
      return;
    }
  }

  const std::string bundled = BundledDirectory();
  if (bundled.empty()) {
    // Nothing to point at: the platform searches its installed directories.
    gSource = {ConfigurationSource::kEnvironment, std::string()};
    return;
  }
  gSource = {ConfigurationSource::kBundled, bundled};
  UseDirectory(bundled);
}

const ConfigurationSource& CurrentConfiguration() { return gSource; }

const KORListValKORUnicodeString& ToolCatalogueDirectories() {
  static const KORListValKORUnicodeString directories = [] {
    KORListValKORUnicodeString list;
    const std::string bundled = BundledDirectory();
    if (!bundled.empty()) list.Append((fs::path(bundled) / "msgcatalog").string().c_str());
    return list;
  }();
  return directories;
}

Json DescribeConfiguration() {
  Json description;
  switch (gSource.kind) {
    case ConfigurationSource::kOption:
      description["source"] = "option";
      description["directory"] = gSource.directory;
      break;
    case ConfigurationSource::kBundled:
      description["source"] = "bundled";
      description["directory"] = gSource.directory;
      break;
    case ConfigurationSource::kEnvironment:
      description["source"] = "environment";
      description["directory"] = nullptr;
      break;
  }
  description["declaration_path"] = Texts(KORLumPool::GetSearchPath());
  description["catalogue_path"] = Texts(KORMsgCatalog::GetSearchPath());
  std::vector<std::string> levels = Texts(KORMsgCatalog::GetLanguageLevels());
  const std::string variable = LanguageVariable();
  description["language_variable"] = variable.empty() ? Json(nullptr) : Json(variable);
  description["language"] =
      variable.empty() ? std::string() : std::string(KORGetEnv(variable.c_str()));
  description["language_levels"] = levels;
  const char* settings = KORGetEnv("KOR_ADMIN_SETTINGS");
  if (settings == nullptr) {
    description["settings_file"] = nullptr;
    description["settings_state"] = "unset";
  } else {
    description["settings_file"] = settings;
    std::error_code error;
    if (!fs::exists(settings, error)) {
      description["settings_state"] = "absent";
    } else if (::access(settings, R_OK) != 0 || !fs::is_regular_file(settings, error)) {
      description["settings_state"] = "unreadable";
    } else {
      description["settings_state"] = "readable";
    }
  }
  return description;
}

void PrintConfiguration(const Json& iDescription) {
  const std::string source = iDescription["source"];
  const std::string labels[] = {Say("Source", "Source"), Say("Declarations", "Declarations"),
                                Say("Catalogues", "Catalogues"), Say("Language", "Language"),
                                Say("Settings", "Settings")};
  const std::size_t width = ColumnWidth({std::begin(labels), std::end(labels)});
  std::cout << Say("Configuration", "Configuration") << '\n';
  std::cout << "  " << Pad(labels[0], width);
  if (source == "bundled") {
    std::cout << Say("Source.Bundled", "bundled sample configuration in {1}",
                     {iDescription["directory"].get<std::string>()});
  } else if (source == "option") {
    std::cout << "--config " << iDescription["directory"].get<std::string>();
  } else {
    std::cout << Say("Source.Environment", "environment variables");
  }
  std::cout << '\n';
  std::cout << "  " << Pad(labels[1], width)
            << Join(iDescription["declaration_path"].get<std::vector<std::string>>(), ":") << '\n';
  std::cout << "  " << Pad(labels[2], width)
            << Join(iDescription["catalogue_path"].get<std::vector<std::string>>(), ":") << '\n';
  std::vector<std::string> levels;
  for (const std::string& level : iDescription["language_levels"].get<std::vector<std::string>>()) {
    levels.push_back(level.empty() ? Say("Language.Default", "default texts") : level);
  }
  std::string language = Join(levels, Say("Language.Then", ", then "));
  if (!iDescription["language_variable"].is_null()) {
    language += " (" + iDescription["language_variable"].get<std::string>() + "=" +
                iDescription["language"].get<std::string>() + ")";
  }
  std::cout << "  " << Pad(labels[3], width) << language << '\n';
  std::cout << "  " << Pad(labels[4], width);
  if (iDescription["settings_file"].is_null()) {
    std::cout << Say("Settings.Unset", "none (KOR_ADMIN_SETTINGS is not set)") << '\n';
  } else {
    const std::string state = iDescription["settings_state"];
    std::cout << iDescription["settings_file"].get<std::string>();
    if (state == "absent") std::cout << ' ' << Say("Settings.Absent", "(no such file)");
    if (state == "unreadable") std::cout << ' ' << Say("Settings.Unreadable", "(cannot be read)");
    std::cout << '\n';
  }
}

}  // namespace lumsess
