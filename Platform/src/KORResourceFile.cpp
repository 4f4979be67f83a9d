#include "KORResourceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "KORPositionIndex.h"

// The padding the analyser reports is the cache line of `expected` (last
// member): it keeps the guess that every lookup writes apart from what the
// lookups only read.
struct kor_detail::ResourceFileContent {  // NOLINT(clang-analyzer-optin.performance.Padding)
  // The key at iPosition (a view into keyText).
  [[nodiscard]] std::string_view KeyOf(std::size_t iPosition) const noexcept {
    const std::size_t begin = iPosition == 0 ? 0 : keyEnds[iPosition - 1];
    return std::string_view(keyText.data() + begin, keyEnds[iPosition] - begin);
  }

  // The test that tells the index whether the key at a 1-based position is
  // iKey.
  [[nodiscard]] auto IsKeyAt(std::string_view iKey) const {
    return
        [this, iKey](KORPositionIndex::Position iPosition) { return KeyOf(iPosition - 1) == iKey; };
  }

  // The position of iKey in the file's distinct keys (0 for the first), or
  // values.size() when the file does not declare it.
  [[nodiscard]] std::size_t PositionOf(std::string_view iKey) const {
    const KORPositionIndex::Position position =
        index.Find(KORPositionIndex::HashOf(iKey), IsKeyAt(iKey));
    return position == 0 ? values.size() : position - 1;
  }

  KORResourceFile::State state = KORResourceFile::Absent;
  // Whether the file could not be read for a reason that is not the file's.
  bool transient = false;
  // What the bytes of the file are, and the first line that is not UTF-8.
  KORResourceFile::Encoding encoding = KORResourceFile::Utf8;
  int illFormedLine = 0;
  KORString fileName;
  // The value of the key at iPosition as a platform string, made on the
  // first request (most keys of a large file are never asked for) and kept:
  // the pointer stays valid as long as the content lives. Null when memory
  // runs out.
  [[nodiscard]] const KORUnicodeString* TextOf(std::size_t iPosition) const noexcept {
    std::atomic<const KORUnicodeString*>& made = texts[iPosition];
    const KORUnicodeString* text = made.load(std::memory_order_acquire);
    if (text != nullptr) return text;
    const Value& value = values[iPosition];
    const KORUnicodeString* mine =
        new (std::nothrow) KORUnicodeString(valueText.data() + value.begin, value.length);
    if (mine == nullptr) return nullptr;
    // Threads sharing the content may race to make it: the first one wins.
    if (made.compare_exchange_strong(text, mine, std::memory_order_acq_rel,
                                     std::memory_order_acquire)) {
      return mine;
    }
    delete mine;
    return text;
  }

  ResourceFileContent() = default;
  ResourceFileContent(const ResourceFileContent&) = delete;
  ResourceFileContent& operator=(const ResourceFileContent&) = delete;
  ~ResourceFileContent() {
    for (std::size_t i = 0; i < values.size() && texts; ++i) delete texts[i].load();
  }

  // Where a value's bytes are in valueText.
  struct Value {
    std::uint32_t begin;
    std::uint32_t length;
  };

  // The distinct keys in the order of their first declaration, kept compact
  // so that large files stay within the processor's caches and take little
  // more memory than their text: the keys one after the other in keyText
  // (key i ends at keyEnds[i] and starts where the previous one ends), and
  // the bytes of each key's last value in valueText, index for index. A key
  // declared again gets its new value in the place of the old one when it
  // fits, so that a file of repeated declarations costs no more than one of
  // each. The platform strings that Find hands out are made from those bytes
  // on first request.
  std::string keyText;
  std::vector<std::uint32_t> keyEnds;
  std::string valueText;
  std::vector<Value> values;
  // The line of each key's last declaration, index for index (in blocks, so
  // that growing never holds two copies).
  std::deque<std::uint32_t> lines;
  // The value of each key once made (null until then); sized when the
  // content is complete.
  mutable std::unique_ptr<std::atomic<const KORUnicodeString*>[]> texts;
  // Each key's position, 1-based (empty for a file without declarations).
  KORPositionIndex index;
  // The first problems met, in line order (the file name is put before
  // each when they are listed), and how many more there were.
  std::vector<KORResourceProblem> problems;
  std::size_t problemsNotKept = 0;
  // The position just after the key Find gave last: where Find looks first.
  // Tables are mostly read in the order they are written, and that place is
  // next to what the previous lookup touched, whereas the index place of a
  // key is anywhere in a table that a large file makes larger than the
  // caches. Any value is a valid guess, checked before use, so the threads
  // that share the content may update it without ordering. On a cache line
  // of its own, so that writing it does not take from the other threads the
  // lines that they only read.
  alignas(64) mutable std::atomic<std::size_t> expected{0};
};

