#include "KORResourceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

// The padding the analyser reports is the cache line of `expected` (last
// member): it keeps the guess that every lookup writes apart from what the
// lookups only read.
struct kor_detail::ResourceFileContent {  // NOLINT(clang-analyzer-optin.performance.Padding)
  struct Problem {
    int line;  // 0 for a problem of the whole file
    // Read by Problems(); cppcheck misses reads through a range-for.
    // cppcheck-suppress unusedStructMember
    std::string text;
  };
  // One place of the key index: the key's hash, and 1 + the position of the
  // key's last declaration (0 for a free place).
  struct Slot {
    std::uint32_t hash;
    std::uint32_t declaration;
  };

  // The hash of a key in the index.
  [[nodiscard]] static std::uint32_t HashOf(std::string_view iKey) noexcept {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(iKey));
  }

  // The key of the declaration at iPosition (a view into keyText).
  [[nodiscard]] std::string_view KeyOf(std::size_t iPosition) const noexcept {
    const std::size_t begin = iPosition == 0 ? 0 : keyEnds[iPosition - 1];
    return std::string_view(keyText.data() + begin, keyEnds[iPosition] - begin);
  }

  // Whether Find gives the declaration at iPosition for its key, that is
  // whether no later declaration of the same key overrides it.
  [[nodiscard]] bool IsLast(std::size_t iPosition) const noexcept {
    return overridden.empty() || !overridden[iPosition];
  }

  // The place of iKey (whose hash is iHash) in the index, or the free place
  // where it would go. The index must have places.
  [[nodiscard]] std::size_t PlaceOf(std::string_view iKey, std::uint32_t iHash) const noexcept {
    const std::size_t mask = slots.size() - 1;
    for (std::size_t place = iHash & mask;; place = (place + 1) & mask) {
      const Slot& slot = slots[place];
      if (slot.declaration == 0) return place;
      if (slot.hash == iHash && KeyOf(slot.declaration - 1) == iKey) return place;
    }
  }

  KORResourceFile::State state = KORResourceFile::Absent;
  KORString fileName;
  // Every well-formed declaration in file order, duplicates included, kept
  // compact so that large files stay within the processor's caches: the keys
  // one after the other in keyText (declaration i's key ends at keyEnds[i]
  // and starts where the previous one ends), the values index for index.
  std::string keyText;
  std::vector<std::size_t> keyEnds;
  std::vector<KORUnicodeString> values;
  std::vector<int> lines;  // the line of each declaration
  // Key -> its last declaration: open addressing with linear probing, a
  // power of two of places, at most half of them taken (none for a file
  // without declarations).
  std::vector<Slot> slots;
  std::size_t keyCount = 0;
  // For each declaration, whether a later one of the same key overrides it;
  // empty when no key is declared twice.
  std::vector<bool> overridden;
  // Positions of the first declaration of each key, in file order.
  std::vector<std::uint32_t> firstDeclarations;
  std::vector<Problem> problems;
  KORResourceFile::Encoding encoding = KORResourceFile::Utf8;
  int illFormedLine = 0;
  // The position just after the declaration Find gave last: where Find looks
  // first. Tables are mostly read in the order they are written, and that
  // place is next to what the previous lookup touched, whereas the index
  // place of a key is anywhere in a table that a large file makes larger
  // than the caches. Any value is a valid guess, checked before use, so the
  // threads that share the content may update it without ordering. On a
  // cache line of its own, so that writing it does not take from the other
  // threads the lines that they only read.
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

