// Fuzz target: the viewer catalogue that KORLumSessionFileUtilities reads
// from the METHOD_LIST table of an arbitrary "KORBRIX" declaration file. The
// same bytes also serve as the catalogues of viewer labels
// (KORDMToolsManager) and object synonyms (KORLumSessionFile), so that the
// input decides the translated names too.
//
// Invariants, for any file:
//   - the viewer list and the translated viewer list have equal sizes, as
//     do the object list, the translated object list and the bag list;
//   - each object has one bag, and its translated name at the same position;
//     every viewer of every bag is in the viewer list, once per bag;
//   - the lists are exactly what the documented reading of the table gives,
//     computed here again from the parsed file;
//   - the per-object viewers, the viewer definitions and the translated
//     names answer from those lists; reading them again changes nothing and
//     leaves no memory allocated.
//
// Fresh caches for every input: the library fills its catalogue once per
// process and never again, so each input runs in a child process forked from
// this one, whose caches have never been filled. The child checks the
// invariants and stops with abort() when one fails (or dies of a sanitizer
// report); the parent then aborts too, so that libFuzzer keeps the input.
// Forking was preferred to loading and unloading the library per input:
// libFuzzer registers the coverage counters of every instrumented library it
// sees loaded, and does not support one that is unloaded under it. Coverage
// of the library's own code, which runs in the child, does not reach the
// parent; the parser's coverage does (the parent parses each input first),
// and so does the shape of the catalogue that the child reports back.
// LeakSanitizer cannot check a forked child (it still knows the parent's
// thread, not the child's, and misses the child's stack): the child compares
// the allocator's count of live bytes instead.
#include <sanitizer/allocator_interface.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzInvariants.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumSessionFileUtilities.h"
#include "KORResourceFile.h"

