#include "KORLumSessionFileUtilities.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iostream>  // prepares the stream library for trace output
#include <memory>
#include <utility>
#include <vector>

#include "KORDMTools.h"
#include "KORGetEnv.h"
#include "KORILumServices.h"
#include "KORLumLazyInstance.h"
#include "KORLumPool.h"
#include "KORLumTrace.h"
#include "KORLumViewerBag.h"
#include "KORLumViewerDef.h"
#include "KORMsgCatalog.h"
#include "KORPositionIndex.h"

namespace {

// --- Module state -------------------------------------------------------------
//
// Built at load in this order, destroyed at unload in the reverse order. The
// two path strings are built on first use, once computed, and declared last,
// so that they are destroyed first (graph files path, then BRIX files path),
// and only if they were built.

// Where each name of a list stands, found through the platform's position
// index: a name is found in a catalogue of any size without reading the
// list from its start, so that reading a large table, or translating every
// viewer of it, takes linear time. Answers what Locate(name, 1) answers:
// the first position of the name, or 0.
class NamePositions {
 public:
  // An index of iNames, which it reads but does not own.
  explicit NamePositions(const KORListValKORUnicodeString& iNames) noexcept : _names(iNames) {}

  // The first position of iName in the names, or 0 when it is not there (or
  // not indexed yet).
  [[nodiscard]] int Find(const KORUnicodeString& iName) const {
    return static_cast<int>(_index.Find(HashOf(iName), IsNameAt{_names, iName}));
  }

  // Records that iName, which is not indexed yet, is at iPosition.
  void Add(const KORUnicodeString& iName, int iPosition) {
    _index.Add(HashOf(iName), static_cast<KORPositionIndex::Position>(iPosition));
  }

  // Indexes the first position of every name of the list as it stands.
  void AddAll() {
    _index.Reserve(static_cast<std::size_t>(_names.Size()));
    for (int position = 1; position <= _names.Size(); ++position) {
      const KORUnicodeString& name = _names[position];
      (void)_index.FindOrAdd(HashOf(name), IsNameAt{_names, name},
                             static_cast<KORPositionIndex::Position>(position));
    }
  }

 private:
  static KORPositionIndex::Hash HashOf(const KORUnicodeString& iName) {
    return KORPositionIndex::HashOf(iName.View());
  }

  // Whether the name at a position of the names is iName.
  struct IsNameAt {
    const KORListValKORUnicodeString& names;
    const KORUnicodeString& name;
    bool operator()(KORPositionIndex::Position iPosition) const {
      return names[static_cast<int>(iPosition)] == name;
    }
  };

