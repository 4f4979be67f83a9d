#include "KORLumSessionFileUtilities.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iostream>  // prepares the stream library for trace output
#include <memory>
#include <utility>
#include <vector>

#include "KORDMTools.h"
#include "KORError.h"
#include "KORGetEnv.h"
#include "KORILumServices.h"
#include "KORLumLazyInstance.h"
#include "KORLumPool.h"
#include "KORLumTrace.h"
#include "KORLumViewerBag.h"
#include "KORLumViewerDef.h"
#include "KORMsgCatalog.h"

namespace {

// --- Module state -------------------------------------------------------------
//
// Built at load in this order, destroyed at unload in the reverse order. The
// two path strings are built on first use, once computed, and declared last,
// so that they are destroyed first (graph files path, then BRIX files path),
// and only if they were built.

// The viewer catalogue: one bag per object, the objects and their translated
// names (index for index), the viewers and their translated labels (index
// for index).
// Its constructor allocates, so it might throw at load; the module's order of
// construction and destruction is part of its behaviour, and a failed
// allocation while the library loads cannot be recovered from anyway.
KORListValKORLumViewerBag gViewerBags;  // NOLINT(cert-err58-cpp)
KORListValKORUnicodeString gObjects;
KORListValKORUnicodeString gNLSObjects;
KORListValKORUnicodeString gViewers;
KORListValKORUnicodeString gNLSViewers;
// The "no viewer" text, empty until first computed.
KORUnicodeString gNLSNoViewer;

bool gViewersLoaded = false;
int gStartUpSession = -1;  // -1: not yet asked

// Each path string holds the computed path (also when it is empty); not
// built means not yet computed.
KORLumLazyInstance<KORUnicodeString> gBRIXFilesPath;
KORLumLazyInstance<KORUnicodeString> gGraphFilesPath;

// --- Files paths ----------------------------------------------------------------

// Expands the variables of a non-empty path, removes the blanks around it and
// ends it with exactly one "/" (the leading "/" of an absolute path is kept).
// An empty path stays empty.
void NormalisePath(KORUnicodeString& ioPath) {
  if (ioPath.GetLengthInChar() <= 0) return;
  ioPath = KORDMTools::ExpandPath(ioPath)
               .Strip(KORUnicodeString::StripBoth, U' ')
               .Strip(KORUnicodeString::StripTrailing, U'/');
  ioPath.Append("/");
}

// Computes a files path once: the declaration iKey of the resource
// iResource, or, when the resource cannot be loaded, the fallback (after a
// message line). The result is kept, also when it is empty.
KORUnicodeString& FilesPath(KORLumTrace& ioTrace, KORLumLazyInstance<KORUnicodeString>& ioPath,
                            const char* iResource, const char* iKey, const char* iFallbackMessage,
                            KORUnicodeString (*iFallback)()) {
  if (!ioPath.IsCreated()) {
    KORUnicodeString path;
    if (KORLumPool::LoadPool(iResource) == 0) {
      int status = 0;
      path = KORLumPool::GetStringDec(iKey, status);
    } else {
      ioTrace.Line(iFallbackMessage);
      path = iFallback();
    }
    NormalisePath(path);
    ioPath.Create(std::move(path));
  }
  return ioPath.Get();
}

KORUnicodeString PresentWorkingDirectory() { return KORUnicodeString(KORGetEnv("PWD")); }

// --- Translated texts -----------------------------------------------------------

// The catalogue of the type, mode and option texts, and the one of the "no
// file" and "no viewer" texts. The two names differ on purpose: they are two
// catalogues of the installed product.
constexpr const char* kValueCatalog = "KORLumSessionFile";
constexpr const char* kAbsenceCatalog = "LumSessionFile";

// The name of the value catalogue, the keys and the untranslated texts of the
// value texts are built once, on first use, as the strings a lookup takes: a
// display line looks up nine texts, and building a name, a key and a default
// text anew for each would cost it about as much as the lookups themselves.
// (Local statics of functions with internal linkage: they are destroyed when
// the library is unloaded, and do not keep it loaded.)
const KORString& ValueCatalog() {
  static const KORString name(kValueCatalog);
  return name;
}

// The key and untranslated text of one enumeration value.
struct ValueText {
  int value;
  KORString key;
  KORUnicodeString fallback;
};

// The text of iValue: the first listed value it equals (tested in order),
// else iOther; the untranslated text stands in for an empty translation.
template <std::size_t N>
KORUnicodeString TranslateValue(int iValue, const ValueText (&iListed)[N],
                                const ValueText& iOther) {
  const ValueText* chosen = &iOther;
  for (const ValueText& candidate : iListed) {
    if (iValue == candidate.value) {
      chosen = &candidate;
      break;
    }
  }
  KORUnicodeString text =
      KORLumSessionFileUtilities::GetNLSMessage(ValueCatalog(), chosen->key, KORUnicodeString());
  if (text.GetLengthInChar() == 0) text = chosen->fallback;
  return text;
}

const KORListValKORUnicodeString& LoadedViewers();

// The translation of iName in iTranslations, index for index with iNames,
// or iName itself when it is not listed or its translation is empty.
KORUnicodeString TranslateName(const KORUnicodeString& iName,
                               const KORListValKORUnicodeString& iNames,
                               const KORListValKORUnicodeString& iTranslations) {
  LoadedViewers();  // fills the catalogue on first use
  KORUnicodeString translated;
  if (iNames.Size() > 0) {
    const int index = iNames.Locate(iName, 1);
    if (index > 0) translated = iTranslations[index];
  }
  if (translated.GetLengthInChar() == 0) translated = iName;
  return translated;
}

KORString Concatenate(const KORUnicodeString& iStem, const char* iSuffix) {
  KORString key(iStem.ConvertToChar());
  key.Append(iSuffix);
  return key;
}

// --- Viewer catalogue -----------------------------------------------------------

// The bags of the objects read so far, by object: their positions in
// gObjects (index for index with the bags) in an open-addressing table whose
// places keep each object's hash. Finding an object reads one place of a
// table of integers, and the object's text only when the hashes are equal;
// a node-based map followed three pointers into a heap that a large
// catalogue no longer keeps in the processor's caches.
class BagsOfObjects {
 public:
  // The position of iObject's bag, or 0 when it has none yet.
  [[nodiscard]] int Find(const KORUnicodeString& iObject) const {
    if (_places.empty()) return 0;
    return _places[PlaceOf(iObject, HashOf(iObject))].position;
  }

