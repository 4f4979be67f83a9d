#include "KORLumSessionFile.h"

// Prepares the standard streams for trace output when the library is loaded.
#include <iostream>
#include <string_view>

#include "KORLumLazyInstance.h"
#include "KORLumSessionFileUtilities.h"
#include "KORLumTrace.h"

namespace {
// The shared no-session-file value, built on the first GetNoSessionFile call.
KORLumLazyInstance<KORLumSessionFile> gNoSessionFile;

// Writes the six arguments of a value constructor as they were passed.
template <typename Viewer>
void TraceArguments(KORLumTrace& ioTrace, const _KORLumSessionFileType iType,
                    const KORUnicodeString& iFile, const Viewer& iViewer,
                    const _KORLumGraphSessionLoadMode iLoadMode,
                    const _KORLumGraphSessionInstanceMode iInstanceMode,
                    const unsigned long iOption) {
  ioTrace.Value("iType", iType);
  ioTrace.Value("iFile", iFile);
  ioTrace.Value("iViewer", iViewer);
  ioTrace.Value("iLoadMode", iLoadMode);
  ioTrace.Value("iInstanceMode", iInstanceMode);
  ioTrace.Value("iOption", iOption);
}

// Puts the default modes, Dynamic and All, in place of 0.
void PutDefaultModes(_KORLumGraphSessionLoadMode& ioLoadMode,
                     _KORLumGraphSessionInstanceMode& ioInstanceMode) {
  if (ioLoadMode == KORLumGraphSessionLoadMode_None)
    ioLoadMode = KORLumGraphSessionLoadMode_Dynamic;
  if (ioInstanceMode == KORLumGraphSessionInstanceMode_None) {
    ioInstanceMode = KORLumGraphSessionInstanceMode_All;
  }
}
}  // namespace

KORLumSessionFile::KORLumSessionFile()
    : _type(KORLumSessionFileType_None),
      _viewerDef(KORLumViewerDef::GetNoViewerDef()),
      _loadMode(KORLumGraphSessionLoadMode_Dynamic),
      _instanceMode(KORLumGraphSessionInstanceMode_All),
      _option(0) {
  KORLumTrace trace("KORLumSessionFile::KORLumSessionFile");
}

// Both six-argument constructors trace under "KORLumSessionFile::KORLumSessionFile 2":
// for whoever reads the trace they are one operation, building a session file
// from its six properties, whichever form the viewer was given in; the shared
// label is what trace readers have always looked for and is kept.
KORLumSessionFile::KORLumSessionFile(const _KORLumSessionFileType iType,
                                     const KORUnicodeString& iFile, const KORLumViewerDef& iViewer,
                                     const _KORLumGraphSessionLoadMode iLoadMode,
                                     const _KORLumGraphSessionInstanceMode iInstanceMode,
                                     const unsigned long iOption)
    : _type(iType),
      _file(iFile),
      _viewerDef(iViewer),
      _loadMode(iLoadMode),
      _instanceMode(iInstanceMode),
      _option(iOption) {
  KORLumTrace trace("KORLumSessionFile::KORLumSessionFile 2");
  TraceArguments(trace, iType, iFile, iViewer, iLoadMode, iInstanceMode, iOption);
  _viewer.Reset();
  if (_type == KORLumSessionFileType_None) {
    _file.Reset();
    _viewerDef = KORLumViewerDef::GetNoViewerDef();
    _loadMode = KORLumGraphSessionLoadMode_None;
    _instanceMode = KORLumGraphSessionInstanceMode_None;
  }
  // After the None reset on purpose: a None value ends with the default modes.
  PutDefaultModes(_loadMode, _instanceMode);
}

KORLumSessionFile::KORLumSessionFile(const _KORLumSessionFileType iType,
                                     const KORUnicodeString& iFile, const KORUnicodeString& iViewer,
                                     const _KORLumGraphSessionLoadMode iLoadMode,
                                     const _KORLumGraphSessionInstanceMode iInstanceMode,
                                     const unsigned long iOption)
    : _type(iType),
      _file(iFile),
      _viewerDef(KORLumViewerDef::GetNoViewerDef()),
      _viewer(iViewer),
      _loadMode(iLoadMode),
      _instanceMode(iInstanceMode),
      _option(iOption) {
  KORLumTrace trace("KORLumSessionFile::KORLumSessionFile 2");
  TraceArguments(trace, iType, iFile, iViewer, iLoadMode, iInstanceMode, iOption);
  if (_type == KORLumSessionFileType_None) {
    _file.Reset();
    _viewer.Reset();
    _loadMode = KORLumGraphSessionLoadMode_None;
    _instanceMode = KORLumGraphSessionInstanceMode_None;
  }
  // After the None reset on purpose: a None value ends with the default modes.
  PutDefaultModes(_loadMode, _instanceMode);
}