namespace {

using Content = kor_detail::ResourceFileContent;

bool IsBlank(char iChar) { return iChar == ' ' || iChar == '\t'; }

std::string_view TrimBlanks(std::string_view iText) {
  std::size_t begin = 0;
  std::size_t end = iText.size();
  while (begin < end && IsBlank(iText[begin])) ++begin;
  while (end > begin && IsBlank(iText[end - 1])) --end;
  return iText.substr(begin, end - begin);
}

// The largest file that is read, and the most problems kept for one file:
// loading then takes at most about twice the file's size, whatever it holds.
constexpr std::size_t kMaxFileSize = std::size_t{256} << 20;
constexpr std::size_t kMaxProblemsKept = 100;

void AddProblem(Content& ioContent, int iLine, std::string_view iReason) {
  if (ioContent.problems.size() >= kMaxProblemsKept) {
    ++ioContent.problemsNotKept;
    return;
  }
  ioContent.problems.push_back({iLine, std::string(iReason)});
}

// Decodes the quoted value iQuoted (which starts with '"') into oValue.
// Returns an empty string on success, else the reason the value is malformed.
std::string DecodeQuoted(std::string_view iQuoted, std::string& oValue) {
  oValue.clear();
  std::size_t position = 1;
  while (true) {
    const std::size_t special = iQuoted.find_first_of("\"\\", position);
    if (special == std::string_view::npos) {
      return "unterminated quoted value (no closing '\"')";
    }
    oValue.append(iQuoted.data() + position, special - position);
    if (iQuoted[special] == '"') {
      if (special + 1 != iQuoted.size()) return "text after the closing '\"' of a quoted value";
      return std::string();
    }
    if (special + 1 == iQuoted.size()) {
      return "unterminated quoted value (no closing '\"')";
    }
    const char escaped = iQuoted[special + 1];
    switch (escaped) {
      case '"':
        oValue += '"';
        break;
      case '\\':
        oValue += '\\';
        break;
      case 'n':
        oValue += '\n';
        break;
      case 't':
        oValue += '\t';
        break;
      default:
        return std::string("unknown escape '\\") + escaped +
               "' in a quoted value (only \\\" \\\\ \\n \\t are allowed)";
    }
    position = special + 2;
  }
}

// The declarations of a file while it is parsed: the content they go into,
// and the last few declarations read, not added yet.
//
// A declaration is added where the index has its key, a place anywhere in an
// index that a large file makes larger than the processor's caches. So the
// declarations of plain lines (an ASCII key, an unquoted value) are read a
// few at a time: the place of each is fetched from memory as soon as its
// line is read, and the declarations are added together once those places
// have arrived, in line order. Whatever else a line gives (a problem, a
// quoted value, a key to make valid UTF-8) first adds the waiting ones, so
// that declarations and problems are still recorded in line order.
struct Declarations {
  explicit Declarations(Content& ioContent) : content(ioContent) {}

  struct Waiting {
    std::string_view key;    // views into the text being parsed
    std::string_view value;  // as read
    KORPositionIndex::Hash hash;
    int number;
  };
  static constexpr std::size_t kWaitingMost = 16;