  // Records that iObject, which has no bag yet, is the object of
  // gObjects[iPosition].
  void Add(const KORUnicodeString& iObject, int iPosition) {
    if (2 * (_count + 1) > _places.size()) Grow();
    const std::size_t hash = HashOf(iObject);
    Place& place = _places[PlaceOf(iObject, hash)];
    place.hash = hash;
    place.position = iPosition;
    ++_count;
  }

 private:
  struct Place {
    // Read by PlaceOf; cppcheck misses reads through an indexed element.
    // cppcheck-suppress unusedStructMember
    std::size_t hash;
    int position;  // 0 for a free place
  };

  static std::size_t HashOf(const KORUnicodeString& iObject) {
    return std::hash<KORUnicodeString>()(iObject);
  }

  // The place of iObject, or the free place where it would go.
  [[nodiscard]] std::size_t PlaceOf(const KORUnicodeString& iObject, std::size_t iHash) const {
    const std::size_t mask = _places.size() - 1;
    std::size_t place = iHash & mask;
    while (_places[place].position != 0 &&
           (_places[place].hash != iHash || gObjects[_places[place].position] != iObject)) {
      place = (place + 1) & mask;
    }
    return place;
  }

  // Doubles the table (a power of two of places, at most half of them taken).
  void Grow() {
    std::vector<Place> previous(std::max<std::size_t>(16, 2 * _places.size()), Place{0, 0});
    previous.swap(_places);
    const std::size_t mask = _places.size() - 1;
    for (const Place& taken : previous) {
      if (taken.position == 0) continue;
      std::size_t place = taken.hash & mask;
      while (_places[place].position != 0) place = (place + 1) & mask;
      _places[place] = taken;
    }
  }