namespace {

const fuzz::Workspace& TheWorkspace() {
  static const fuzz::Workspace workspace;
  return workspace;
}

std::string Text(const KORUnicodeString& iString) { return std::string(iString.View()); }

struct Bag {
  KORUnicodeString object;
  std::vector<KORUnicodeString> viewers;
};

struct Catalogue {
  std::vector<KORUnicodeString> viewers, nlsViewers, objects, nlsObjects;
  std::vector<Bag> bags;
};

// The METHOD_LIST table read as documented: entries 1, 2, ... up to the
// first without WHERE, or the first kept entry (WHERE "HUB" or "Both", ROLE
// "Tools") without COMMAND, TAG or KORAB.
Catalogue Expected(const KORResourceFile& iFile) {
  Catalogue catalogue;
  const auto find = [&iFile](int iIndex, const char* iField) {
    return iFile.Find("KORBRIX.METHOD_LIST(" + std::to_string(iIndex) + ")." + iField);
  };
  // The text declared under iName + iSuffix, or iFallback when there is none
  // or it is empty.
  const auto translated = [&iFile](const KORUnicodeString& iName, const char* iSuffix,
                                   const KORUnicodeString& iFallback) {
    const KORUnicodeString* text = iFile.Find(Text(iName) + iSuffix);
    return text && text->GetLengthInChar() > 0 ? *text : iFallback;
  };
  for (int n = 1;; ++n) {
    const KORUnicodeString* where = find(n, "WHERE");
    if (!where) break;
    const KORUnicodeString* role = find(n, "ROLE");
    if (!((*where == "HUB" || *where == "Both") && role && *role == "Tools")) continue;
    const KORUnicodeString* command = find(n, "COMMAND");
    if (!command) break;
    const KORUnicodeString* tag = find(n, "TAG");
    if (!tag) break;
    catalogue.viewers.push_back(*command);
    catalogue.nlsViewers.push_back(tag->GetLengthInChar() > 0 ? translated(*tag, ".Label", *command)
                                                              : *command);
    const KORUnicodeString* object = find(n, "KORAB");
    if (!object) break;
    if (object->GetLengthInChar() == 0) continue;
    Bag* bag = nullptr;
    for (Bag& candidate : catalogue.bags) {
      if (candidate.object == *object) bag = &candidate;
    }
    if (bag) {
      bool held = false;
      for (const KORUnicodeString& viewer : bag->viewers) held = held || viewer == *command;
      if (!held) bag->viewers.push_back(*command);
    } else {
      catalogue.bags.push_back({*object, {*command}});
      catalogue.objects.push_back(*object);
      catalogue.nlsObjects.push_back(translated(*object, ".Synonym", *object));
    }
  }
  return catalogue;
}

std::vector<KORUnicodeString> Values(const KORListValKORUnicodeString& iList) {
  std::vector<KORUnicodeString> values;
  for (int i = 1; i <= iList.Size(); ++i) values.push_back(iList[i]);
  return values;
}

// Runs in the child: reads the catalogue through the library and checks it.
void CheckCatalogue(const KORResourceFile& iFile, int& oViewers, int& oObjects) {
  using Utilities = KORLumSessionFileUtilities;
  const KORListValKORUnicodeString viewers = Utilities::GetViewers();
  const KORListValKORUnicodeString nlsViewers = Utilities::GetNLSViewers();
  const KORListValKORUnicodeString nlsObjects = Utilities::GetNLSObjects();
  const KORListValKORLumViewerBag bags = Utilities::GetViewerBags();
  oViewers = viewers.Size();
  oObjects = bags.Size();

  // Parallel caches.
  FUZZ_REQUIRE(viewers.Size() == nlsViewers.Size(), "viewers " + std::to_string(viewers.Size()) +
                                                        ", translated viewers " +
                                                        std::to_string(nlsViewers.Size()));
  FUZZ_REQUIRE(bags.Size() == nlsObjects.Size(), "bags " + std::to_string(bags.Size()) +
                                                     ", translated objects " +
                                                     std::to_string(nlsObjects.Size()));

  // Objects unique in the bag list; every viewer of every bag is a viewer.
  int definitions = 0;
  for (int i = 1; i <= bags.Size(); ++i) {
    const KORLumViewerBag& bag = bags[i];
    for (int j = 1; j < i; ++j) {
      FUZZ_REQUIRE(bags[j].GetObject() != bag.GetObject(),
                   "object twice in the bag list: " + Text(bag.GetObject()));
    }
    for (int k = 1; k <= bag.GetNumberOfViewers(); ++k) {
      FUZZ_REQUIRE(viewers.Locate(bag.GetViewer(k), 1) > 0,
                   "viewer of a bag missing from the viewer list: " + Text(bag.GetViewer(k)));
      FUZZ_REQUIRE(bag.GetViewers().Locate(bag.GetViewer(k), 1) == k,
                   "viewer twice in one bag: " + Text(bag.GetViewer(k)));
    }
    FUZZ_REQUIRE(Values(Utilities::GetViewers(bag.GetObject())) == Values(bag.GetViewers()),
                 "GetViewers(object) is not the bag's viewers for " + Text(bag.GetObject()));
    definitions += bag.GetNumberOfViewers();
  }
  FUZZ_REQUIRE(Utilities::GetViewerDefs().Size() == definitions,
               "one viewer definition per viewer of each bag");

  // What the table says.
  const Catalogue expected = Expected(iFile);
  FUZZ_REQUIRE(Values(viewers) == expected.viewers, "the viewer list differs from the table");
  FUZZ_REQUIRE(Values(nlsViewers) == expected.nlsViewers, "the translated viewers differ");
  FUZZ_REQUIRE(Values(nlsObjects) == expected.nlsObjects, "the translated objects differ");
  FUZZ_REQUIRE(static_cast<std::size_t>(bags.Size()) == expected.bags.size(),
               "the bag list differs from the table");
  for (int i = 1; i <= bags.Size(); ++i) {
    const Bag& bag = expected.bags[static_cast<std::size_t>(i - 1)];
    FUZZ_REQUIRE(bags[i].GetObject() == bag.object && Values(bags[i].GetViewers()) == bag.viewers,
                 "bag " + std::to_string(i) + " differs from the table");
  }

  // Translated names answer from the lists.
  for (int i = 1; i <= viewers.Size(); ++i) {
    const KORUnicodeString& translated = nlsViewers[viewers.Locate(viewers[i], 1)];
    const KORUnicodeString expectedName =
        translated.GetLengthInChar() > 0 ? translated : viewers[i];
    FUZZ_REQUIRE(Utilities::GetNLSViewer(viewers[i]) == expectedName,
                 "GetNLSViewer of " + Text(viewers[i]));
  }
  for (int i = 1; i <= bags.Size(); ++i) {
    FUZZ_REQUIRE(Utilities::GetNLSObject(bags[i].GetObject()) == nlsObjects[i],
                 "GetNLSObject of " + Text(bags[i].GetObject()));
  }

  // Read once: later calls give the same lists, and leave no memory behind.
  const std::size_t allocated = __sanitizer_get_current_allocated_bytes();
  for (int round = 0; round < 2; ++round) {
    FUZZ_REQUIRE(Utilities::GetViewers() == viewers, "a second GetViewers changed the list");
    FUZZ_REQUIRE(Utilities::GetNLSViewers() == nlsViewers, "a second reading changed");
    FUZZ_REQUIRE(Utilities::GetNLSObjects() == nlsObjects, "a second reading changed");
    FUZZ_REQUIRE(Utilities::GetViewerBags().Size() == bags.Size(), "a second reading changed");
    FUZZ_REQUIRE(Utilities::GetViewerDefs().Size() == definitions, "a second reading changed");
    for (int i = 1; i <= viewers.Size(); ++i) (void)Utilities::GetNLSViewer(viewers[i]);
  }
  FUZZ_REQUIRE(__sanitizer_get_current_allocated_bytes() == allocated,
               "reading the filled catalogue again leaked " +
                   std::to_string(__sanitizer_get_current_allocated_bytes() - allocated) +
                   " bytes");
}

// libFuzzer's extra counters: one per small shape of catalogue (numbers of
// viewers and of objects), so that an input reaching a new shape is kept.
constexpr int kShapes = 9;
__attribute__((section("__libfuzzer_extra_counters"), used))
std::uint8_t gShapeCounters[kShapes * kShapes];

void NoteShape(int iViewers, int iObjects) {
  const int viewers = iViewers < kShapes - 1 ? iViewers : kShapes - 1;
  const int objects = iObjects < kShapes - 1 ? iObjects : kShapes - 1;
  gShapeCounters[viewers * kShapes + objects] = 1;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  const fuzz::Workspace& workspace = TheWorkspace();
  const std::string path = workspace.Write("KORBRIX.dcls", "");
  for (const char* catalogue : {"KORDMToolsManager.msgcat", "KORLumSessionFile.msgcat"}) {
    std::filesystem::create_symlink(path, workspace.PathOf(catalogue));
  }
  fuzz::IsolateEnvironment(workspace);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const std::string_view content(reinterpret_cast<const char*>(iData), iSize);
  TheWorkspace().Write("KORBRIX.dcls", content);
  const KORResourceFile file = KORResourceFile::Parse(content, "KORBRIX.dcls");

  int report[2] = {0, 0};
  int channel[2];
  FUZZ_REQUIRE(::pipe(channel) == 0, "pipe");
  const pid_t child = ::fork();
  FUZZ_REQUIRE(child >= 0, "fork");
  if (child == 0) {
    ::close(channel[0]);
    ::alarm(20);  // a child that hangs dies, and the parent reports it
    CheckCatalogue(file, report[0], report[1]);
    const ssize_t written = ::write(channel[1], report, sizeof report);
    ::_exit(written == static_cast<ssize_t>(sizeof report) ? 0 : 3);
  }
  ::close(channel[1]);
  ssize_t received = 0;
  do {  // libFuzzer's time-out timer interrupts the wait now and then
    received = ::read(channel[0], report, sizeof report);
  } while (received < 0 && errno == EINTR);
  ::close(channel[0]);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
  }
  FUZZ_REQUIRE(WIFEXITED(status) && WEXITSTATUS(status) == 0,
               WIFSIGNALED(status)
                   ? "the child died of signal " + std::to_string(WTERMSIG(status))
                   : "the child exited with " + std::to_string(WEXITSTATUS(status)));
  FUZZ_REQUIRE(received == static_cast<ssize_t>(sizeof report), "the child reported nothing");
  NoteShape(report[0], report[1]);
  return 0;
}