void AddProblem(Content& ioContent, int iLine, std::string_view iReason) {
  std::string text(ioContent.fileName.View());
  if (iLine > 0) {
    text += ':';
    text += std::to_string(iLine);
  }
  text += ": ";
  text += iReason;
  ioContent.problems.push_back({iLine, std::move(text)});
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

// The declarations of a file while it is parsed: the content they go into.
struct Declarations {
  Content& content;
  std::string scratch;  // a decoded quoted value
};

// Records the declaration iKey = iValue of line iNumber (iValue as read).
void AddDeclaration(Declarations& ioDeclarations, std::string_view iKey, std::string_view iValue,
                    int iNumber) {
  Content& content = ioDeclarations.content;
  // The key is kept as valid UTF-8, as every text of the platform is: bytes
  // that are not become U+FFFD, so that Find compares with what callers hold.
  const bool ascii = std::all_of(iKey.begin(), iKey.end(), [](char iChar) {
    return static_cast<unsigned char>(iChar) < 0x80;
  });
  if (ascii) {
    content.keyText.append(iKey);
  } else {
    content.keyText.append(KORUnicodeString(iKey.data(), iKey.size()).View());
  }
  content.keyEnds.push_back(content.keyText.size());
  content.values.emplace_back(iValue.data(), iValue.size());
  content.lines.push_back(iNumber);
}

// Parses one line (without its line end) into ioDeclarations.
void ParseLine(Declarations& ioDeclarations, std::string_view iLine, int iNumber) {
  Content& content = ioDeclarations.content;
  if (std::memchr(iLine.data(), '\0', iLine.size()) != nullptr) {
    AddProblem(content, iNumber, "NUL byte in the line");
    return;
  }
  const std::string_view text = TrimBlanks(iLine);
  if (text.empty() || text[0] == '#' || text[0] == '!') return;

  const std::size_t equal = text.find('=');
  if (equal == std::string_view::npos) {
    AddProblem(content, iNumber, "no '=' between a key and a value");
    return;
  }
  const std::string_view key = TrimBlanks(text.substr(0, equal));
  if (key.empty()) {
    AddProblem(content, iNumber, "empty key before '='");
    return;
  }
  if (std::find_if(key.begin(), key.end(), IsBlank) != key.end()) {
    AddProblem(content, iNumber, std::string("blank inside the key \"").append(key).append("\""));
    return;
  }
  const std::string_view value = TrimBlanks(text.substr(equal + 1));
  if (!value.empty() && value[0] == '"') {
    const std::string reason = DecodeQuoted(value, ioDeclarations.scratch);
    if (!reason.empty()) {
      AddProblem(content, iNumber, reason);
      return;
    }
    AddDeclaration(ioDeclarations, key, ioDeclarations.scratch, iNumber);
  } else {
    AddDeclaration(ioDeclarations, key, value, iNumber);
  }
}

// Builds the key index once every declaration is in place; records
// duplicates.
void BuildIndex(Declarations& ioDeclarations) {
  Content& content = ioDeclarations.content;
  const std::size_t count = content.values.size();
  content.firstDeclarations.reserve(count);
  if (count > 0) {
    std::size_t places = 8;
    while (places < 2 * count) places *= 2;
    content.slots.assign(places, Content::Slot{0, 0});
  }
  // The malformed lines were recorded in line order while parsing, and so are
  // the duplicates here: one merge keeps the whole list in line order.
  std::vector<Content::Problem> malformed;
  malformed.swap(content.problems);
  // The hashes first, in one pass over the keys; then the place of each key
  // is fetched a few keys before it is needed, so that the cache misses of
  // places spread over a large table overlap instead of following each other.
  std::vector<std::uint32_t> hashes(count);
  for (std::size_t position = 0; position < count; ++position) {
    hashes[position] = Content::HashOf(content.KeyOf(position));
  }
  constexpr std::size_t kFetchAhead = 8;
  const std::size_t mask = content.slots.size() - 1;
  for (std::uint32_t position = 0; position < count; ++position) {
    if (position + kFetchAhead < count) {
      __builtin_prefetch(&content.slots[hashes[position + kFetchAhead] & mask]);
    }
    const std::string_view key = content.KeyOf(position);
    Content::Slot& slot = content.slots[content.PlaceOf(key, hashes[position])];
    if (slot.declaration == 0) {
      slot = {hashes[position], position + 1};
      ++content.keyCount;
      content.firstDeclarations.push_back(position);
      continue;
    }
    const int previous = content.lines[slot.declaration - 1];
    std::string reason("key \"");
    reason.append(key)
        .append("\" declared again (previously at line ")
        .append(std::to_string(previous))
        .append("): the last declaration wins");
    AddProblem(content, content.lines[position], reason);
    if (content.overridden.empty()) content.overridden.resize(count);
    content.overridden[slot.declaration - 1] = true;
    slot.declaration = position + 1;
  }
  if (malformed.empty()) return;
  std::vector<Content::Problem> duplicates;
  duplicates.swap(content.problems);
  content.problems.reserve(malformed.size() + duplicates.size());
  std::merge(std::make_move_iterator(malformed.begin()), std::make_move_iterator(malformed.end()),
             std::make_move_iterator(duplicates.begin()), std::make_move_iterator(duplicates.end()),
             std::back_inserter(content.problems),
             [](const Content::Problem& iLeft, const Content::Problem& iRight) {
               return iLeft.line < iRight.line;
             });
}

// Tells what encoding the bytes of iText are in. UTF-16 text of a resource
// file has a NUL byte beside nearly every ASCII character, so a NUL among the
// first bytes (or a UTF-16 byte-order mark) is taken for it.
void DetectEncoding(Content& ioContent, std::string_view iText) {
  const std::string_view start = iText.substr(0, 4096);
  if (start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF" ||
      start.find('\0') != std::string_view::npos) {
    ioContent.encoding = KORResourceFile::Utf16;
    return;
  }
  const std::size_t illFormed = KORUnicodeString::FindIllFormed(iText);
  if (illFormed == std::string_view::npos) return;
  ioContent.encoding = KORResourceFile::EightBit;
  ioContent.illFormedLine =
      static_cast<int>(std::count(iText.begin(), iText.begin() + illFormed, '\n')) + 1;
}

void ParseInto(Content& ioContent, std::string_view iText) {
  DetectEncoding(ioContent, iText);
  constexpr std::string_view kByteOrderMark("\xEF\xBB\xBF");
  if (iText.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    iText.remove_prefix(kByteOrderMark.size());
  }
  Declarations declarations{ioContent, {}};
  // A line declares at most one key: reserving for every line spares the
  // copies of growing, and pages reserved but never written cost no memory.
  const std::size_t lines =
      static_cast<std::size_t>(std::count(iText.begin(), iText.end(), '\n')) + 1;
  ioContent.keyEnds.reserve(lines);
  ioContent.values.reserve(lines);
  ioContent.lines.reserve(lines);
  int number = 0;
  while (!iText.empty()) {
    ++number;
    const void* newline = std::memchr(iText.data(), '\n', iText.size());
    const std::size_t length =
        newline ? static_cast<std::size_t>(static_cast<const char*>(newline) - iText.data())
                : iText.size();
    std::string_view line = iText.substr(0, length);
    iText.remove_prefix(newline ? length + 1 : length);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    ParseLine(declarations, line, number);
  }
  BuildIndex(declarations);
}

// Reads the whole regular file at iPath into oText. Returns an empty string
// on success, else why it cannot be read; sets oAbsent when nothing is there.
std::string ReadWholeFile(const char* iPath, std::string& oText, bool& oAbsent) {
  oAbsent = false;
  // O_NONBLOCK: opening a FIFO must not wait for a writer.
  const int descriptor = ::open(iPath, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) {
    const int error = errno;
    if (error == ENOENT || error == ENOTDIR) {
      oAbsent = true;
      return "no such file";
    }
    return std::string("cannot be read (") + std::strerror(error) + ")";
  }
  std::string reason;
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) {
    reason = std::string("cannot be read (") + std::strerror(errno) + ")";
  } else if (S_ISDIR(status.st_mode)) {
    reason = "is a directory, not a file";
  } else if (!S_ISREG(status.st_mode)) {
    reason = "is not a regular file";
  } else {
    oText.resize(static_cast<std::size_t>(status.st_size));
    std::size_t filled = 0;
    while (true) {
      if (filled == oText.size()) oText.resize(oText.size() + 65536);
      const ssize_t count = ::read(descriptor, &oText[filled], oText.size() - filled);
      if (count < 0) {
        if (errno == EINTR) continue;
        reason = std::string("cannot be read (") + std::strerror(errno) + ")";
        break;
      }
      if (count == 0) break;
      filled += static_cast<std::size_t>(count);
    }
    oText.resize(filled);
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
  std::string text;
  bool absent = false;
  const std::string reason = ReadWholeFile(iPath, text, absent);
  if (absent) {
    content->state = Absent;
  } else if (!reason.empty()) {
    content->state = Unreadable;
    AddProblem(*content, 0, reason);
  } else {
    content->state = Loaded;
    ParseInto(*content, text);
  }
  return KORResourceFile(std::move(content));
}

KORResourceFile KORResourceFile::Parse(std::string_view iContent, const char* iFileName) {
  auto content = std::make_shared<Content>();
  content->fileName = KORString(iFileName);
  content->state = Loaded;
  ParseInto(*content, iContent);
  return KORResourceFile(std::move(content));
}

KORResourceFile::State KORResourceFile::GetState() const noexcept { return _content->state; }

const KORString& KORResourceFile::GetFileName() const noexcept { return _content->fileName; }

int KORResourceFile::GetSize() const noexcept { return static_cast<int>(_content->keyCount); }

const KORUnicodeString* KORResourceFile::Find(std::string_view iKey) const noexcept {
  const Content& content = *_content;
  const std::size_t guess = content.expected.load(std::memory_order_relaxed);
  if (guess < content.values.size() && content.IsLast(guess) && content.KeyOf(guess) == iKey) {
    content.expected.store(guess + 1, std::memory_order_relaxed);
    return &content.values[guess];
  }
  if (content.slots.empty()) return nullptr;
  const std::uint32_t declaration =
      content.slots[content.PlaceOf(iKey, Content::HashOf(iKey))].declaration;
  if (declaration == 0) return nullptr;
  content.expected.store(declaration, std::memory_order_relaxed);
  return &content.values[declaration - 1];
}

KORListValKORUnicodeString KORResourceFile::GetKeys() const {
  KORListValKORUnicodeString keys;
  for (const std::uint32_t position : _content->firstDeclarations) {
    const std::string_view key = _content->KeyOf(position);
    keys.Append(KORUnicodeString(key.data(), key.size()));
  }
  return keys;
}

int KORResourceFile::GetLine(std::string_view iKey) const noexcept {
  const Content& content = *_content;
  if (content.slots.empty()) return 0;
  const std::uint32_t declaration =
      content.slots[content.PlaceOf(iKey, Content::HashOf(iKey))].declaration;
  return declaration == 0 ? 0 : content.lines[declaration - 1];
}

KORResourceFile::Encoding KORResourceFile::GetEncoding() const noexcept {
  return _content->encoding;
}

int KORResourceFile::GetIllFormedLine() const noexcept { return _content->illFormedLine; }

std::vector<KORResourceProblem> KORResourceFile::GetProblemDetails() const {
  std::vector<KORResourceProblem> details;
  details.reserve(_content->problems.size());
  for (const Content::Problem& problem : _content->problems) {
    // The text is "file:line: reason" (or "file: reason"): the reason follows
    // the file name and line it was built with.
    std::string prefix(_content->fileName.View());
    if (problem.line > 0) prefix.append(":").append(std::to_string(problem.line));
    prefix.append(": ");
    details.push_back({problem.line, problem.text.substr(prefix.size())});
  }
  return details;
}

KORListValKORUnicodeString KORResourceFile::GetProblems() const {
  KORListValKORUnicodeString problems;
  for (const Content::Problem& problem : _content->problems) {
    problems.Append(KORUnicodeString(problem.text.data(), problem.text.size()));
  }
  return problems;
}
