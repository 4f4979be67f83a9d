#include "KORResourceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

struct kor_detail::ResourceFileContent {
  struct Entry {
    KORUnicodeString key;
    KORUnicodeString value;
    int line;
  };
  struct Problem {
    int line;  // 0 for a problem of the whole file
    // Read by Problems(); cppcheck misses reads through a range-for.
    // cppcheck-suppress unusedStructMember
    std::string text;
  };

  KORResourceFile::State state = KORResourceFile::Absent;
  KORString fileName;
  // Every well-formed declaration in file order, duplicates included; never
  // changed once the index is built, since the index keys view into it.
  std::vector<Entry> entries;
  // Key -> position in entries of its last declaration.
  std::unordered_map<std::string_view, std::uint32_t> index;
  // Positions in entries of the first declaration of each key, in file order.
  std::vector<std::uint32_t> firstDeclarations;
  std::vector<Problem> problems;
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

// Parses one line (without its line end) into ioContent.
void ParseLine(Content& ioContent, std::string_view iLine, int iNumber, std::string& ioScratch) {
  if (std::memchr(iLine.data(), '\0', iLine.size()) != nullptr) {
    AddProblem(ioContent, iNumber, "NUL byte in the line");
    return;
  }
  const std::string_view text = TrimBlanks(iLine);
  if (text.empty() || text[0] == '#' || text[0] == '!') return;

  const std::size_t equal = text.find('=');
  if (equal == std::string_view::npos) {
    AddProblem(ioContent, iNumber, "no '=' between a key and a value");
    return;
  }
  const std::string_view key = TrimBlanks(text.substr(0, equal));
  if (key.empty()) {
    AddProblem(ioContent, iNumber, "empty key before '='");
    return;
  }
  if (std::find_if(key.begin(), key.end(), IsBlank) != key.end()) {
    AddProblem(ioContent, iNumber, std::string("blank inside the key \"").append(key).append("\""));
    return;
  }
  const std::string_view value = TrimBlanks(text.substr(equal + 1));
  if (!value.empty() && value[0] == '"') {
    const std::string reason = DecodeQuoted(value, ioScratch);
    if (!reason.empty()) {
      AddProblem(ioContent, iNumber, reason);
      return;
    }
    ioContent.entries.push_back({KORUnicodeString(key.data(), key.size()),
                                 KORUnicodeString(ioScratch.data(), ioScratch.size()), iNumber});
  } else {
    ioContent.entries.push_back({KORUnicodeString(key.data(), key.size()),
                                 KORUnicodeString(value.data(), value.size()), iNumber});
  }
}

// Builds the key index once every entry is in place; records duplicates.
void BuildIndex(Content& ioContent) {
  ioContent.index.reserve(ioContent.entries.size());
  ioContent.firstDeclarations.reserve(ioContent.entries.size());
  // The malformed lines were recorded in line order while parsing, and so are
  // the duplicates here: one merge keeps the whole list in line order.
  std::vector<Content::Problem> malformed;
  malformed.swap(ioContent.problems);
  for (std::uint32_t position = 0; position < ioContent.entries.size(); ++position) {
    const Content::Entry& entry = ioContent.entries[position];
    auto [slot, inserted] = ioContent.index.emplace(entry.key.View(), position);
    if (inserted) {
      ioContent.firstDeclarations.push_back(position);
      continue;
    }
    const int previous = ioContent.entries[slot->second].line;
    std::string reason("key \"");
    reason.append(entry.key.View())
        .append("\" declared again (previously at line ")
        .append(std::to_string(previous))
        .append("): the last declaration wins");
    AddProblem(ioContent, entry.line, reason);
    slot->second = position;
  }
  if (malformed.empty()) return;
  std::vector<Content::Problem> duplicates;
  duplicates.swap(ioContent.problems);
  ioContent.problems.reserve(malformed.size() + duplicates.size());
  std::merge(std::make_move_iterator(malformed.begin()), std::make_move_iterator(malformed.end()),
             std::make_move_iterator(duplicates.begin()), std::make_move_iterator(duplicates.end()),
             std::back_inserter(ioContent.problems),
             [](const Content::Problem& iLeft, const Content::Problem& iRight) {
               return iLeft.line < iRight.line;
             });
}

void ParseInto(Content& ioContent, std::string_view iText) {
  constexpr std::string_view kByteOrderMark("\xEF\xBB\xBF");
  if (iText.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    iText.remove_prefix(kByteOrderMark.size());
  }
  std::string scratch;
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
    ParseLine(ioContent, line, number, scratch);
  }
  BuildIndex(ioContent);
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

int KORResourceFile::GetSize() const noexcept { return static_cast<int>(_content->index.size()); }

const KORUnicodeString* KORResourceFile::Find(std::string_view iKey) const noexcept {
  const auto found = _content->index.find(iKey);
  if (found == _content->index.end()) return nullptr;
  return &_content->entries[found->second].value;
}

KORListValKORUnicodeString KORResourceFile::GetKeys() const {
  KORListValKORUnicodeString keys;
  for (const std::uint32_t position : _content->firstDeclarations) {
    keys.Append(_content->entries[position].key);
  }
  return keys;
}

KORListValKORUnicodeString KORResourceFile::GetProblems() const {
  KORListValKORUnicodeString problems;
  for (const Content::Problem& problem : _content->problems) {
    problems.Append(KORUnicodeString(problem.text.data(), problem.text.size()));
  }
  return problems;
}