  Content& content;
  std::string scratch;  // a decoded quoted value
  std::array<Waiting, kWaitingMost> waiting{};
  std::size_t waitingCount = 0;
};

// Records the declaration iKey = iValue of line iNumber (iValue as read, iKey
// valid UTF-8, iHash its hash); a key declared before gets the new value,
// and the duplicate is recorded.
void AddDeclaration(Content& content, std::string_view iKey, KORPositionIndex::Hash iHash,
                    std::string_view iValue, int iNumber) {
  const KORPositionIndex::Position declared =
      content.index.FindOrAdd(iHash, content.IsKeyAt(iKey),
                              static_cast<KORPositionIndex::Position>(content.values.size() + 1));
  if (declared != 0) {
    const std::size_t position = declared - 1;
    std::string reason("key \"");
    reason.append(iKey)
        .append("\" declared again (previously at line ")
        .append(std::to_string(content.lines[position]))
        .append("): the last declaration wins");
    AddProblem(content, iNumber, reason);
    Content::Value& value = content.values[position];
    if (iValue.size() <= value.length) {
      content.valueText.replace(value.begin, iValue.size(), iValue);
      value.length = static_cast<std::uint32_t>(iValue.size());
    } else {
      value = {static_cast<std::uint32_t>(content.valueText.size()),
               static_cast<std::uint32_t>(iValue.size())};
      content.valueText.append(iValue);
    }
    content.lines[position] = static_cast<std::uint32_t>(iNumber);
    return;
  }
  content.keyText.append(iKey);
  content.keyEnds.push_back(static_cast<std::uint32_t>(content.keyText.size()));
  content.values.push_back({static_cast<std::uint32_t>(content.valueText.size()),
                            static_cast<std::uint32_t>(iValue.size())});
  content.valueText.append(iValue);
  content.lines.push_back(static_cast<std::uint32_t>(iNumber));
}

// Adds the declarations waiting in ioDeclarations, in line order.
void AddWaiting(Declarations& ioDeclarations) {
  for (std::size_t i = 0; i < ioDeclarations.waitingCount; ++i) {
    const Declarations::Waiting& waiting = ioDeclarations.waiting[i];
    AddDeclaration(ioDeclarations.content, waiting.key, waiting.hash, waiting.value,
                   waiting.number);
  }
  ioDeclarations.waitingCount = 0;
}

// Records the problem of line iNumber, after the declarations of the lines
// before it.
void AddLineProblem(Declarations& ioDeclarations, int iNumber, std::string_view iReason) {
  AddWaiting(ioDeclarations);
  AddProblem(ioDeclarations.content, iNumber, iReason);
}

// Parses one line (without its line end) into ioDeclarations. A plain
// declaration may be left waiting, its key and value viewing iLine: the
// caller adds what waits before that text goes.
void ParseLine(Declarations& ioDeclarations, std::string_view iLine, int iNumber) {
  if (std::memchr(iLine.data(), '\0', iLine.size()) != nullptr) {
    AddLineProblem(ioDeclarations, iNumber, "NUL byte in the line");
    return;
  }
  const std::string_view text = TrimBlanks(iLine);
  if (text.empty() || text[0] == '#' || text[0] == '!') return;

  const std::size_t equal = text.find('=');
  if (equal == std::string_view::npos) {
    AddLineProblem(ioDeclarations, iNumber, "no '=' between a key and a value");
    return;
  }
  std::string_view key = TrimBlanks(text.substr(0, equal));
  if (key.empty()) {
    AddLineProblem(ioDeclarations, iNumber, "empty key before '='");
    return;
  }
  if (std::find_if(key.begin(), key.end(), IsBlank) != key.end()) {
    AddLineProblem(ioDeclarations, iNumber,
                   std::string("blank inside the key \"").append(key).append("\""));
    return;
  }
  const std::string_view value = TrimBlanks(text.substr(equal + 1));
  const bool quoted = !value.empty() && value[0] == '"';
  const bool ascii = std::all_of(
      key.begin(), key.end(), [](char iChar) { return static_cast<unsigned char>(iChar) < 0x80; });
  if (!quoted && ascii) {
    const KORPositionIndex::Hash hash = KORPositionIndex::HashOf(key);
    ioDeclarations.content.index.Prefetch(hash);
    ioDeclarations.waiting[ioDeclarations.waitingCount++] = {key, value, hash, iNumber};
    if (ioDeclarations.waitingCount == Declarations::kWaitingMost) AddWaiting(ioDeclarations);
    return;
  }
  AddWaiting(ioDeclarations);
  // The key is kept as valid UTF-8, as every text of the platform is: bytes
  // that are not become U+FFFD, so that Find compares with what callers hold.
  std::string sanitized;
  if (!ascii) {
    sanitized = std::string(KORUnicodeString(key.data(), key.size()).View());
    key = sanitized;
  }
  const KORPositionIndex::Hash hash = KORPositionIndex::HashOf(key);
  if (quoted) {
    const std::string reason = DecodeQuoted(value, ioDeclarations.scratch);
    if (!reason.empty()) {
      AddProblem(ioDeclarations.content, iNumber, reason);
      return;
    }
    AddDeclaration(ioDeclarations.content, key, hash, ioDeclarations.scratch, iNumber);
  } else {
    AddDeclaration(ioDeclarations.content, key, hash, value, iNumber);
  }
}

// Parses the lines of iText, numbering them from ioNumber + 1, and returns
// how many bytes they took. When iFinal is false, the text after the last
// line end is an unfinished line, left for the next call (with more text
// after it); when true, it is the file's last line.
std::size_t ParseLines(Declarations& ioDeclarations, std::string_view iText, int& ioNumber,
                       bool iFinal) {
  constexpr std::string_view kByteOrderMark("\xEF\xBB\xBF");
  Content& content = ioDeclarations.content;
  // UTF-16 text of a resource file has a NUL byte beside nearly every ASCII
  // character: a NUL among the first bytes, or a UTF-16 byte-order mark,
  // tells it.
  if (ioNumber == 0) {
    const std::string_view start = iText.substr(0, 4096);
    if (start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF" ||
        start.find('\0') != std::string_view::npos) {
      content.encoding = KORResourceFile::Utf16;
    }
  }
  std::size_t consumed = 0;
  while (consumed < iText.size()) {
    const std::string_view rest = iText.substr(consumed);
    const void* newline = std::memchr(rest.data(), '\n', rest.size());
    if (newline == nullptr && !iFinal) break;
    const std::size_t length =
        newline ? static_cast<std::size_t>(static_cast<const char*>(newline) - rest.data())
                : rest.size();
    std::string_view line = rest.substr(0, length);
    consumed += newline ? length + 1 : length;
    ++ioNumber;
    if (ioNumber == 1 && line.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
      line.remove_prefix(kByteOrderMark.size());
    }
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (content.encoding == KORResourceFile::Utf8 &&
        KORUnicodeString::FindIllFormed(line) != std::string_view::npos) {
      content.encoding = KORResourceFile::EightBit;
      content.illFormedLine = ioNumber;
    }
    ParseLine(ioDeclarations, line, ioNumber);
  }
  AddWaiting(ioDeclarations);  // they view iText
  return consumed;
}

// Makes room for the text of a file of iSize bytes: its keys and values never
// take more (room that is not written costs no memory), so that they are
// never copied to grow.
void Prepare(Content& ioContent, std::size_t iSize) {
  ioContent.keyText.reserve(iSize);
  ioContent.valueText.reserve(iSize);
}

// Makes room for the keys of a file of iSize bytes whose first iParsed
// bytes declared the keys already in ioContent, supposing that the rest of
// the file declares keys as densely: the index and the tables of keys and
// values are then made once at their size, instead of growing by doubling,
// which in a large file copies them again and again, each time a table
// larger than the caches. (At most what a file of that density needs, as
// growing would make; less, since growing holds the old and the new table.)
void Anticipate(Content& ioContent, std::size_t iParsed, std::size_t iSize) {
  const std::size_t keys = ioContent.values.size();
  if (iParsed == 0 || keys == 0 || iSize <= iParsed) return;
  const std::size_t expected =
      keys +
      static_cast<std::size_t>(static_cast<double>(keys) * static_cast<double>(iSize - iParsed) /
                               static_cast<double>(iParsed));
  ioContent.index.Reserve(expected);
  ioContent.keyEnds.reserve(expected);
  ioContent.values.reserve(expected);
}

// Completes the content once every line is parsed.
void Complete(Content& ioContent) {
  ioContent.texts =
      std::make_unique<std::atomic<const KORUnicodeString*>[]>(ioContent.values.size());
}

void ParseInto(Content& ioContent, std::string_view iText) {
  Prepare(ioContent, iText.size());
  Declarations declarations(ioContent);
  int number = 0;
  (void)ParseLines(declarations, iText, number, true);
  Complete(ioContent);
}

// Whether the error iError of a system call says nothing about the file
// itself: the process or the system lacks something for now, and a later
// attempt may succeed.
bool IsTransient(int iError, bool iReading) {
  switch (iError) {
    case EMFILE:
    case ENFILE:
    case ENOMEM:
    case ENOBUFS:
    case EAGAIN:
    case EINTR:
      return true;
    case EIO:
      return iReading;
    default:
      return false;
  }
}

// Why a file cannot be read, for the error iError of a system call.
std::string CannotBeRead(int iError, bool iReading, bool& oTransient) {
  oTransient = IsTransient(iError, iReading);
  if (oTransient) {
    return std::string("cannot be read for now (") + std::strerror(iError) +
           "): the failure is not the file's, and it is read again when next needed";
  }
  return std::string("cannot be read (") + std::strerror(iError) + ")";
}

// Reads the iSize bytes of the open file iDescriptor (fewer if it shrinks,
// never more if it grows) and parses them into ioContent, a piece at a time:
// only an unfinished line is kept from one piece to the next, so that the
// file's text is never held whole beside what it declares. Returns an empty
// string on success, else why the file cannot be read (oTransient when that
// is not the file's failure).
std::string ReadAndParse(int iDescriptor, std::size_t iSize, Content& ioContent, bool& oTransient) {
  constexpr std::size_t kPiece = std::size_t{1} << 20;
  Prepare(ioContent, iSize);
  Declarations declarations(ioContent);
  int number = 0;
  std::string buffer(std::min(iSize, kPiece), '\0');
  std::size_t carried = 0;  // the unfinished line at the start of buffer
  std::size_t parsed = 0;   // the bytes of the lines parsed so far
  std::size_t remaining = iSize;
  while (remaining > 0) {
    if (carried == buffer.size()) {
      // One line fills the buffer: room for more of it, never beyond what
      // is left of the file.
      buffer.resize(std::min(2 * buffer.size(), carried + remaining));
    }
    const ssize_t count =
        ::read(iDescriptor, &buffer[carried], std::min(buffer.size() - carried, remaining));
    if (count < 0) {
      if (errno == EINTR) continue;
      return CannotBeRead(errno, true, oTransient);
    }
    if (count == 0) break;  // the file shrank since it was opened
    remaining -= static_cast<std::size_t>(count);
    const std::string_view text(buffer.data(), carried + static_cast<std::size_t>(count));
    const std::size_t consumed = ParseLines(declarations, text, number, remaining == 0);
    if (parsed == 0) Anticipate(ioContent, consumed, iSize);
    parsed += consumed;
    carried = text.size() - consumed;
    if (carried > 0 && consumed > 0) std::memmove(&buffer[0], &buffer[consumed], carried);
  }
  if (carried > 0) {
    (void)ParseLines(declarations, std::string_view(buffer.data(), carried), number, true);
  }
  Complete(ioContent);
  return std::string();
}

// Reads and parses the regular file at iPath into ioContent, up to the size
// it had when it was opened (a file that grows while it is read is read no
// further). Returns an empty string on success, else why it cannot be read;
// sets oAbsent when nothing is there, oTransient when the failure is not the
// file's.
std::string LoadFile(const char* iPath, Content& ioContent, bool& oAbsent, bool& oTransient) {
  oAbsent = false;
  oTransient = false;
  // O_NONBLOCK: opening a FIFO must not wait for a writer.
  const int descriptor = ::open(iPath, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) {
    const int error = errno;
    if (error == ENOENT || error == ENOTDIR) {
      oAbsent = true;
      return "no such file";
    }
    return CannotBeRead(error, false, oTransient);
  }
  std::string reason;
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) {
    reason = CannotBeRead(errno, false, oTransient);
  } else if (S_ISDIR(status.st_mode)) {
    reason = "is a directory, not a file";
  } else if (!S_ISREG(status.st_mode)) {
    reason = "is not a regular file";
  } else if (static_cast<std::uintmax_t>(status.st_size) > kMaxFileSize) {
    reason = "is too large to be read (" + std::to_string(status.st_size) +
             " bytes; at most 256 MiB are read)";
  } else {
    ioContent.state = KORResourceFile::Loaded;
    reason =
        ReadAndParse(descriptor, static_cast<std::size_t>(status.st_size), ioContent, oTransient);
  }
  ::close(descriptor);
  return reason;
}

}  // namespace