KORLumSessionFile::KORLumSessionFile(const KORLumSessionFile& iCopy)
    : _type(iCopy._type),
      _file(iCopy._file),
      _viewerDef(iCopy._viewerDef),
      _viewer(iCopy._viewer),
      _loadMode(iCopy._loadMode),
      _instanceMode(iCopy._instanceMode),
      _option(iCopy._option) {
  KORLumTrace trace("KORLumSessionFile::KORLumSessionFile (KORLumSessionFile)");
  trace.Value("_type", _type);
  trace.Value("_file", _file);
  trace.Value("_viewer", _viewer);
  trace.Value("_viewerDef", _viewerDef);
  trace.Value("_loadMode", _loadMode);
  trace.Value("_instanceMode", _instanceMode);
  trace.Value("_option", _option);
}

KORLumSessionFile::~KORLumSessionFile() {
  KORLumTrace trace("KORLumSessionFile::~KORLumSessionFile");
}

// The labels of operator= and operator== end with a blank, here and in
// KORLumSessionFileDef, unlike those of the viewer classes: they are the
// labels under which the session-file classes have always traced these
// operators, and trace readers match them with the blank, so it is kept.
KORLumSessionFile& KORLumSessionFile::operator=(const KORLumSessionFile& iCopy) {
  KORLumTrace trace("KORLumSessionFile::operator = ");
  iCopy.TraceAsOperand(trace);
  _type = iCopy._type;
  _file = iCopy._file;
  _viewer = iCopy._viewer;
  _viewerDef = iCopy._viewerDef;
  _loadMode = iCopy._loadMode;
  _instanceMode = iCopy._instanceMode;
  _option = iCopy._option;
  return *this;
}

int KORLumSessionFile::operator==(const KORLumSessionFile& iOther) const {
  KORLumTrace trace("KORLumSessionFile::operator == ");
  iOther.TraceAsOperand(trace);
  const int isEqual =
      (_type == iOther._type && _file == iOther._file && _viewer == iOther._viewer &&
       _viewerDef == iOther._viewerDef && _loadMode == iOther._loadMode &&
       _instanceMode == iOther._instanceMode && _option == iOther._option)
          ? 1
          : 0;
  trace.Value("isEqual", isEqual);
  return isEqual;
}

int KORLumSessionFile::operator!=(const KORLumSessionFile& iOther) const {
  KORLumTrace trace("KORLumSessionFile::operator !=");
  const int isDifferent = (*this == iOther) ? 0 : 1;
  trace.Value("isDifferent", isDifferent);
  return isDifferent;
}

_KORLumSessionFileType KORLumSessionFile::GetType() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetType", "_type", _type);
}

const KORUnicodeString& KORLumSessionFile::GetFile() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetFile", "_file", _file);
}

const KORLumViewerDef& KORLumSessionFile::GetViewerDef() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetViewerDef", "_viewerDef", _viewerDef);
}

const KORUnicodeString& KORLumSessionFile::GetViewer() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetViewer", "_viewer", _viewer);
}

_KORLumGraphSessionLoadMode KORLumSessionFile::GetLoadMode() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetLoadMode", "_loadMode", _loadMode);
}

_KORLumGraphSessionInstanceMode KORLumSessionFile::GetInstanceMode() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetInstanceMode", "_instanceMode", _instanceMode);
}

unsigned long KORLumSessionFile::GetOption() const {
  return KORLumTrace::Getter("KORLumSessionFile::GetOption", "_option", _option);
}

const KORLumSessionFile& KORLumSessionFile::GetNoSessionFile() {
  KORLumTrace trace("KORLumSessionFile::GetNoSessionFile");
  if (!gNoSessionFile.IsCreated()) {
    gNoSessionFile.Create(KORLumSessionFileType_None, KORUnicodeString(),
                          KORLumViewerDef::GetNoViewerDef(), KORLumGraphSessionLoadMode_Dynamic,
                          KORLumGraphSessionInstanceMode_All, 0UL);
  }
  return gNoSessionFile.Get();
}