  const KORListValKORUnicodeString& _names;
  KORPositionIndex _index;
};

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
// Where each object and each viewer stands in its list, indexed once the
// catalogue is read.
NamePositions gObjectPositions(gObjects);
NamePositions gViewerPositions(gViewers);
// The "no viewer" text, empty until first computed.
KORUnicodeString gNLSNoViewer;

bool gViewersLoaded = false;
int gStartUpSession = -1;  // -1: not yet asked

// Each path string holds the computed path (also when it is empty); not
// built means not yet computed.
KORLumLazyInstance<KORUnicodeString> gBRIXFilesPath;
KORLumLazyInstance<KORUnicodeString> gGraphFilesPath;

// --- The keys read ----------------------------------------------------------------
//
// Every key the library reads, in one table that the operations below take
// their keys from and that GetKeysRead() lists.

enum KeyName : int {
  kBRIXFilesKey,
  kGraphFilesKey,
  kWhereKey,
  kRoleKey,
  kCommandKey,
  kTagKey,
  kObjectKey,
  kStartUpSessionKey,
  kTypeQueryKey,
  kTypeGraphKey,
  kTypeNoneKey,
  kLoadModeDynamicKey,
  kLoadModeStaticKey,
  kLoadModeNoneKey,
  kInstanceModeAllKey,
  kInstanceModeSelectedKey,
  kInstanceModeNoneKey,
  kOptionSeparatorKey,
  kOptionReportKey,
  kOptionModificationKey,
  kOptionQueryKey,
  kOptionCSBKey,
  kFileNoneKey,
  kViewerNoneKey,
  kLabelKey,
  kSynonymKey,
  kKeyCount
};

// The catalogue of the type, mode, option texts and object synonyms, and the
// one of the "no file" and "no viewer" texts. The two names differ on
// purpose: they are two catalogues of the installed product.
constexpr const char* kValueCatalog = "KORLumSessionFile";
constexpr const char* kAbsenceCatalog = "LumSessionFile";
constexpr const char* kToolsCatalog = "KORDMToolsManager";

// The values the library tests for.
constexpr const char* kWhereValues[] = {"HUB", "Both", nullptr};
constexpr const char* kRoleValues[] = {"Tools", nullptr};
constexpr const char* kStartUpValues[] = {"YES", nullptr};

constexpr KORLumKeyRead kKeysRead[kKeyCount] = {
    {KORLumKeyRead::Declaration, "MERLO", "MERLO.BRIXFILES", nullptr, nullptr},
    {KORLumKeyRead::Declaration, "KORBRIX", "KORBRIX.HUB.GRAPHSESSION", nullptr, nullptr},
    {KORLumKeyRead::Declaration, "KORBRIX", "KORBRIX.METHOD_LIST(%d).WHERE", nullptr, kWhereValues},
    {KORLumKeyRead::Declaration, "KORBRIX", "KORBRIX.METHOD_LIST(%d).ROLE", nullptr, kRoleValues},
    {KORLumKeyRead::Declaration, "KORBRIX", "KORBRIX.METHOD_LIST(%d).COMMAND", nullptr, nullptr},
    {KORLumKeyRead::Declaration, "KORBRIX", "KORBRIX.METHOD_LIST(%d).TAG", nullptr, nullptr},
    {KORLumKeyRead::Declaration, "KORBRIX", "KORBRIX.METHOD_LIST(%d).KORAB", nullptr, nullptr},
    {KORLumKeyRead::Setting, "LUMAdmin", "LUM_STARTUP_SESSION", nullptr, kStartUpValues},
    {KORLumKeyRead::Catalogue, kValueCatalog, "TypeQuery.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "TypeGraph.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "TypeNone.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "LoadModeDynamic.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "LoadModeStatic.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "LoadModeNone.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "InstanceModeAll.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "InstanceModeSelected.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "InstanceModeNone.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "OptionSeparator.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "OptionReport.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "OptionModification.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "OptionQuery.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, "OptionCSB.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kAbsenceCatalog, "FileNone.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kAbsenceCatalog, "ViewerNone.Msg", nullptr, nullptr},
    {KORLumKeyRead::Catalogue, kToolsCatalog, ".Label", "TAG", nullptr},
    {KORLumKeyRead::Catalogue, kValueCatalog, ".Synonym", "KORAB", nullptr},
};

constexpr const KORLumKeyRead& Key(KeyName iName) { return kKeysRead[iName]; }

// Whether iValue is one of the values that the key iName accepts.
bool IsAccepted(const KORUnicodeString& iValue, KeyName iName) {
  for (const char* const* accepted = Key(iName).accepted; *accepted != nullptr; ++accepted) {
    if (iValue == *accepted) return true;
  }
  return false;
}

// --- Files paths ----------------------------------------------------------------

// Expands the variables of a non-empty path, removes the blanks around it and
// ends it with exactly one "/" (the leading "/" of an absolute path is kept).
// An empty path stays empty.
// The variables it uses that are unset are put in oUnset, when given.
void NormalisePath(KORUnicodeString& ioPath, KORListValKORUnicodeString* oUnset) {
  if (ioPath.GetLengthInChar() <= 0) return;
  const KORUnicodeString expanded =
      oUnset != nullptr ? KORDMTools::ExpandPath(ioPath, *oUnset) : KORDMTools::ExpandPath(ioPath);
  ioPath = expanded.Strip(KORUnicodeString::StripBoth, U' ')
               .Strip(KORUnicodeString::StripTrailing, U'/');
  ioPath.Append("/");
}

// How one files path is found: its declaration, and what stands in for it
// when the declaration resource cannot be loaded.
struct FilesPathRule {
  KeyName key;
  const char* fallbackMessage;  // traced when the fallback is taken
  const char* fallbackName;     // what the fallback is, for explanations
  KORUnicodeString (*fallback)();
};

// Computes a files path: the declaration of the rule's key, or, when its
// resource cannot be loaded, the fallback (after a message line); then
// normalised. Fills oExplanation when given.
KORUnicodeString ComputeFilesPath(KORLumTrace& ioTrace, const FilesPathRule& iRule,
                                  KORLumPathExplanation* oExplanation) {
  const KORLumKeyRead& key = Key(iRule.key);
  KORUnicodeString path;
  const bool loaded = KORLumPool::LoadPool(key.container) == 0;
  if (loaded) {
    int status = 0;
    path = KORLumPool::GetStringDec(key.key, status);
  } else {
    ioTrace.Line(iRule.fallbackMessage);
    path = iRule.fallback();
  }
  if (oExplanation != nullptr) {
    KORLumPathExplanation& explanation = *oExplanation;
    explanation.resource = key.container;
    explanation.key = key.key;
    explanation.resourceLoaded = loaded ? 1 : 0;
    if (loaded) {
      explanation.declared =
          KORLumPool::GetDeclaration(key.key, explanation.file, explanation.line) == 0 ? 1 : 0;
    } else {
      explanation.fallback = iRule.fallbackName;
    }
    explanation.value = path;
  }
  NormalisePath(path, oExplanation != nullptr ? &oExplanation->unsetVariables : nullptr);
  if (oExplanation != nullptr) oExplanation->path = path;
  return path;
}

// How a files path is computed now, traced under iLabel.
KORLumPathExplanation ExplainFilesPath(KORLumTrace& ioTrace, const FilesPathRule& iRule,
                                       const char* iLabel) {
  KORLumPathExplanation explanation;
  ComputeFilesPath(ioTrace, iRule, &explanation);
  ioTrace.Value(iLabel, explanation.path);
  return explanation;
}

// Computes a files path once; the result is kept, also when it is empty.
KORUnicodeString& FilesPath(KORLumTrace& ioTrace, KORLumLazyInstance<KORUnicodeString>& ioPath,
                            const FilesPathRule& iRule) {
  if (!ioPath.IsCreated()) ioPath.Create(ComputeFilesPath(ioTrace, iRule, nullptr));
  return ioPath.Get();
}

KORUnicodeString PresentWorkingDirectory() { return KORUnicodeString(KORGetEnv("PWD")); }

const FilesPathRule kBRIXFilesPath = {kBRIXFilesKey,
                                      "Problem while retrieving DCLS - defaulting to $PWD", "$PWD",
                                      PresentWorkingDirectory};
const FilesPathRule kGraphFilesPath = {
    kGraphFilesKey, "Problem while retrieving DCLS - defaulting to BRIX files path",
    "BRIX files path", KORLumSessionFileUtilities::GetBRIXFilesPath};

// --- Translated texts -----------------------------------------------------------

// A text made of catalogue texts, kept from one call to the next.
//
// A display line asks for the same few texts again and again, and a lookup
// (a catalogue object made and released, the catalogue service's lock, the
// search of the key through the language levels) costs more than the rest of
// the line. So a text is given again without its lookups while nothing could
// tell the two apart: the catalogue service answers as it did (its cache
// stamp is the one read before the text was made, see
// KORMsgCatalog::GetCacheStamp) and the caller's scope writes no line (the
// lookups would trace their inputs and results).
struct KeptText {
  KORUnicodeString text;
  unsigned long stamp = 0;  // the cache stamp read before the text was made; 0: none yet

  // Whether the text can be given again now, iStamp being the stamp now.
  [[nodiscard]] bool Holds(const KORLumTrace& iTrace, unsigned long iStamp) const {
    return stamp == iStamp && !iTrace.IsActive();
  }
};

// The text of one of the library's own catalogue keys (the type, mode,
// option and absence texts), as KORLumSessionFileUtilities::GetNLSMessage
// gives it with iDefault (each key is always asked with the same default),
// kept for the next call. The result is valid until the next call for the
// same key.
const KORUnicodeString& CatalogueText(const KORLumTrace& iTrace, KeyName iKey,
                                      const KORUnicodeString& iDefault) {
  struct Kept : KeptText {
    KORString catalogue;  // the key's catalogue and the key, as a lookup takes them
    KORString key;
  };
  // (A local static of a function with internal linkage: destroyed when the
  // library is unloaded.)
  static Kept kept[kKeyCount];
  Kept& entry = kept[iKey];
  const unsigned long stamp = KORMsgCatalog::GetCacheStamp();
  if (entry.Holds(iTrace, stamp)) return entry.text;
  if (entry.stamp == 0) {
    entry.catalogue = Key(iKey).container;
    entry.key = Key(iKey).key;
  }
  entry.text = KORLumSessionFileUtilities::GetNLSMessage(entry.catalogue, entry.key, iDefault);
  entry.stamp = stamp;
  return entry.text;
}

// The key and untranslated text of one enumeration value.
struct ValueText {
  int value;
  KeyName key;
  KORUnicodeString fallback;
};

// The text of iValue: the first listed value it equals (tested in order),
// else iOther; the untranslated text stands in for an empty translation.
template <std::size_t N>
KORUnicodeString TranslateValue(const KORLumTrace& iTrace, int iValue,
                                const ValueText (&iListed)[N], const ValueText& iOther) {
  const ValueText* chosen = &iOther;
  for (const ValueText& candidate : iListed) {
    if (iValue == candidate.value) {
      chosen = &candidate;
      break;
    }
  }
  const KORUnicodeString& text = CatalogueText(iTrace, chosen->key, KORUnicodeString());
  return text.GetLengthInChar() == 0 ? chosen->fallback : text;
}

const KORListValKORUnicodeString& LoadedViewers();

// The translation of iName in iTranslations, index for index with iNames
// (whose positions iPositions indexes), or iName itself when it is not listed
// or its translation is empty.
KORUnicodeString NameIn(const KORUnicodeString& iName, const NamePositions& iPositions,
                        const KORListValKORUnicodeString& iTranslations) {
  KORUnicodeString translated;
  const int index = iPositions.Find(iName);
  if (index > 0) translated = iTranslations[index];
  if (translated.GetLengthInChar() == 0) translated = iName;
  return translated;
}

// The same in the viewer catalogue, filled on first use.
KORUnicodeString TranslateName(const KORUnicodeString& iName, const NamePositions& iPositions,
                               const KORListValKORUnicodeString& iTranslations) {
  LoadedViewers();
  return NameIn(iName, iPositions, iTranslations);
}

KORString Concatenate(const KORUnicodeString& iStem, const char* iSuffix) {
  KORString key(iStem.ConvertToChar());
  key.Append(iSuffix);
  return key;
}

// --- Viewer catalogue -----------------------------------------------------------

// The five lists of a viewer catalogue: the module's own, or those of an
// explanation.
struct CatalogLists {
  KORListValKORLumViewerBag& bags;
  KORListValKORUnicodeString& objects;
  KORListValKORUnicodeString& NLSObjects;
  KORListValKORUnicodeString& viewers;
  KORListValKORUnicodeString& NLSViewers;
};

using Entry = KORLumMethodListEntry;

// One field of the METHOD_LIST entry numbered iIndex: the key iField with
// "%d" replaced by iIndex. Sets oStatus to 0 when the key is declared. When
// oReport is given, records there what was read and where it is declared.
KORUnicodeString ReadEntryField(const KORUnicodeString& iIndex, KeyName iField, int& oStatus,
                                Entry::Field* oReport) {
  KORUnicodeString key(Key(iField).key);
  key.ReplaceSubString("%d", iIndex);
  KORUnicodeString value = KORLumPool::GetStringDec(key, oStatus);
  if (oReport != nullptr) {
    oReport->read = 1;
    oReport->declared = oStatus == 0 ? 1 : 0;
    oReport->value = value;
    KORLumPool::GetDeclaration(key, oReport->file, oReport->line);
    oReport->key = std::move(key);
  }
  return value;
}

// Reads the METHOD_LIST table of the loaded "KORBRIX" resource into ioLists,
// with the rules written out in KORLumSessionFileUtilities.h: entries 1, 2,
// ... up to the first one without WHERE, or the first selected entry without
// COMMAND, TAG or KORAB. When oReport is given, one element per entry read
// records the decision taken on it.
void ReadMethodList(KORLumTrace& ioTrace, const CatalogLists& ioLists,
                    std::vector<Entry>* oReport) {
  // Position of each object's bag, so that the table is read in linear time.
  NamePositions bagOfObject(ioLists.objects);
  for (int n = 1;; ++n) {
    Entry* report = nullptr;
    if (oReport != nullptr) {
      report = &oReport->emplace_back();
      report->index = n;
    }
    const auto field = [report](Entry::Field Entry::*iField) {
      return report != nullptr ? &(report->*iField) : nullptr;
    };
    int status = 0;
    KORUnicodeString index;
    index.BuildFromNum(n, "%d");
    const KORUnicodeString where = ReadEntryField(index, kWhereKey, status, field(&Entry::where));
    if (status != 0) {
      if (report != nullptr) report->decision = Entry::End;
      break;
    }
    KORUnicodeString role = ReadEntryField(index, kRoleKey, status, field(&Entry::role));
    if (status != 0) {  // a missing ROLE only skips the entry
      role.Reset();
      status = 0;
    }
    if (!(IsAccepted(where, kWhereKey) && IsAccepted(role, kRoleKey))) {
      if (report != nullptr) report->decision = Entry::Skipped;
      continue;
    }
    const KORUnicodeString command =
        ReadEntryField(index, kCommandKey, status, field(&Entry::command));
    if (status != 0) {
      if (report != nullptr) report->decision = Entry::Stopped;
      break;
    }
    const KORUnicodeString tag = ReadEntryField(index, kTagKey, status, field(&Entry::tag));
    if (status != 0) {
      if (report != nullptr) report->decision = Entry::Stopped;
      break;
    }

    ioLists.viewers.Append(command);
    ioTrace.Line("[", ioLists.viewers.Size(), "] - Viewer     = [", command, "]");
    KORUnicodeString label;
    if (tag.GetLengthInChar() > 0) {
      label = KORLumSessionFileUtilities::GetNLSMessage(
          Key(kLabelKey).container, Concatenate(tag, Key(kLabelKey).key), KORUnicodeString());
    }
    if (label.GetLengthInChar() == 0) label = command;
    ioLists.NLSViewers.Append(label);
    // The line shows the command, not the label: readers of the trace match
    // the two lines of an entry on it.
    ioTrace.Line("[", ioLists.NLSViewers.Size(), "] - NLS Viewer = [", command, "]");
    if (report != nullptr) {
      report->viewerPosition = ioLists.viewers.Size();
      report->label = label;
    }

    const KORUnicodeString object =
        ReadEntryField(index, kObjectKey, status, field(&Entry::object));
    if (status == 0 && object.GetLengthInChar() >= 1) {
      const int known = bagOfObject.Find(object);
      if (known > 0) {
        ioLists.bags[known].Add(command);  // Add keeps a viewer once per bag
      } else {
        KORListValKORUnicodeString viewers;
        viewers.Append(command);
        ioLists.bags.Append(KORLumViewerBag(object, viewers));
        ioLists.objects.Append(object);
        bagOfObject.Add(object, ioLists.objects.Size());
        KORUnicodeString synonym = KORLumSessionFileUtilities::GetNLSMessage(
            Key(kSynonymKey).container, Concatenate(object, Key(kSynonymKey).key),
            KORUnicodeString());
        if (synonym.GetLengthInChar() == 0) synonym = object;
        if (report != nullptr) {
          report->addsObject = 1;
          report->synonym = synonym;
        }
        ioLists.NLSObjects.Append(synonym);
      }
    }
    // A selected entry without KORAB is the last one read.
    if (status != 0) {
      if (report != nullptr) report->decision = Entry::KeptAndLast;
      break;
    }
    if (report != nullptr) report->decision = Entry::Kept;
  }
}

// The viewer catalogue, read on the first call, without a copy: what
// GetViewers() returns, for the operations that only need the catalogue
// filled or read. Traces as GetViewers() does, under its label.
const KORListValKORUnicodeString& LoadedViewers() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetViewers");
  if (gViewersLoaded) return gViewers;
  // A resource that cannot be loaded leaves the catalogue empty for good.
  if (KORLumPool::LoadPool(Key(kWhereKey).container) == 0) {
    ReadMethodList(trace, {gViewerBags, gObjects, gNLSObjects, gViewers, gNLSViewers}, nullptr);
    gObjectPositions.AddAll();
    gViewerPositions.AddAll();
  }
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
      const KORLumKeyRead& key = Key(kStartUpSessionKey);
      services->GetAdminVariable(value, key.key, key.container);
      gStartUpSession = IsAccepted(value, kStartUpSessionKey) ? 1 : 0;
    }
  }  // the services handle is released here
  trace.Value("isStartUpSession", gStartUpSession);
  return gStartUpSession;
}