KORResourceFile::KORResourceFile() : _content(std::make_shared<const Content>()) {}

KORResourceFile::KORResourceFile(std::shared_ptr<const Content> iContent) noexcept
    : _content(std::move(iContent)) {}

KORResourceFile::~KORResourceFile() = default;

KORResourceFile KORResourceFile::Load(const char* iPath) {
  auto content = std::make_shared<Content>();
  content->fileName = KORString(iPath);
  if (iPath == nullptr || *iPath == '\0') return KORResourceFile(std::move(content));
  std::string reason;
  bool absent = false;
  bool transient = false;
  try {
    reason = LoadFile(iPath, *content, absent, transient);
  } catch (const std::bad_alloc&) {
    reason = CannotBeRead(ENOMEM, true, transient);
  }
  if (absent) {
    content->state = Absent;
  } else if (!reason.empty()) {
    // What was parsed before the failure is dropped: nothing of it is used.
    content = std::make_shared<Content>();
    content->fileName = KORString(iPath);
    content->state = Unreadable;
    content->transient = transient;
    AddProblem(*content, 0, reason);
  }
  return KORResourceFile(std::move(content));
}

KORResourceFile KORResourceFile::Parse(std::string_view iContent, const char* iFileName) {
  auto content = std::make_shared<Content>();
  content->fileName = KORString(iFileName);
  if (iContent.size() > kMaxFileSize) {
    content->state = Unreadable;
    AddProblem(*content, 0,
               "is too large to be read (" + std::to_string(iContent.size()) +
                   " bytes; at most 256 MiB are read)");
    return KORResourceFile(std::move(content));
  }
  content->state = Loaded;
  ParseInto(*content, iContent);
  return KORResourceFile(std::move(content));
}