void KORLumSessionFile::TraceAsOperand(KORLumTrace& ioTrace) const {
  ioTrace.Line("Type          = [", _type, "]");
  ioTrace.Line("File          = [", _file, "]");
  ioTrace.Line("Viewer        = [", _viewer, "]");
  ioTrace.Line("ViewerDef     = [", _viewerDef, "]");
  ioTrace.Line("Load mode     = [", _loadMode, "]");
  ioTrace.Line("Instance mode = [", _instanceMode, "]");
  ioTrace.Line("Option        = [", _option, "]");
}

// --- Display line and string form ---------------------------------------------------

KORUnicodeString KORLumSessionFile::GetNLS() const {
  KORLumTrace trace("KORLumSessionFile::GetNLS");
  // The templates and their fields, built once rather than at every line.
  static const KORUnicodeString kType("%t");
  static const KORUnicodeString kFile("%f");
  static const KORUnicodeString kViewer("%v");
  static const KORUnicodeString kLoadMode("%l");
  static const KORUnicodeString kInstanceMode("%i");
  static const KORUnicodeString kOption("%o");
  static const KORUnicodeString kOptionField(" [%o]");
  static const KORUnicodeString kQueryTemplate("%t : %f");
  static const KORUnicodeString kGraphTemplate("%t : %f [%v] [%l] [%i]");
  KORUnicodeString formattedString;
  if (_type == KORLumSessionFileType_None) {
    formattedString = kType;  // the template of None is the type field alone
    formattedString.ReplaceSubString(kType, GetNLSType());
  } else if (_type == KORLumSessionFileType_Query) {
    formattedString = kQueryTemplate;
    formattedString.ReplaceSubString(kType, GetNLSType());
    formattedString.ReplaceSubString(kFile, GetNLSFile());
  } else {
    // The texts of the fields, asked for in the order in which the line
    // replaces the fields, which is the order of their trace lines.
    const bool hasOption = GetNLSOption().GetLengthInChar() > 0;
    const KORUnicodeString type = GetNLSType();
    const KORUnicodeString file = GetNLSFile();
    // GetNLSViewer() is never empty (it gives the "no viewer" text when there
    // is no viewer name), so a session file named by a viewer definition shows
    // the "no viewer" text here: the display line names a viewer only when the
    // user picked one by name. The string form shows the definition instead.
    // The else branch therefore never runs. It is kept on purpose: the test
    // is the display line's rule (the viewer text, or the definition when
    // that text is empty), its first GetNLSViewer() call belongs to the
    // line's trace, and the rule must hold as written should GetNLSViewer()
    // ever give an empty text.
    const KORUnicodeString viewer =
        GetNLSViewer().GetLengthInChar() != 0 ? GetNLSViewer() : GetNLSViewerDef();
    const KORUnicodeString loadMode = GetNLSLoadMode();
    const KORUnicodeString instanceMode = GetNLSInstanceMode();
    const KORUnicodeString option = GetNLSOption();
    // Replacing the fields one after another fills each where the template
    // has it, and the line is written in one pass, template text and field
    // texts appended in turn; unless a text holds a field itself, which
    // only a text with a "%" can do (the template's own text has none).
    static const KORUnicodeString kTypeEnd(" : ");
    static const KORUnicodeString kFieldStart(" [");
    static const KORUnicodeString kFieldSeparator("] [");
    static const KORUnicodeString kFieldEnd("]");
    formattedString.Reserve(type.GetLengthInByte() + kTypeEnd.GetLengthInByte() +
                            file.GetLengthInByte() + kFieldStart.GetLengthInByte() +
                            viewer.GetLengthInByte() + 3 * kFieldSeparator.GetLengthInByte() +
                            loadMode.GetLengthInByte() + instanceMode.GetLengthInByte() +
                            option.GetLengthInByte() + kFieldEnd.GetLengthInByte());
    formattedString.Append(type).Append(kTypeEnd).Append(file);
    formattedString.Append(kFieldStart).Append(viewer);
    formattedString.Append(kFieldSeparator).Append(loadMode);
    formattedString.Append(kFieldSeparator).Append(instanceMode);
    if (hasOption) formattedString.Append(kFieldSeparator).Append(option);
    formattedString.Append(kFieldEnd);
    if (formattedString.View().find('%') != std::string_view::npos) {
      // Inserted texts are not escaped: a field written in a text inserted
      // before it (a file named "%l.hub") is replaced as well.
      formattedString = kGraphTemplate;
      if (hasOption) formattedString.Append(kOptionField);
      formattedString.ReplaceSubString(kType, type);
      formattedString.ReplaceSubString(kFile, file);
      formattedString.ReplaceSubString(kViewer, viewer);
      formattedString.ReplaceSubString(kLoadMode, loadMode);
      formattedString.ReplaceSubString(kInstanceMode, instanceMode);
      formattedString.ReplaceSubString(kOption, option);
    }
  }
  trace.Value("formattedString", formattedString);
  return formattedString;
}