  std::vector<Place> _places;
  std::size_t _count = 0;
};

// One field of the METHOD_LIST entry numbered iIndex: the key iKeyPattern
// with "%d" replaced by iIndex. Sets oStatus to 0 when the key is declared.
KORUnicodeString ReadEntryField(const KORUnicodeString& iIndex, const char* iKeyPattern,
                                int& oStatus) {
  KORUnicodeString key(iKeyPattern);
  key.ReplaceSubString("%d", iIndex);
  return KORLumPool::GetStringDec(key, oStatus);
}

// Reads the METHOD_LIST table of the loaded "KORBRIX" resource into the
// catalogue: entries 1, 2, ... up to the first one without WHERE, or the
// first kept entry without COMMAND, TAG or KORAB. An entry is kept when its
// WHERE is "HUB" or "Both" and its ROLE is "Tools".
void ReadMethodList(KORLumTrace& ioTrace) {
  // Position of each object's bag, so that the table is read in linear time.
  BagsOfObjects bagOfObject;
  int status = 0;
  int n = 1;
  do {
    KORUnicodeString index;
    index.BuildFromNum(n, "%d");
    const KORUnicodeString where = ReadEntryField(index, "KORBRIX.METHOD_LIST(%d).WHERE", status);
    if (status != 0) break;
    KORUnicodeString role = ReadEntryField(index, "KORBRIX.METHOD_LIST(%d).ROLE", status);
    if (status != 0) {  // a missing ROLE only skips the entry
      role.Reset();
      status = 0;
    }
    if (!((where == "HUB" || where == "Both") && role == "Tools")) {
      ++n;
      continue;
    }
    const KORUnicodeString command =
        ReadEntryField(index, "KORBRIX.METHOD_LIST(%d).COMMAND", status);
    if (status != 0) break;
    const KORUnicodeString tag = ReadEntryField(index, "KORBRIX.METHOD_LIST(%d).TAG", status);
    if (status != 0) break;

    gViewers.Append(command);
    ioTrace.Line("[", gViewers.Size(), "] - Viewer     = [", command, "]");
    KORUnicodeString label;
    if (tag.GetLengthInChar() > 0) {
      label = KORLumSessionFileUtilities::GetNLSMessage(
          "KORDMToolsManager", Concatenate(tag, ".Label"), KORUnicodeString());
    }
    if (label.GetLengthInChar() == 0) label = command;
    gNLSViewers.Append(label);
    // The line shows the command, not the label: readers of the trace match
    // the two lines of an entry on it.
    ioTrace.Line("[", gNLSViewers.Size(), "] - NLS Viewer = [", command, "]");

    const KORUnicodeString object = ReadEntryField(index, "KORBRIX.METHOD_LIST(%d).KORAB", status);
    if (status == 0 && object.GetLengthInChar() >= 1) {
      const int known = bagOfObject.Find(object);
      if (known > 0) {
        gViewerBags[known].Add(command);  // Add keeps a viewer once per bag
      } else {
        KORListValKORUnicodeString viewers;
        viewers.Append(command);
        gViewerBags.Append(KORLumViewerBag(object, viewers));
        gObjects.Append(object);
        bagOfObject.Add(object, gObjects.Size());
        KORUnicodeString synonym = KORLumSessionFileUtilities::GetNLSMessage(
            kValueCatalog, Concatenate(object, ".Synonym"), KORUnicodeString());
        if (synonym.GetLengthInChar() == 0) synonym = object;
        gNLSObjects.Append(synonym);
      }
    }
    ++n;
  } while (status == 0);
}

// The viewer catalogue, read on the first call, without a copy: what
// GetViewers() returns, for the operations that only need the catalogue
// filled or read. Traces as GetViewers() does, under its label.
const KORListValKORUnicodeString& LoadedViewers() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetViewers");
  if (gViewersLoaded) return gViewers;
  // A resource that cannot be loaded leaves the catalogue empty for good.
  if (KORLumPool::LoadPool("KORBRIX") == 0) ReadMethodList(trace);
  gViewersLoaded = true;
  trace.Line("Number of viewer(s) = [", gViewers.Size(), "]");
  return gViewers;
}

}  // namespace

KORLumSessionFileUtilities::KORLumSessionFileUtilities() {
  KORLumTrace trace("KORLumSessionFileUtilities::KORLumSessionFileUtilities");
  KORLUM_ASSERT(0, "KORLumSessionFileUtilities", 61);
}

KORLumSessionFileUtilities::~KORLumSessionFileUtilities() {
  KORLumTrace trace("KORLumSessionFileUtilities::~KORLumSessionFileUtilities");
}

int KORLumSessionFileUtilities::IsStartUpSession() {
  KORLumTrace trace("KORLumSessionFileUtilities::IsStartUpSession");
  if (gStartUpSession == -1) {
    KORILumServices_var services = CreateServices();
    if (services == KORBaseUnknown_var()) {
      gStartUpSession = 0;
    } else {
      KORUnicodeString value;
      services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin");
      gStartUpSession = (value == "YES") ? 1 : 0;
    }
  }  // the services handle is released here
  trace.Value("isStartUpSession", gStartUpSession);
  return gStartUpSession;
}

KORUnicodeString KORLumSessionFileUtilities::GetBRIXFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetBRIXFilesPath");
  const KORUnicodeString& path =
      FilesPath(trace, gBRIXFilesPath, "MERLO", "MERLO.BRIXFILES",
                "Problem while retrieving DCLS - defaulting to $PWD", PresentWorkingDirectory);
  trace.Value("BRIXFilesPath", path);
  return path;
}

