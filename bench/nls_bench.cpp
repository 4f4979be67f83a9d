// Costs of the translated display line and of the viewer catalogue, each next
// to a baseline measured in the same run:
//
//   - GetNLS of a Graph session file with French catalogues and a loaded
//     viewer catalogue, and with no catalogue file at all, against the same
//     line built from glibc dgettext lookups of a compiled .mo catalogue
//     (written with msgfmt in the benchmark's temporary directory), and
//     against building it by appending its fixed texts;
//   - where the time of a line without catalogues goes: one lookup of a
//     missing text (raised and caught), one found text, and the platform's
//     raise-and-catch of a catalogue error on its own;
//   - the first reading of a METHOD_LIST table of 1,000, 10,000 and 100,000
//     entries with many distinct objects (two viewers per object), against
//     reading the same keys with KORLumPool directly: the ratios of
//     successive sizes tell how the reading grows.
//
// The library reads its viewer catalogue once per load. To measure that first
// reading again and again, each iteration loads a private copy of the
// library (its own statics, all empty), asks it for its viewers and unloads
// it; the same loading and unloading without the reading is measured as its
// own baseline, so that the reading's cost is the difference of the two.
#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <libintl.h>
#include <stdlib.h>

#include <clocale>
#include <cstdlib>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>

#include "KORError.h"
#include "KORHUBTrace.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumPool.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileUtilities.h"
#include "KORMsgCatalog.h"
#include "MethodListFile.h"

#ifndef VX0SESS0_LIBRARY_FILE
#error "VX0SESS0_LIBRARY_FILE must name the built session-file library"
#endif