KORUnicodeString KORLumSessionFileUtilities::GetBRIXFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetBRIXFilesPath");
  const KORUnicodeString& path = FilesPath(trace, gBRIXFilesPath, kBRIXFilesPath);
  trace.Value("BRIXFilesPath", path);
  return path;
}

KORUnicodeString KORLumSessionFileUtilities::GetGraphFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetGraphFilesPath");
  const KORUnicodeString& path = FilesPath(trace, gGraphFilesPath, kGraphFilesPath);
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
  // Objects are unique in the catalogue, and index for index with the bags.
  const int index = gObjectPositions.Find(iObject);
  if (index > 0) viewers = gViewerBags[index].GetViewers();
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
  // The catalogue object lives for this lookup only, on the heap as the
  // catalogue service expects, and is released on every path.
  const auto catalog = std::make_unique<KORMsgCatalog>(iNLSDictionnary);
  // A missing catalogue or key is not an error for callers: the default
  // stands in for the message. The platform's lookup reports it without
  // raising (a site without translations misses every text), and the
  // catalogue's diagnostic, the one GetMsg would raise with, is built only
  // for the trace line that shows it.
  if (catalog->Find(iNLSMessageKey, &result) != 0) {
    if (trace.IsActive()) trace.Line("Error : ", catalog->DescribeFailure(iNLSMessageKey));
    result = iDefaultNLSMessage;
  }
  trace.Value("NLSMessage", result);
  return result;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSType(const _KORLumSessionFileType iType) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSType");
  trace.Value("iType", iType);
  static const ValueText kListed[] = {{KORLumSessionFileType_Query, kTypeQueryKey, "Query"},
                                      {KORLumSessionFileType_Graph, kTypeGraphKey, "Graph"}};
  static const ValueText kOther = {KORLumSessionFileType_None, kTypeNoneKey, "None"};
  KORUnicodeString NLSType = TranslateValue(trace, iType, kListed, kOther);
  trace.Value("NLSType", NLSType);
  return NLSType;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSLoadMode(
    const _KORLumGraphSessionLoadMode iLoadMode) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSLoadMode");
  trace.Value("iLoadMode", iLoadMode);
  static const ValueText kListed[] = {
      {KORLumGraphSessionLoadMode_Dynamic, kLoadModeDynamicKey, "Dynamic"},
      {KORLumGraphSessionLoadMode_Static, kLoadModeStaticKey, "Static"}};
  static const ValueText kOther = {KORLumGraphSessionLoadMode_None, kLoadModeNoneKey, "None"};
  KORUnicodeString NLSLoadMode = TranslateValue(trace, iLoadMode, kListed, kOther);
  trace.Value("NLSLoadMode", NLSLoadMode);
  return NLSLoadMode;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSInstanceMode(
    const _KORLumGraphSessionInstanceMode iInstanceMode) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSInstanceMode");
  trace.Value("iInstanceMode", iInstanceMode);
  static const ValueText kListed[] = {
      {KORLumGraphSessionInstanceMode_All, kInstanceModeAllKey, "All"},
      {KORLumGraphSessionInstanceMode_Selected, kInstanceModeSelectedKey, "Selected"}};
  static const ValueText kOther = {KORLumGraphSessionInstanceMode_None, kInstanceModeNoneKey,
                                   "None"};
  KORUnicodeString NLSInstanceMode = TranslateValue(trace, iInstanceMode, kListed, kOther);
  trace.Value("NLSInstanceMode", NLSInstanceMode);
  return NLSInstanceMode;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSOption(const unsigned long iOption) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSOption");
  trace.Value("iOption", iOption);
  struct OptionText {
    unsigned long bit;
    KeyName key;
    KORUnicodeString letter;
  };
  static const OptionText kOptions[] = {
      {KORLumSessionFileOption_Report, kOptionReportKey, "R"},
      {KORLumSessionFileOption_Modification, kOptionModificationKey, "M"},
      {KORLumSessionFileOption_Query, kOptionQueryKey, "Q"},
      {KORLumSessionFileOption_CSB, kOptionCSBKey, "C"}};
  static const OptionText kSeparator = {0UL, kOptionSeparatorKey, "+"};
  // The text of each combination of the four bits (the others are ignored),
  // kept from one call to the next: a display line asks for its options twice.
  static KeptText kept[16];
  KeptText& NLSOption = kept[iOption & 15UL];
  const unsigned long stamp = KORMsgCatalog::GetCacheStamp();
  if (!NLSOption.Holds(trace, stamp)) {
    NLSOption.text.Reset();
    const KORUnicodeString& separator = CatalogueText(trace, kSeparator.key, kSeparator.letter);
    for (const OptionText& option : kOptions) {
      if ((iOption & option.bit) == 0) continue;
      if (NLSOption.text.GetLengthInChar() > 0) NLSOption.text.Append(separator);
      // The letter is the lookup's default: a message that builds as empty
      // adds nothing.
      NLSOption.text.Append(CatalogueText(trace, option.key, option.letter));
    }
    NLSOption.stamp = stamp;
  }
  trace.Value("NLSOption", NLSOption.text);
  return NLSOption.text;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSNoFile() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSNoFile");
  KORUnicodeString NLSNoFile = CatalogueText(trace, kFileNoneKey, KORUnicodeString());
  if (NLSNoFile.GetLengthInChar() == 0) NLSNoFile = "None";
  trace.Value("NLSNoFile", NLSNoFile);
  return NLSNoFile;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSNoViewer() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSNoViewer");
  // Never empty once computed: the catalogue is read on the first call only.
  if (gNLSNoViewer.GetLengthInChar() == 0) {
    gNLSNoViewer = CatalogueText(trace, kViewerNoneKey, KORUnicodeString());
    if (gNLSNoViewer.GetLengthInChar() == 0) gNLSNoViewer = "None";
  }
  trace.Value("_NLSNoViewer", gNLSNoViewer);
  return gNLSNoViewer;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSObject(const KORUnicodeString& iObject) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSObject");
  trace.Value("iObject", iObject);
  KORUnicodeString NLSObject = TranslateName(iObject, gObjectPositions, gNLSObjects);
  trace.Value("NLSObject", NLSObject);
  return NLSObject;
}