KORUnicodeString KORLumSessionFileUtilities::GetGraphFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetGraphFilesPath");
  const KORUnicodeString& path =
      FilesPath(trace, gGraphFilesPath, "KORBRIX", "KORBRIX.HUB.GRAPHSESSION",
                "Problem while retrieving DCLS - defaulting to BRIX files path", GetBRIXFilesPath);
  trace.Value("graphFilesPath", path);
  return path;
}

KORUnicodeString KORLumSessionFileUtilities::GetQueryFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetQueryFilesPath");
  // Query files live in the data-management files directory by design.
  KORUnicodeString queryFilesPath = GetBRIXFilesPath();
  trace.Value("queryFilesPath", queryFilesPath);
  return queryFilesPath;
}

KORUnicodeString KORLumSessionFileUtilities::GetHistoryFilePath() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetHistoryFilePath");
  // The history file lives in the data-management files directory by design.
  KORUnicodeString historyFilePath = GetBRIXFilesPath();
  trace.Value("historyFilePath", historyFilePath);
  return historyFilePath;
}

KORListValKORUnicodeString KORLumSessionFileUtilities::GetViewers() { return LoadedViewers(); }

KORListValKORUnicodeString KORLumSessionFileUtilities::GetViewers(const KORUnicodeString& iObject) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetViewers (object)");
  trace.Value("iObject", iObject);
  LoadedViewers();
  KORListValKORUnicodeString viewers;
  if (gViewerBags.Size() > 0) {
    // Objects are unique in the catalogue, and index for index with the bags.
    const int index = gObjects.Locate(iObject, 1);
    if (index > 0) viewers = gViewerBags[index].GetViewers();
  }
  trace.Line("Number of viewer(s) = [", viewers.Size(), "]");
  return viewers;
}

KORListValKORLumViewerBag KORLumSessionFileUtilities::GetViewerBags() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetViewerBags");
  LoadedViewers();
  trace.Line("Number of viewer bag(s) = [", gViewerBags.Size(), "]");
  return gViewerBags;
}