KORResourceFile::State KORResourceFile::GetState() const noexcept { return _content->state; }

bool KORResourceFile::IsTransientFailure() const noexcept { return _content->transient; }

const KORString& KORResourceFile::GetFileName() const noexcept { return _content->fileName; }

int KORResourceFile::GetSize() const noexcept { return static_cast<int>(_content->values.size()); }

const KORUnicodeString* KORResourceFile::Find(std::string_view iKey) const noexcept {
  const Content& content = *_content;
  const std::size_t guess = content.expected.load(std::memory_order_relaxed);
  if (guess < content.values.size() && content.KeyOf(guess) == iKey) {
    content.expected.store(guess + 1, std::memory_order_relaxed);
    return content.TextOf(guess);
  }
  const std::size_t position = content.PositionOf(iKey);
  if (position == content.values.size()) return nullptr;
  content.expected.store(position + 1, std::memory_order_relaxed);
  return content.TextOf(position);
}

KORListValKORUnicodeString KORResourceFile::GetKeys() const {
  KORListValKORUnicodeString keys;
  for (std::size_t position = 0; position < _content->keyEnds.size(); ++position) {
    const std::string_view key = _content->KeyOf(position);
    keys.Append(KORUnicodeString(key.data(), key.size()));
  }
  return keys;
}