namespace {

namespace fs = std::filesystem;

// A configuration directory under /tmp with the platform's variables pointing
// at it; removed at the end of a benchmark.
class Configuration {
 public:
  Configuration() {
    std::string pattern = "/tmp/vx0sess0-nls-bench.XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    _path = pattern;
    for (const char* name : {"KOR_LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) ::unsetenv(name);
    fs::create_directories(_path + "/msgcatalog");
    fs::create_directories(_path + "/dcls");
    ::setenv("KOR_MSGCATALOG_PATH", (_path + "/msgcatalog").c_str(), 1);
    ::setenv("KOR_DCLS_PATH", (_path + "/dcls").c_str(), 1);
    KORHUBTrace::SetActive(0);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }
  ~Configuration() {
    std::error_code error;
    fs::remove_all(_path, error);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }
  Configuration(const Configuration&) = delete;
  Configuration& operator=(const Configuration&) = delete;

  [[nodiscard]] const std::string& Path() const { return _path; }

  void Write(const std::string& iRelative, const std::string& iContent) const {
    const fs::path path = _path + "/" + iRelative;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << iContent;
  }

  void SetLanguage(const char* iLanguage) const {
    ::setenv("KOR_LANGUAGE", iLanguage, 1);
    KORMsgCatalog::FlushCache();
  }

 private:
  std::string _path;
};

// --- The display line ---------------------------------------------------------

constexpr const char* kSessionPath = "/home/user/projects/engine/assemblies/model.hub";

// The viewer catalogue of the display benchmarks: three viewers, one skipped
// entry.
std::string SmallViewerCatalogue() {
  return MethodListFile()
      .Entry("HUB", "Tools", "Viewer3D", "Viewer3D", "Part")
      .Entry("Both", "Viewer", "Print", "Print", "Part")
      .Entry("Both", "Tools", "Drafting", "Drafting", "Drawing")
      .Entry("HUB", "Tools", "Inspector", "Inspector", "Part")
      .Text();
}

void WriteFrenchCatalogues(const Configuration& iConfiguration) {
  iConfiguration.SetLanguage("fr_FR.UTF-8");
  iConfiguration.Write("msgcatalog/fr/KORLumSessionFile.msgcat",
                       "TypeNone.Msg = Aucun\nTypeGraph.Msg = Graphe\nTypeQuery.Msg = Requête\n"
                       "LoadModeDynamic.Msg = Dynamique\nLoadModeStatic.Msg = Statique\n"
                       "InstanceModeAll.Msg = Toutes\nInstanceModeSelected.Msg = Sélection\n"
                       "OptionSeparator.Msg = \", \"\nOptionReport.Msg = Rapport\n"
                       "OptionModification.Msg = Modification\nOptionQuery.Msg = Requête\n"
                       "OptionCSB.Msg = CSB\nPart.Synonym = Pièce\nDrawing.Synonym = Plan\n");
  iConfiguration.Write("msgcatalog/fr/LumSessionFile.msgcat",
                       "FileNone.Msg = Aucun fichier\nViewerNone.Msg = Aucun visualiseur\n");
  iConfiguration.Write("msgcatalog/fr/KORDMToolsManager.msgcat",
                       "Viewer3D.Label = Visualiseur 3D\nDrafting.Label = Mise en plan\n"
                       "Inspector.Label = Inspecteur\n");
}

// The library reads its viewer catalogue once per load and keeps it, labels
// included, whatever the configuration of a later benchmark. So that every
// display benchmark sees the same catalogue, whichever runs first, it is read
// once here from the small table with its French labels.
void ReadViewerCatalogueOnce() {
  static const bool read = [] {
    Configuration configuration;
    configuration.Write("dcls/KORBRIX.dcls", SmallViewerCatalogue());
    WriteFrenchCatalogues(configuration);
    return KORLumSessionFileUtilities::GetViewers().Size() == 3;
  }();
  if (!read) throw std::runtime_error("the viewer catalogue of the display benchmarks is not read");
}

// The session file of the display benchmarks: Graph, a path that is shortened,
// a viewer of the catalogue, Dynamic, Selected, options Report and CSB.
KORLumSessionFile TypicalSessionFile() {
  return KORLumSessionFile(KORLumSessionFileType_Graph, kSessionPath, KORUnicodeString("Viewer3D"),
                           KORLumGraphSessionLoadMode_Dynamic,
                           KORLumGraphSessionInstanceMode_Selected,
                           KORLumSessionFileOption_Report | KORLumSessionFileOption_CSB);
}

// GetNLS in a steady state: catalogues and viewer catalogue read by a first
// call; stops the benchmark when the line is not the expected one.
void MeasureDisplayLine(benchmark::State& ioState, const char* iExpected) {
  const KORLumSessionFile file = TypicalSessionFile();
  if (std::string(file.GetNLS().ConvertToChar()) != iExpected) {
    ioState.SkipWithError("unexpected display line");
    return;
  }
  for (auto _ : ioState) {
    KORUnicodeString line = file.GetNLS();
    benchmark::DoNotOptimize(line);
  }
}

void DisplayLineTranslated(benchmark::State& ioState) {
  ReadViewerCatalogueOnce();
  Configuration configuration;
  WriteFrenchCatalogues(configuration);
  MeasureDisplayLine(ioState,
                     "Graphe : /home/user/projects/eng.../model.hub [Visualiseur 3D] [Dynamique] "
                     "[Sélection] [Rapport, CSB]");
}
BENCHMARK(DisplayLineTranslated);

// No catalogue file: each of the nine texts of the line is a missing text
// (the viewer's label is the one the library has kept since its reading).
void DisplayLineWithoutCatalogue(benchmark::State& ioState) {
  ReadViewerCatalogueOnce();
  Configuration configuration;
  MeasureDisplayLine(ioState,
                     "Graph : /home/user/projects/eng.../model.hub [Visualiseur 3D] [Dynamic] "
                     "[Selected] [R+C]");
}
BENCHMARK(DisplayLineWithoutCatalogue);

// Baseline: the same line appended piece by piece from fixed texts, in the
// library's string type.
void DisplayLineByConcatenation(benchmark::State& ioState) {
  for (auto _ : ioState) {
    KORUnicodeString line("Graphe");
    line.Append(KORUnicodeString(" : "));
    line.Append(KORUnicodeString("/home/user/projects/eng.../model.hub"));
    line.Append(KORUnicodeString(" ["));
    line.Append(KORUnicodeString("Visualiseur 3D"));
    line.Append(KORUnicodeString("] ["));
    line.Append(KORUnicodeString("Dynamique"));
    line.Append(KORUnicodeString("] ["));
    line.Append(KORUnicodeString("Sélection"));
    line.Append(KORUnicodeString("] ["));
    line.Append(KORUnicodeString("Rapport"));
    line.Append(KORUnicodeString(", "));
    line.Append(KORUnicodeString("CSB"));
    line.Append(KORUnicodeString("]"));
    benchmark::DoNotOptimize(line);
  }
}
BENCHMARK(DisplayLineByConcatenation);

// Baseline: the same French line built with glibc's gettext. The seven texts
// of the line (kind, viewer label, the two modes, the option separator and
// the two options) are looked up with dgettext in .mo catalogues compiled by
// msgfmt, and appended to a std::string with the shortened path.
class GettextCatalogues {
 public:
  GettextCatalogues() {
    WritePo("KORLumSessionFile", {{"TypeGraph.Msg", "Graphe"},
                                  {"LoadModeDynamic.Msg", "Dynamique"},
                                  {"InstanceModeSelected.Msg", "Sélection"},
                                  {"OptionSeparator.Msg", ", "},
                                  {"OptionReport.Msg", "Rapport"},
                                  {"OptionCSB.Msg", "CSB"}});
    WritePo("KORDMToolsManager", {{"Viewer3D.Label", "Visualiseur 3D"}});
    // dgettext translates only outside the C locale: C.UTF-8 with LANGUAGE
    // naming French (the catalogues are under fr/).
    _previousLocale = std::setlocale(LC_MESSAGES, nullptr);
    if (std::setlocale(LC_MESSAGES, "C.UTF-8") == nullptr) {
      throw std::runtime_error("the C.UTF-8 locale is missing");
    }
    ::setenv("LANGUAGE", "fr", 1);
    ::bindtextdomain("KORLumSessionFile", _configuration.Path().c_str());
    ::bindtextdomain("KORDMToolsManager", _configuration.Path().c_str());
    ::bind_textdomain_codeset("KORLumSessionFile", "UTF-8");
    ::bind_textdomain_codeset("KORDMToolsManager", "UTF-8");
  }
  ~GettextCatalogues() {
    ::unsetenv("LANGUAGE");
    std::setlocale(LC_MESSAGES, _previousLocale.c_str());
  }
  GettextCatalogues(const GettextCatalogues&) = delete;
  GettextCatalogues& operator=(const GettextCatalogues&) = delete;

 private:
  void WritePo(const std::string& iDomain,
               std::initializer_list<std::pair<const char*, const char*>> iMessages) {
    std::string po = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n";
    for (const auto& [key, text] : iMessages) {
      po += std::string("\nmsgid \"") + key + "\"\nmsgstr \"" + text + "\"\n";
    }
    const std::string directory = "fr/LC_MESSAGES/";
    _configuration.Write(directory + iDomain + ".po", po);
    const std::string stem = _configuration.Path() + "/" + directory + iDomain;
    const std::string command = "msgfmt -o '" + stem + ".mo' '" + stem + ".po'";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("msgfmt failed");
  }

  Configuration _configuration;
  std::string _previousLocale;
};

void DisplayLineWithDgettext(benchmark::State& ioState) {
  GettextCatalogues catalogues;
  const auto build = [] {
    std::string line = ::dgettext("KORLumSessionFile", "TypeGraph.Msg");
    line += " : ";
    line += "/home/user/projects/eng.../model.hub";
    line += " [";
    line += ::dgettext("KORDMToolsManager", "Viewer3D.Label");
    line += "] [";
    line += ::dgettext("KORLumSessionFile", "LoadModeDynamic.Msg");
    line += "] [";
    line += ::dgettext("KORLumSessionFile", "InstanceModeSelected.Msg");
    line += "] [";
    line += ::dgettext("KORLumSessionFile", "OptionReport.Msg");
    line += ::dgettext("KORLumSessionFile", "OptionSeparator.Msg");
    line += ::dgettext("KORLumSessionFile", "OptionCSB.Msg");
    line += "]";
    return line;
  };
  if (build() !=
      "Graphe : /home/user/projects/eng.../model.hub [Visualiseur 3D] [Dynamique] "
      "[Sélection] [Rapport, CSB]") {
    ioState.SkipWithError("dgettext did not translate the line");
    return;
  }
  for (auto _ : ioState) {
    std::string line = build();
    benchmark::DoNotOptimize(line);
  }
}
BENCHMARK(DisplayLineWithDgettext);

// --- Where the time of a line without catalogues goes ---------------------------
//
// The Graph line with options Report and CSB looks up nine texts: the kind,
// the two modes, and twice the options (once to decide on the option field,
// once to fill it), each time the separator and two letters.

void LookupOfAFoundText(benchmark::State& ioState) {
  Configuration configuration;
  WriteFrenchCatalogues(configuration);
  (void)KORLumSessionFileUtilities::GetNLSMessage("KORLumSessionFile", "TypeGraph.Msg", "");
  for (auto _ : ioState) {
    KORUnicodeString text =
        KORLumSessionFileUtilities::GetNLSMessage("KORLumSessionFile", "TypeGraph.Msg", "");
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(LookupOfAFoundText);

void LookupOfAMissingText(benchmark::State& ioState) {
  Configuration configuration;
  (void)KORLumSessionFileUtilities::GetNLSMessage("KORLumSessionFile", "TypeGraph.Msg", "");
  for (auto _ : ioState) {
    KORUnicodeString text =
        KORLumSessionFileUtilities::GetNLSMessage("KORLumSessionFile", "TypeGraph.Msg", "Graph");
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(LookupOfAMissingText);

// The platform's own part of a missing text: the catalogue search that fails
// and builds its diagnostic, raised and caught, without the library.
void PlatformLookupOfAMissingText(benchmark::State& ioState) {
  Configuration configuration;
  for (auto _ : ioState) {
    KORXHContext context;
    const int raised =
        context.Protect([] { (void)KORMsgCatalog("KORLumSessionFile").GetMsg("TypeGraph.Msg"); });
    context.Release();
    benchmark::DoNotOptimize(raised);
  }
}
BENCHMARK(PlatformLookupOfAMissingText);

// Raising a catalogue error with a fixed diagnostic and catching it: the
// cost of the raise itself (heap error, exception, unwinding, release).
void RaiseAndCatchOfACatalogueError(benchmark::State& ioState) {
  for (auto _ : ioState) {
    KORXHContext context;
    const int raised = context.Protect([] { KORRaise(new KORNLSCatalogError("catalogue error")); });
    context.Release();
    benchmark::DoNotOptimize(raised);
  }
}
BENCHMARK(RaiseAndCatchOfACatalogueError);

// --- First reading of a METHOD_LIST table of 1,000, 10,000 and 100,000 entries ---

// iEntries kept entries: viewers Viewer1, Viewer2, ..., two per object (so
// iEntries / 2 distinct objects), each with a label; every object with a
// synonym.
void WriteLargeViewerCatalogue(const Configuration& iConfiguration, int iEntries) {
  const int objects = iEntries / 2;
  MethodListFile table;
  std::string labels;
  std::string synonyms;
  for (int n = 1; n <= iEntries; ++n) {
    const std::string viewer = "Viewer" + std::to_string(n);
    const std::string object = "Object" + std::to_string(n % objects);
    table.Entry(n % 2 == 0 ? "HUB" : "Both", "Tools", viewer.c_str(), ("Tag" + viewer).c_str(),
                object.c_str());
    labels += "Tag" + viewer + ".Label = Label of " + viewer + "\n";
  }
  for (int i = 0; i < objects; ++i) {
    synonyms += "Object" + std::to_string(i) + ".Synonym = Synonym " + std::to_string(i) + "\n";
  }
  iConfiguration.Write("dcls/KORBRIX.dcls", table.Text());
  iConfiguration.Write("msgcatalog/KORDMToolsManager.msgcat", labels);
  iConfiguration.Write("msgcatalog/KORLumSessionFile.msgcat", synonyms);
}

// A private copy of the library, loaded and unloaded on demand: each load
// starts with every static of the library empty.
class FreshLibrary {
 public:
  explicit FreshLibrary(const Configuration& iConfiguration)
      : _path(iConfiguration.Path() + "/libVX0SESS0-fresh.so") {
    fs::copy_file(VX0SESS0_LIBRARY_FILE, _path, fs::copy_options::overwrite_existing);
  }

  // Loads the copy; its own symbols are bound inside it first.
  bool Load() {
    _handle = ::dlopen(_path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    return _handle != nullptr;
  }
  using ViewersOperation = KORListValKORUnicodeString (*)();
  // The copy's KORLumSessionFileUtilities::GetViewers(), or null.
  [[nodiscard]] ViewersOperation GetViewers() const {
    return reinterpret_cast<ViewersOperation>(
        ::dlsym(_handle, "_ZN26KORLumSessionFileUtilities10GetViewersEv"));
  }
  // Unloads the copy; true when it is really gone from the process.
  bool Unload() {
    ::dlclose(_handle);
    _handle = nullptr;
    return ::dlopen(_path.c_str(), RTLD_NOW | RTLD_NOLOAD) == nullptr;
  }

 private:
  std::string _path;
  void* _handle = nullptr;
};

void ViewerCatalogueFirstReadWithLoadAndUnload(benchmark::State& ioState) {
  const int entries = static_cast<int>(ioState.range(0));
  Configuration configuration;
  WriteLargeViewerCatalogue(configuration, entries);

  FreshLibrary library(configuration);
  for (auto _ : ioState) {
    // Every reading parses the declaration file again, as a first call does.
    KORLumPool::FlushCache();
    if (!library.Load() || library.GetViewers() == nullptr) {
      ioState.SkipWithError("the copy of the library cannot be loaded");
      return;
    }
    const KORListValKORUnicodeString viewers = library.GetViewers()();
    if (viewers.Size() != entries) {
      ioState.SkipWithError("the copy did not read the whole table");
      return;
    }
    if (!library.Unload()) {
      ioState.SkipWithError("the copy stays loaded: its statics would not start empty");
      return;
    }
  }
  ioState.SetItemsProcessed(static_cast<int64_t>(ioState.iterations()) * entries);
}
BENCHMARK(ViewerCatalogueFirstReadWithLoadAndUnload)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

// Baseline of the previous one: the same loading and unloading, without
// reading.
void LoadAndUnloadOnly(benchmark::State& ioState) {
  const int entries = static_cast<int>(ioState.range(0));
  Configuration configuration;
  WriteLargeViewerCatalogue(configuration, entries);

  FreshLibrary library(configuration);
  for (auto _ : ioState) {
    KORLumPool::FlushCache();
    if (!library.Load()) {
      ioState.SkipWithError("the copy of the library cannot be loaded");
      return;
    }
    if (!library.Unload()) {
      ioState.SkipWithError("the copy stays loaded");
      return;
    }
  }
}
BENCHMARK(LoadAndUnloadOnly)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

// Baseline: the same file loaded and its keys read with KORLumPool directly,
// as the library reads them (five keys per entry, then the missing WHERE).
void MethodListReadWithThePool(benchmark::State& ioState) {
  const int entries = static_cast<int>(ioState.range(0));
  Configuration configuration;
  WriteLargeViewerCatalogue(configuration, entries);

  static constexpr const char* kFields[] = {"WHERE", "ROLE", "COMMAND", "TAG", "KORAB"};
  for (auto _ : ioState) {
    KORLumPool::FlushCache();
    if (KORLumPool::LoadPool("KORBRIX") != 0) {
      ioState.SkipWithError("KORBRIX cannot be loaded");
      return;
    }
    int found = 0;
    int status = 0;
    for (int n = 1; n <= entries + 1; ++n) {
      const std::string stem = "KORBRIX.METHOD_LIST(" + std::to_string(n) + ").";
      for (const char* field : kFields) {
        KORUnicodeString value = KORLumPool::GetStringDec((stem + field).c_str(), status);
        benchmark::DoNotOptimize(value);
        if (status != 0) break;
        ++found;
      }
    }
    if (found != entries * 5) {
      ioState.SkipWithError("the pool did not give every key");
      return;
    }
  }
  ioState.SetItemsProcessed(static_cast<int64_t>(ioState.iterations()) * entries);
}
BENCHMARK(MethodListReadWithThePool)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