KORListValKORLumViewerDef KORLumSessionFileUtilities::GetViewerDefs() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetViewerDefs");
  LoadedViewers();
  KORListValKORLumViewerDef defs;
  for (int i = 1; i <= gViewerBags.Size(); ++i) {
    const KORLumViewerBag& bag = gViewerBags[i];
    for (int j = 1; j <= bag.GetNumberOfViewers(); ++j) {
      defs.Append(KORLumViewerDef(bag.GetObject(), bag.GetViewer(j)));
    }
  }
  trace.Line("Number of viewer def(s) = [", defs.Size(), "]");
  return defs;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSMessage(
    const KORString& iNLSDictionnary, const KORString& iNLSMessageKey,
    const KORUnicodeString& iDefaultNLSMessage) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSMessage");
  trace.Value("iNLSDictionnary", iNLSDictionnary);
  trace.Value("iNLSMessageKey", iNLSMessageKey);
  trace.Value("iDefaultNLSMessage", iDefaultNLSMessage);
  KORUnicodeString result;
  KORXHContext context;
  const int raised = context.Protect([&] {
    // The catalogue object lives for this lookup only, on the heap as the
    // catalogue service expects, and is released on every path.
    const auto catalog = std::make_unique<KORMsgCatalog>(iNLSDictionnary);
    catalog->GetMsg(iNLSMessageKey).BuildMessage(&result);
  });
  if (raised) {
    if (!context.IsKindOf(KORNLSCatalogError::ClassName())) context.Raise();
    // A missing catalogue or key is not an error for callers: the default
    // stands in for the message.
    trace.Line("Error : ", context.GetDiagnostic());
    context.Release();
    result = iDefaultNLSMessage;
  }
  trace.Value("NLSMessage", result);
  return result;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSType(const _KORLumSessionFileType iType) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSType");
  trace.Value("iType", iType);
  static const ValueText kListed[] = {{KORLumSessionFileType_Query, "TypeQuery.Msg", "Query"},
                                      {KORLumSessionFileType_Graph, "TypeGraph.Msg", "Graph"}};
  static const ValueText kOther = {KORLumSessionFileType_None, "TypeNone.Msg", "None"};
  KORUnicodeString NLSType = TranslateValue(iType, kListed, kOther);
  trace.Value("NLSType", NLSType);
  return NLSType;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSLoadMode(
    const _KORLumGraphSessionLoadMode iLoadMode) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSLoadMode");
  trace.Value("iLoadMode", iLoadMode);
  static const ValueText kListed[] = {
      {KORLumGraphSessionLoadMode_Dynamic, "LoadModeDynamic.Msg", "Dynamic"},
      {KORLumGraphSessionLoadMode_Static, "LoadModeStatic.Msg", "Static"}};
  static const ValueText kOther = {KORLumGraphSessionLoadMode_None, "LoadModeNone.Msg", "None"};
  KORUnicodeString NLSLoadMode = TranslateValue(iLoadMode, kListed, kOther);
  trace.Value("NLSLoadMode", NLSLoadMode);
  return NLSLoadMode;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSInstanceMode(
    const _KORLumGraphSessionInstanceMode iInstanceMode) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSInstanceMode");
  trace.Value("iInstanceMode", iInstanceMode);
  static const ValueText kListed[] = {
      {KORLumGraphSessionInstanceMode_All, "InstanceModeAll.Msg", "All"},
      {KORLumGraphSessionInstanceMode_Selected, "InstanceModeSelected.Msg", "Selected"}};
  static const ValueText kOther = {KORLumGraphSessionInstanceMode_None, "InstanceModeNone.Msg",
                                   "None"};
  KORUnicodeString NLSInstanceMode = TranslateValue(iInstanceMode, kListed, kOther);
  trace.Value("NLSInstanceMode", NLSInstanceMode);
  return NLSInstanceMode;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSOption(const unsigned long iOption) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSOption");
  trace.Value("iOption", iOption);
  struct OptionText {
    unsigned long bit;
    KORString key;
    KORUnicodeString letter;
  };
  static const OptionText kOptions[] = {
      {KORLumSessionFileOption_Report, "OptionReport.Msg", "R"},
      {KORLumSessionFileOption_Modification, "OptionModification.Msg", "M"},
      {KORLumSessionFileOption_Query, "OptionQuery.Msg", "Q"},
      {KORLumSessionFileOption_CSB, "OptionCSB.Msg", "C"}};
  static const OptionText kSeparator = {0UL, "OptionSeparator.Msg", "+"};
  KORUnicodeString NLSOption;
  const KORUnicodeString separator =
      GetNLSMessage(ValueCatalog(), kSeparator.key, kSeparator.letter);
  for (const OptionText& option : kOptions) {
    if ((iOption & option.bit) == 0) continue;
    if (NLSOption.GetLengthInChar() > 0) NLSOption.Append(separator);
    // The letter is the lookup's default: a message that builds as empty
    // adds nothing.
    NLSOption.Append(GetNLSMessage(ValueCatalog(), option.key, option.letter));
  }
  trace.Value("NLSOption", NLSOption);
  return NLSOption;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSNoFile() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSNoFile");
  KORUnicodeString NLSNoFile = GetNLSMessage(kAbsenceCatalog, "FileNone.Msg", KORUnicodeString());
  if (NLSNoFile.GetLengthInChar() == 0) NLSNoFile = "None";
  trace.Value("NLSNoFile", NLSNoFile);
  return NLSNoFile;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSNoViewer() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSNoViewer");
  // Never empty once computed: the catalogue is read on the first call only.
  if (gNLSNoViewer.GetLengthInChar() == 0) {
    gNLSNoViewer = GetNLSMessage(kAbsenceCatalog, "ViewerNone.Msg", KORUnicodeString());
    if (gNLSNoViewer.GetLengthInChar() == 0) gNLSNoViewer = "None";
  }
  trace.Value("_NLSNoViewer", gNLSNoViewer);
  return gNLSNoViewer;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSObject(const KORUnicodeString& iObject) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSObject");
  trace.Value("iObject", iObject);
  KORUnicodeString NLSObject = TranslateName(iObject, gObjects, gNLSObjects);
  trace.Value("NLSObject", NLSObject);
  return NLSObject;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSViewer(const KORUnicodeString& iViewer) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSViewer");
  trace.Value("iViewer", iViewer);
  KORUnicodeString NLSViewer = TranslateName(iViewer, gViewers, gNLSViewers);
  trace.Value("NLSViewer", NLSViewer);
  return NLSViewer;
}

KORListValKORUnicodeString KORLumSessionFileUtilities::GetNLSObjects() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSObjects");
  LoadedViewers();
  return gNLSObjects;
}

KORListValKORUnicodeString KORLumSessionFileUtilities::GetNLSViewers() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSViewers");
  LoadedViewers();
  return gNLSViewers;
}
