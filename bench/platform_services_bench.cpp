// Costs of the platform services as the session-file library uses them: a
// cached message lookup through a fresh catalogue object, a lookup of a key
// that no file declares (raised and caught), a declaration lookup, and the
// first load of a catalogue of 100,000 keys; RemoveDuplicates on lists of
// 100 and 1,000 viewer names (with their copy, the baseline).
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "KORError.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"

namespace {

// A configuration directory under /tmp, removed at the end of a benchmark.
class Configuration {
 public:
  Configuration() {
    std::string pattern = "/tmp/vx0sess0-bench.XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    _path = pattern;
    ::unsetenv("KOR_LANGUAGE");
    ::unsetenv("LC_ALL");
    ::unsetenv("LC_MESSAGES");
    ::setenv("LANG", "fr_FR.UTF-8", 1);
    ::setenv("KOR_MSGCATALOG_PATH", (_path + "/msgcatalog").c_str(), 1);
    ::setenv("KOR_DCLS_PATH", (_path + "/dcls").c_str(), 1);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }
  ~Configuration() {
    std::error_code error;
    std::filesystem::remove_all(_path, error);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }
  Configuration(const Configuration&) = delete;
  Configuration& operator=(const Configuration&) = delete;

  void Write(const std::string& iRelative, const std::string& iContent) const {
    const std::filesystem::path path = _path + "/" + iRelative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << iContent;
  }

 private:
  std::string _path;
};

// The session-file catalogue in its default and French files.
void WriteSessionCatalogue(const Configuration& iConfiguration) {
  iConfiguration.Write("msgcatalog/KORLumSessionFile.msgcat",
                       "TypeGraph.Msg = Graph\nTypeQuery.Msg = Query\nTypeNone.Msg = None\n"
                       "LoadModeDynamic.Msg = Dynamic\nLoadModeStatic.Msg = Static\n"
                       "OptionSeparator.Msg = +\n");
  iConfiguration.Write("msgcatalog/fr/KORLumSessionFile.msgcat",
                       "TypeGraph.Msg = Graphe\nTypeQuery.Msg = Requête\nTypeNone.Msg = Aucun\n");
}

void CachedLookupThroughAFreshCatalogue(benchmark::State& ioState) {
  Configuration configuration;
  WriteSessionCatalogue(configuration);
  {
    KORMsgCatalog warm("KORLumSessionFile");
    (void)warm.GetMsg("TypeGraph.Msg");
  }
  for (auto _ : ioState) {
    KORMsgCatalog* catalog = new KORMsgCatalog("KORLumSessionFile");
    KORMsg msg = catalog->GetMsg("TypeGraph.Msg");
    KORUnicodeString text;
    msg.BuildMessage(&text);
    delete catalog;
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(CachedLookupThroughAFreshCatalogue);

void MissedKeyRaisedAndCaught(benchmark::State& ioState) {
  Configuration configuration;
  WriteSessionCatalogue(configuration);
  for (auto _ : ioState) {
    KORMsgCatalog* catalog = new KORMsgCatalog("KORLumSessionFile");
    KORUnicodeString text;
    KORXHContext context;
    if (context.Protect([&] { catalog->GetMsg("Missing.Msg").BuildMessage(&text); })) {
      if (context.IsKindOf(KORNLSCatalogError::ClassName())) {
        text = "default";
        context.Release();
      } else {
        context.Raise();
      }
    }
    delete catalog;
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(MissedKeyRaisedAndCaught);

void DeclarationLookup(benchmark::State& ioState) {
  Configuration configuration;
  std::string table;
  for (int n = 1; n <= 20; ++n) {
    const std::string entry = "KORBRIX.METHOD_LIST(" + std::to_string(n) + ").";
    table += entry + "WHERE = HUB\n" + entry + "ROLE = Tools\n" + entry + "COMMAND = Viewer" +
             std::to_string(n) + "\n" + entry + "TAG = Tag" + std::to_string(n) + "\n" + entry +
             "KORAB = Part\n";
  }
  configuration.Write("dcls/KORBRIX.dcls", table);
  if (KORLumPool::LoadPool("KORBRIX") != 0) {
    ioState.SkipWithError("KORBRIX.dcls could not be loaded");
    return;
  }
  const KORUnicodeString key("KORBRIX.METHOD_LIST(13).COMMAND");
  for (auto _ : ioState) {
    int status = 1;
    KORUnicodeString value = KORLumPool::GetStringDec(key, status);
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(status);
  }
}
BENCHMARK(DeclarationLookup);

void FirstLoadOfACatalogueOf100000Keys(benchmark::State& ioState) {
  Configuration configuration;
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    text += "Generated.Key" + std::to_string(i) + ".Msg = Message number " + std::to_string(i) +
            " of the generated catalogue\n";
  }
  configuration.Write("msgcatalog/Large.msgcat", text);
  ::setenv("LANG", "C", 1);
  for (auto _ : ioState) {
    KORMsgCatalog::FlushCache();
    KORMsgCatalog catalog("Large");
    KORUnicodeString message;
    catalog.GetMsg("Generated.Key99999.Msg").BuildMessage(&message);
    benchmark::DoNotOptimize(message);
  }
  ioState.SetBytesProcessed(static_cast<int64_t>(ioState.iterations()) *
                            static_cast<int64_t>(text.size()));
}
BENCHMARK(FirstLoadOfACatalogueOf100000Keys)->Unit(benchmark::kMillisecond);

// iSize viewer names, every name twice: "Viewer0", "Viewer1", ...,
// "Viewer<iSize/2 - 1>", then the same names again.
KORListValKORUnicodeString ViewerNames(int iSize) {
  KORListValKORUnicodeString names;
  for (int i = 0; i < iSize; ++i) {
    names.Append(KORUnicodeString(("Viewer" + std::to_string(i % (iSize / 2))).c_str()));
  }
  return names;
}

// Each iteration copies the list and removes the duplicates of the copy.
void RemoveDuplicatesOfViewerNames(benchmark::State& ioState) {
  const int size = static_cast<int>(ioState.range(0));
  const KORListValKORUnicodeString names = ViewerNames(size);
  for (auto _ : ioState) {
    KORListValKORUnicodeString copy = names;
    const int removed = copy.RemoveDuplicates();
    if (removed != size / 2) {
      ioState.SkipWithError("RemoveDuplicates removed a wrong count");
      return;
    }
    benchmark::DoNotOptimize(copy);
  }
  ioState.SetItemsProcessed(static_cast<int64_t>(ioState.iterations()) * size);
}
BENCHMARK(RemoveDuplicatesOfViewerNames)->Arg(100)->Arg(1000);

// Baseline: the copy alone.
void CopyOfViewerNames(benchmark::State& ioState) {
  const KORListValKORUnicodeString names = ViewerNames(static_cast<int>(ioState.range(0)));
  for (auto _ : ioState) {
    KORListValKORUnicodeString copy = names;
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(CopyOfViewerNames)->Arg(100)->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