KORUnicodeString KORLumSessionFile::GetNLSType() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSType");
  return KORLumSessionFileUtilities::GetNLSType(_type);
}

KORUnicodeString KORLumSessionFile::GetNLSFile() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSFile");
  // Paths of up to 32 characters are shown whole. A longer one keeps its
  // base name whole and as much of its head as fits in 32 characters with
  // the base name, with ".../" in place of the rest.
  constexpr int kShownWhole = 32;
  static const KORUnicodeString kSlash("/");
  static const KORUnicodeString kElision(".../");
  const KORUnicodeString& file = _file;
  const int length = file.GetLengthInChar();
  if (length <= kShownWhole) return file;
  const int lastSlash = file.FindLast(kSlash);
  if (lastSlash <= 0) return file;
  const int baseLength = length - lastSlash - 1;
  KORUnicodeString shortened;
  if (baseLength < kShownWhole) shortened = file.SubString(0, kShownWhole - baseLength);
  shortened.Append(kElision);
  shortened.Append(file.SubString(lastSlash + 1, baseLength));
  return shortened;
}

KORUnicodeString KORLumSessionFile::GetNLSViewerDef() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSViewerDef");
  if (_viewerDef != KORLumViewerDef::GetNoViewerDef()) {
    KORUnicodeString text = KORLumSessionFileUtilities::GetNLSObject(_viewerDef.GetObject());
    text.Append(".");
    text.Append(KORLumSessionFileUtilities::GetNLSViewer(_viewerDef.GetViewer()));
    return text;
  }
  return KORLumSessionFileUtilities::GetNLSNoViewer();
}

// Traced under the label of GetNLSViewerDef: the two are one display step,
// the viewer of the line, for whoever reads the trace.
KORUnicodeString KORLumSessionFile::GetNLSViewer() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSViewerDef");
  if (_viewer.GetLengthInChar() >= 1) return KORLumSessionFileUtilities::GetNLSViewer(_viewer);
  return KORLumSessionFileUtilities::GetNLSNoViewer();
}

KORUnicodeString KORLumSessionFile::GetNLSLoadMode() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSLoadMode");
  return KORLumSessionFileUtilities::GetNLSLoadMode(_loadMode);
}

KORUnicodeString KORLumSessionFile::GetNLSInstanceMode() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSInstanceMode");
  return KORLumSessionFileUtilities::GetNLSInstanceMode(_instanceMode);
}

KORUnicodeString KORLumSessionFile::GetNLSOption() const {
  KORLumTrace trace("KORLumSessionFile::GetNLSOption");
  return KORLumSessionFileUtilities::GetNLSOption(_option);
}

KORUnicodeString KORLumSessionFile::ConvertToString() const {
  KORLumTrace trace("KORLumSessionFile::ConvertToString");
  KORUnicodeString formattedString;
  KORUnicodeString number;
  number.BuildFromNum(static_cast<int>(_type), "%d");
  formattedString.Append(number);
  if (_type == KORLumSessionFileType_Query) {
    formattedString.Append(" : ");
    formattedString.Append(_file);
  } else if (_type != KORLumSessionFileType_None) {
    formattedString.Append(" : ");
    formattedString.Append(_file);
    formattedString.Append(" [");
    formattedString.Append(_viewer.GetLengthInChar() > 0 ? _viewer : _viewerDef.ConvertToString());
    formattedString.Append("] [");
    number.BuildFromNum(static_cast<int>(_loadMode), "%d");
    formattedString.Append(number);
    formattedString.Append("] [");
    number.BuildFromNum(static_cast<int>(_instanceMode), "%d");
    formattedString.Append(number);
    formattedString.Append("] [");
    number.BuildFromNum(_option, "%lu");
    formattedString.Append(number);
    formattedString.Append("]");
  }
  trace.Value("formattedString", formattedString);
  return formattedString;
}

KORLumSessionFile::operator KORUnicodeString() const {
  KORLumTrace trace("KORLumSessionFile::operator KORUnicodeString");
  return ConvertToString();
}