KORUnicodeString KORLumSessionFileUtilities::GetNLSViewer(const KORUnicodeString& iViewer) {
  KORLumTrace trace("KORLumSessionFileUtilities::GetNLSViewer");
  trace.Value("iViewer", iViewer);
  KORUnicodeString NLSViewer = TranslateName(iViewer, gViewerPositions, gNLSViewers);
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

std::vector<KORLumKeyRead> KORLumSessionFileUtilities::GetKeysRead() {
  KORLumTrace trace("KORLumSessionFileUtilities::GetKeysRead");
  return std::vector<KORLumKeyRead>(std::begin(kKeysRead), std::end(kKeysRead));
}

int KORLumSessionFileUtilities::ExplainViewers(std::vector<KORLumMethodListEntry>& oEntries) {
  KORLumTrace trace("KORLumSessionFileUtilities::ExplainViewers");
  oEntries.clear();
  if (KORLumPool::LoadPool(Key(kWhereKey).container) != 0) return 1;
  KORListValKORLumViewerBag bags;
  KORListValKORUnicodeString objects;
  KORListValKORUnicodeString NLSObjects;
  KORListValKORUnicodeString viewers;
  KORListValKORUnicodeString NLSViewers;
  ReadMethodList(trace, {bags, objects, NLSObjects, viewers, NLSViewers}, &oEntries);
  NamePositions viewerPositions(viewers);
  viewerPositions.AddAll();
  for (KORLumMethodListEntry& entry : oEntries) {
    if (entry.viewerPosition > 0) {
      entry.shownLabel = NameIn(entry.command.value, viewerPositions, NLSViewers);
    }
  }
  trace.Line("Number of viewer(s) = [", viewers.Size(), "]");
  return 0;
}

KORLumPathExplanation KORLumSessionFileUtilities::ExplainBRIXFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::ExplainBRIXFilesPath");
  return ExplainFilesPath(trace, kBRIXFilesPath, "BRIXFilesPath");
}

KORLumPathExplanation KORLumSessionFileUtilities::ExplainGraphFilesPath() {
  KORLumTrace trace("KORLumSessionFileUtilities::ExplainGraphFilesPath");
  return ExplainFilesPath(trace, kGraphFilesPath, "graphFilesPath");
}