std::vector<KORResourceProblem> KORResourceFile::GetProblemDetails() const {
  std::vector<KORResourceProblem> details = _content->problems;
  if (_content->problemsNotKept > 0) {
    std::string rest = std::to_string(_content->problemsNotKept);
    rest.append(_content->problemsNotKept == 1 ? " more problem not listed"
                                               : " more problems not listed");
    details.push_back({0, std::move(rest)});
  }
  return details;
}

KORListValKORUnicodeString KORResourceFile::GetProblems() const {
  KORListValKORUnicodeString problems;
  for (const KORResourceProblem& problem : GetProblemDetails()) {
    std::string text(_content->fileName.View());
    if (problem.line > 0) text.append(":").append(std::to_string(problem.line));
    text.append(": ").append(problem.reason);
    problems.Append(KORUnicodeString(text.data(), text.size()));
  }
  return problems;
}

void KORResourceFile::ForEachKey(
    const std::function<void(std::string_view iKey, int iLine)>& iVisit) const {
  for (std::size_t position = 0; position < _content->keyEnds.size(); ++position) {
    iVisit(_content->KeyOf(position), static_cast<int>(_content->lines[position]));
  }
}

int KORResourceFile::GetLine(std::string_view iKey) const noexcept {
  const Content& content = *_content;
  const std::size_t position = content.PositionOf(iKey);
  return position == content.values.size() ? 0 : static_cast<int>(content.lines[position]);
}

KORResourceFile::Encoding KORResourceFile::GetEncoding() const noexcept {
  return _content->encoding;
}

int KORResourceFile::GetIllFormedLine() const noexcept { return _content->illFormedLine; }
