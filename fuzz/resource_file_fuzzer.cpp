// Fuzz target: the resource-file parser, reached three ways with the same
// bytes — parsed from memory, loaded as the declaration resource FUZZ through
// KORLumPool, and loaded as the default-language message catalogue FUZZ
// through KORMsgCatalog.
//
// Invariants, for any bytes:
//   - every key the parser reports is non-empty, holds no blank, '=', line
//     feed or NUL, is reported once, and is found again with a value of valid UTF-8;
//   - every problem is "<file>:<line>: <reason>" with 1 <= line <= the number
//     of lines of the file, in line order;
//   - loading the file from disk gives exactly what parsing it from memory
//     gives (one parser);
//   - the declaration pool and the message catalogue hand out, for every key,
//     the parser's value (the catalogue never raises for a declared key).

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "FuzzInvariants.h"
#include "KORError.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"
#include "KORResourceFile.h"

namespace {

const fuzz::Workspace& TheWorkspace() {
  static const fuzz::Workspace workspace;
  return workspace;
}

std::string Text(const KORUnicodeString& iString) { return std::string(iString.View()); }

// Lines as the parser counts them: a leading byte-order mark is not part of
// the text, and a final line end does not start another line.
int CountLines(std::string_view iText) {
  if (iText.substr(0, 3) == "\xEF\xBB\xBF") iText.remove_prefix(3);
  int lines = 0;
  for (const char character : iText) lines += character == '\n';
  if (!iText.empty() && iText.back() != '\n') ++lines;
  return lines;
}

void CheckKeys(const KORResourceFile& iFile) {
  const KORListValKORUnicodeString keys = iFile.GetKeys();
  FUZZ_REQUIRE(keys.Size() == iFile.GetSize(), "GetKeys and GetSize disagree");
  std::unordered_set<std::string_view> seen;
  for (int i = 1; i <= keys.Size(); ++i) {
    const std::string_view key = keys[i].View();
    FUZZ_REQUIRE(!key.empty(), "an empty key was accepted");
    // (A carriage return that does not end a line is an ordinary character.)
    FUZZ_REQUIRE(key.find_first_of(std::string_view(" \t=\n\0", 5)) == std::string_view::npos,
                 "key with a blank, '=', line feed or NUL: " + std::string(key));
    FUZZ_REQUIRE(fuzz::IsValidUtf8(key), "key is not valid UTF-8");
    FUZZ_REQUIRE(seen.insert(key).second, "key reported twice: " + std::string(key));
    const KORUnicodeString* value = iFile.Find(key);
    FUZZ_REQUIRE(value != nullptr, "key reported but not found: " + std::string(key));
    FUZZ_REQUIRE(fuzz::IsValidUtf8(value->View()), "value is not valid UTF-8");
  }
}

void CheckProblems(const KORResourceFile& iFile, int iLines) {
  const std::string prefix = std::string(iFile.GetFileName().View()) + ":";
  const KORListValKORUnicodeString problems = iFile.GetProblems();
  long previous = 0;
  // The first 100 problems are listed, the others counted in a last one.
  FUZZ_REQUIRE(problems.Size() <= 101, "more than 100 problems listed");
  for (int i = 1; i <= problems.Size(); ++i) {
    const std::string problem = Text(problems[i]);
    if (i == 101) {
      const std::string count = std::string(iFile.GetFileName().View()) + ": ";
      FUZZ_REQUIRE(problem.compare(0, count.size(), count) == 0 &&
                       problem.find(" not listed") == problem.size() - 11,
                   "the problem after the first 100 is not their count: " + problem);
      break;
    }
    FUZZ_REQUIRE(problem.compare(0, prefix.size(), prefix) == 0,
                 "problem does not start with the file name: " + problem);
    std::size_t end = prefix.size();
    while (end < problem.size() && problem[end] >= '0' && problem[end] <= '9') ++end;
    FUZZ_REQUIRE(end > prefix.size() && end - prefix.size() < 10,
                 "problem without a line number: " + problem);
    FUZZ_REQUIRE(problem.compare(end, 2, ": ") == 0 && problem.size() > end + 2,
                 "problem without a reason: " + problem);
    const long line = std::stol(problem.substr(prefix.size(), end - prefix.size()));
    FUZZ_REQUIRE(line >= 1 && line <= iLines, "line " + std::to_string(line) +
                                                  " outside a file of " + std::to_string(iLines) +
                                                  " lines: " + problem);
    FUZZ_REQUIRE(line >= previous, "problems out of line order: " + problem);
    previous = line;
  }
}

void CheckSameContent(const KORResourceFile& iParsed, const KORResourceFile& iLoaded) {
  FUZZ_REQUIRE(iLoaded.GetState() == KORResourceFile::Loaded, "the written file did not load");
  FUZZ_REQUIRE(iLoaded.GetKeys() == iParsed.GetKeys(), "Load and Parse give different keys");
  FUZZ_REQUIRE(iLoaded.GetProblems() == iParsed.GetProblems(),
               "Load and Parse give different problems");
  const KORListValKORUnicodeString keys = iParsed.GetKeys();
  for (int i = 1; i <= keys.Size(); ++i) {
    FUZZ_REQUIRE(*iLoaded.Find(keys[i].View()) == *iParsed.Find(keys[i].View()),
                 "Load and Parse give different values for " + Text(keys[i]));
  }
}

void CheckDeclarationPool(const KORResourceFile& iParsed) {
  KORLumPool::FlushCache();
  FUZZ_REQUIRE(KORLumPool::LoadPool("FUZZ") == 0, "the declaration resource did not load");
  FUZZ_REQUIRE(KORLumPool::GetProblems() == iParsed.GetProblems(),
               "the pool reports other problems than the parser");
  const KORListValKORUnicodeString keys = iParsed.GetKeys();
  for (int i = 1; i <= keys.Size(); ++i) {
    int status = -1;
    const KORUnicodeString value = KORLumPool::GetStringDec(keys[i], status);
    FUZZ_REQUIRE(status == 0, "declared key not found in the pool: " + Text(keys[i]));
    FUZZ_REQUIRE(value == *iParsed.Find(keys[i].View()),
                 "the pool gives another value for " + Text(keys[i]));
  }
}

void CheckCatalogue(const KORResourceFile& iParsed) {
  KORMsgCatalog::FlushCache();
  const KORMsgCatalog catalogue("FUZZ");
  const KORListValKORUnicodeString keys = iParsed.GetKeys();
  for (int i = 1; i <= keys.Size(); ++i) {
    KORUnicodeString text("not built");
    KORXHContext context;
    const int raised = context.Protect([&] {
      const KORMsg message = catalogue.GetMsg(KORString(keys[i].ConvertToChar()));
      message.BuildMessage(&text);
    });
    FUZZ_REQUIRE(raised == 0, "the catalogue raised for a declared key: " +
                                  std::string(context.GetDiagnostic().View()));
    FUZZ_REQUIRE(text == *iParsed.Find(keys[i].View()),
                 "the catalogue gives another text for " + Text(keys[i]));
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  const fuzz::Workspace& workspace = TheWorkspace();
  // One file serves as both the declaration resource and the catalogue.
  const std::string path = workspace.Write("FUZZ.dcls", "");
  std::filesystem::create_symlink(path, workspace.PathOf("FUZZ.msgcat"));
  fuzz::IsolateEnvironment(workspace);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const std::string_view content(reinterpret_cast<const char*>(iData), iSize);
  const std::string path = TheWorkspace().Write("FUZZ.dcls", content);

  const KORResourceFile parsed = KORResourceFile::Parse(content, path.c_str());
  FUZZ_REQUIRE(parsed.GetState() == KORResourceFile::Loaded, "parsing never fails");
  CheckKeys(parsed);
  CheckProblems(parsed, CountLines(content));

  CheckSameContent(parsed, KORResourceFile::Load(path.c_str()));
  CheckDeclarationPool(parsed);
  CheckCatalogue(parsed);
  return 0;
}
